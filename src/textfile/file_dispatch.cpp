#include "textfile/file_dispatch.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <new>
#include <system_error>
#include <utility>

#include "base/text.h"
#include "store/losses.h"
#include "textfile/text_layout.h"

namespace textfile {
namespace {

namespace fs = std::filesystem;

// A bare ".txt" is an extension too, though the library takes it for a name without one.
std::string extension_of(const fs::path& path) {
  const std::string name = path.filename().string();
  return name.substr(std::min(name.rfind('.'), name.size()));
}

bool has_extension(const fs::path& path, std::string_view extension) {
  return !extension.empty() && base::equal_ignoring_case(extension_of(path), extension);
}

// When the file was last changed, as a date text in UTC; nothing when the system does not say.
std::optional<std::string> modification_date(const fs::path& path) {
  std::error_code error;
  const fs::file_time_type changed = fs::last_write_time(path, error);
  if (error) return std::nullopt;
  const auto unix_time = std::chrono::floor<std::chrono::seconds>(std::chrono::file_clock::to_sys(changed));
  return store::format_date_text(unix_time.time_since_epoch().count() - store::kGarminEpochUnix);
}

// "route.clg is a Navigate route file: this type of file cannot be read (its layout is not public)."
std::string refusal(const fs::path& path, std::string_view verb, const FileFormat& format, std::string_view done) {
  std::string text = path.string() + " " + std::string(verb) + " " + std::string(format.name) +
                     ": this type of file cannot be " + std::string(done);
  if (!format.why_not.empty()) text += " (" + std::string(format.why_not) + ")";
  return text + ".";
}

// Losses stand from here on; above are the writer's own lines.
constexpr int kFirstLossLine = 3;
constexpr int kLastLine = 10;

}  // namespace

FileDispatch::FileDispatch(std::span<const FileFormat> formats, store::FileContext context)
    : formats_(formats), context_(std::move(context)) {}

const FileFormat* FileDispatch::reader_of(const fs::path& path) const {
  const auto row = std::find_if(formats_.begin(), formats_.end(),
                                [&](const FileFormat& format) { return has_extension(path, format.input_extension); });
  return row == formats_.end() ? nullptr : &*row;
}

const FileFormat* FileDispatch::format_of_contents(base::TextInput& input) const {
  input.skip_empty_lines();
  const std::string_view line = base::TextInput(input.peek(kLongestLine)).next_line();
  const auto row = std::find_if(formats_.begin(), formats_.end(), [&](const FileFormat& format) {
    return !line.empty() && format.recognises != nullptr && format.recognises(line);
  });
  return row == formats_.end() ? nullptr : &*row;
}

int FileDispatch::input_type(const fs::path& path) const {
  if (const FileFormat* const format = reader_of(path)) return format->code;
  std::ifstream file;
  std::uint64_t size = 0;
  std::string reason;
  if (!base::open_file(path, file, size, reason)) return kCannotOpen;
  base::TextInput input(file, size);
  const FileFormat* const format = format_of_contents(input);
  return format == nullptr ? kUnknownType : format->code;
}

const FileFormat* FileDispatch::format_of(int code) const {
  const auto row =
      std::find_if(formats_.begin(), formats_.end(), [code](const FileFormat& format) { return format.code == code; });
  return row == formats_.end() ? nullptr : &*row;
}

bool FileDispatch::do_input(const fs::path& path) {
  const auto refuse = [this](const std::string& text) {
    context_.front_end.message_box("do_input", text);
    return false;
  };
  const std::string name = path.string();
  const FileFormat* format = reader_of(path);
  if (format != nullptr && format->read == nullptr) return refuse(refusal(path, "is", *format, "read"));
  std::ifstream file;
  std::uint64_t size = 0;
  if (format != nullptr) {
    if (!openit(path, file, size)) return false;
  } else {
    std::string reason;
    if (!base::open_file(path, file, size, reason)) return refuse("Unable to open file: " + name);
  }
  base::TextInput input(file, size);
  if (format == nullptr) {
    // Read once only: a pipe cannot be read again.
    format = format_of_contents(input);
    if (format == nullptr) return refuse("Unknown input file type: " + name);
    if (format->read == nullptr) return refuse(refusal(path, "is", *format, "read"));
    if (!announce(path)) return false;
  }
  int accepted = 0;
  try {
    accepted = format->read(context_, input, name);
  } catch (const std::bad_alloc&) {
    context_.front_end.message_box("oomem", "Out of Memory in do_input -- aborting.");
    return false;
  }
  // A point whose waypoint was there already has no number of its own.
  context_.store.link_route_points();
  if (context_.settings.SA_SortAfterInput != 0) sort_waypoints();
  context_.front_end.refresh_title();
  if (input.failed()) return refuse("Error reading file " + name);
  if (input.aborted()) return false;
  // A reader that refuses the file as a whole has said why.
  return accepted > 0 || (accepted == 0 && refuse("No Valid input records in file: '" + name + "'"));
}

bool FileDispatch::openit(const fs::path& path, std::ifstream& file, std::uint64_t& size) {
  std::string reason;
  if (!base::open_file(path, file, size, reason)) {
    context_.front_end.message_box("openit", "Can't open file '" + path.string() + "'");
    context_.front_end.write_line(3, "The file was not read: " + reason + ".");
    return false;
  }
  return announce(path);
}

bool FileDispatch::announce(const fs::path& path) {
  const std::optional<std::string> date = modification_date(path);
  if (!date) {
    context_.front_end.message_box("openit", "File time err, File:" + path.string());
    return false;
  }
  // Deliberate : nothing between name and date, as users and their scripts know the line.
  context_.front_end.write_line(1, "reading: " + path.string() + *date);
  return true;
}

const FileFormat* FileDispatch::writer_of(const fs::path& path) const {
  const auto row = std::find_if(formats_.begin(), formats_.end(),
                                [&](const FileFormat& format) { return has_extension(path, format.output_extension); });
  return row == formats_.end() ? format_of(kNativeText) : &*row;
}

bool FileDispatch::save(const fs::path& path, const store::OutputOptions& given_options) {
  const FileFormat* const format = writer_of(path);
  if (format == nullptr) return false;  // there is always a row of native text
  if (format->write == nullptr) {
    context_.front_end.message_box("open_output", refusal(path, "would be", *format, "written"));
    return false;
  }
  if (has_extension(path, ".txt") && context_.store.empty()) {
    context_.front_end.write_line(1, "Save aborted -- No .txt information to save!");
    return false;
  }
  // An old file is not replaced by one that holds nothing of what there is.
  if (!format->is_bitmap && context_.store.empty() && !context_.store.almanac().empty() && format->keeps.almanac == 0) {
    context_.front_end.write_line(1, "Save aborted -- " + path.filename().string() +
                                         " could not hold the almanac, and there is nothing else to save.");
    return false;
  }
  store::OutputOptions options = given_options;
  if (!format->is_bitmap && !choose_kinds(options)) {
    context_.front_end.write_line(1, "Save aborted -- nothing was written.");
    return false;
  }
  if (!format->is_bitmap && context_.settings.SA_SortBeforeOutput != 0) sort_waypoints();
  const fs::path target = format->output_name == nullptr ? path : format->output_name(context_, options, path);
  base::SafeFile file;
  if (open_output(target, file) == 0) return false;
  {
    base::TextOutput out([&](std::string_view block) {
      if (format->is_binary) {
        file.write(block);
      } else {
        file.write(base::with_line_ends(block));
      }
    });
    if (!format->write(context_, options, out)) return false;
  }
  if (const std::string reason = file.commit(); !reason.empty()) return refuse_output(target, reason) != 0;
  context_.front_end.write_line(1, "File " + target.string() + " saved");
  if (!format->is_bitmap) say_losses(*format, options);
  return true;
}

std::string FileDispatch::save_problem(const fs::path& path) const {
  const FileFormat* const format = writer_of(path);
  if (format->write == nullptr) return refusal(path, "would be", *format, "written");
  if (format->is_bitmap) return refusal(path, "would be", *format, "written with items");
  std::error_code error;
  if (fs::exists(path, error) && !fs::is_regular_file(path, error) && !fs::is_directory(path, error)) return {};
  base::SafeFile file;
  const std::string reason = file.open(path);
  return reason.empty() ? reason : path.string() + " cannot be written: " + reason + ".";
}

bool FileDispatch::keeps_almanac(const fs::path& path) const {
  return (writer_of(path)->keeps.almanac & store::kKeepsItems) != 0;
}

int FileDispatch::open_output(const fs::path& path, base::SafeFile& file) {
  const std::string reason = file.open(path);
  return reason.empty() ? 1 : refuse_output(path, reason);
}

int FileDispatch::refuse_output(const fs::path& path, const std::string& reason) {
  context_.front_end.message_box("open_output", "Can't open output file " + path.string());
  context_.front_end.write_line(3, "Nothing was saved (" + reason + "): choose another folder or name, or make room.");
  return 0;
}

// Where the configuration wants it and the command has not named the kinds already.
bool FileDispatch::choose_kinds(store::OutputOptions& options) {
  if (context_.settings.SelectItemsToSave == 0 || options.kinds_given) return true;
  std::array choices{base::Choice{"Waypoints", options.waypoints}, base::Choice{"Routes", options.routes},
                     base::Choice{"Tracks", options.tracks}, base::Choice{"Proximity waypoints", options.proximity},
                     base::Choice{"Events", options.events}};
  if (!context_.front_end.choose("Items to save", choices)) return false;
  options.waypoints = choices[0].chosen;
  options.routes = choices[1].chosen;
  options.tracks = choices[2].chosen;
  options.proximity = choices[3].chosen;
  options.events = choices[4].chosen;
  return true;
}

void FileDispatch::say_losses(const FileFormat& format, const store::OutputOptions& options) {
  const store::Kept kept =
      format.keeps_by_choice == nullptr ? format.keeps : format.keeps_by_choice(context_.settings, options);
  int line = kFirstLossLine;
  std::string text;
  for (const std::string& loss : store::losses(context_.store, options, format.title, kept)) {
    text = line < kLastLine || text.empty() ? loss : text + "; " + loss;
    context_.front_end.write_line(line, text);
    line = std::min(line + 1, kLastLine);
  }
}

void FileDispatch::sort_waypoints() {
  if (context_.store.waypoint_count() >= 2) context_.store.sort_waypoints();
}

}  // namespace textfile
