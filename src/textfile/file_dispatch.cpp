#include "textfile/file_dispatch.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

#include "base/safe_file.h"
#include "base/text.h"
#include "textfile/line_cursor.h"

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

// The first line that is not empty, as far as a line is read at once; empty when there is none.
std::string_view first_line(std::string_view contents) {
  for (LineCursor lines(contents); !lines.at_end();)
    if (const std::string_view line = lines.next(); !line.empty()) return line;
  return {};
}

// When the file was last changed, as a date text in UTC; nothing when the system does not say.
std::optional<std::string> modification_date(const fs::path& path) {
  std::error_code error;
  const fs::file_time_type changed = fs::last_write_time(path, error);
  if (error) return std::nullopt;
  const auto unix_time = std::chrono::floor<std::chrono::seconds>(std::chrono::file_clock::to_sys(changed));
  return store::format_date_text(unix_time.time_since_epoch().count() - store::kGarminEpochUnix);
}

}  // namespace

FileDispatch::FileDispatch(std::span<const FileFormat> formats, FileContext context)
    : formats_(formats), context_(std::move(context)) {}

const FileFormat* FileDispatch::reader_of(const fs::path& path) const {
  const auto row = std::find_if(formats_.begin(), formats_.end(),
                                [&](const FileFormat& format) { return has_extension(path, format.input_extension); });
  return row == formats_.end() ? nullptr : &*row;
}

const FileFormat* FileDispatch::format_of_contents(std::string_view contents) const {
  const std::string_view line = first_line(contents);
  const auto row = std::find_if(formats_.begin(), formats_.end(), [&](const FileFormat& format) {
    return !line.empty() && format.recognises != nullptr && format.recognises(line);
  });
  return row == formats_.end() ? nullptr : &*row;
}

int FileDispatch::input_type(const fs::path& path) const {
  if (const FileFormat* const format = reader_of(path)) return format->code;
  std::string contents, reason;
  if (!base::load_file(path, contents, reason)) return kCannotOpen;
  const FileFormat* const format = format_of_contents(contents);
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
  std::optional<std::string> contents;
  if (format == nullptr) {
    // Read once only: a pipe cannot be read again.
    std::string reason;
    if (!base::load_file(path, contents.emplace(), reason)) return refuse("Unable to open file: " + name);
    format = format_of_contents(*contents);
    if (format == nullptr) return refuse("Unknown input file type: " + name);
  }
  if (format->read == nullptr)
    return refuse(name + " is " + std::string(format->name) + ": this type of file cannot be read yet.");
  if (contents) {
    if (!announce(path)) return false;
  } else {
    contents = openit(path);
  }
  if (!contents) return false;
  const int accepted = format->read(context_, *contents, name);
  if (context_.settings.SA_SortAfterInput != 0) sort_waypoints();
  context_.front_end.refresh_title();
  return accepted > 0 || refuse("No Valid input records in file: '" + name + "'");
}

std::optional<std::string> FileDispatch::openit(const fs::path& path) {
  const std::string name = path.string();
  std::string contents, reason;
  if (!base::load_file(path, contents, reason)) {
    context_.front_end.message_box("openit", "Can't open file '" + name + "'");
    context_.front_end.write_line(3, "The file was not read: " + reason + ".");
    return std::nullopt;
  }
  return announce(path) ? std::optional(contents) : std::nullopt;
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

bool FileDispatch::save(const fs::path& path, const TextOptions& options) {
  const FileFormat* const format = writer_of(path);
  if (format == nullptr || format->write == nullptr) {
    const std::string type(format == nullptr ? "a file of unknown type" : format->name);
    context_.front_end.message_box("open_output",
                                   path.string() + " would be " + type + ": this type of file cannot be written yet.");
    return false;
  }
  if (has_extension(path, ".txt") && context_.store.empty()) {
    context_.front_end.write_line(1, "Save aborted -- No .txt information to save!");
    return false;
  }
  if (!format->is_bitmap && context_.settings.SA_SortBeforeOutput != 0) sort_waypoints();
  const std::optional<std::string> contents = format->write(context_, options);
  if (!contents) return false;
  if (open_output(path, format->is_bitmap ? *contents : base::with_line_ends(*contents)) == 0) return false;
  context_.front_end.write_line(1, "File " + path.string() + " saved");
  return true;
}

int FileDispatch::open_output(const fs::path& path, std::string_view contents) {
  const std::string reason = base::save_file(path, contents);
  if (reason.empty()) return 1;
  context_.front_end.message_box("open_output", "Can't open output file " + path.string());
  context_.front_end.write_line(3, "Nothing was saved (" + reason + "): choose another folder or name, or make room.");
  return 0;
}

void FileDispatch::sort_waypoints() {
  if (context_.store.waypoint_count() >= 2) context_.store.sort_waypoints();
}

}  // namespace textfile
