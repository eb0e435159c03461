#include <array>

#include "base/system_file.h"
#include "base/text.h"
#include "session/file_formats.h"
#include "ui/actions.h"

namespace ui {
namespace {

using session::Session;

constexpr int kBitmapType = 19;
constexpr int kHexFormat = 40054;

// File types for a dialog, behind "all": those of which `extension_of` gives an extension.
template <typename ExtensionOf>
std::vector<FileQuestion::Type> file_types(ExtensionOf extension_of) {
  std::vector<FileQuestion::Type> types;
  for (const textfile::FileFormat& format : session::file_formats()) {
    const std::string pattern = "*" + base::lower_case(extension_of(format));
    if (pattern == "*") continue;
    // Deliberate : the words that people know this type by.
    std::string name(format.title.empty() ? format.name : format.title);
    if (pattern == "*.csv") name = "Comma Separated Value Files";
    types.push_back({name + " (" + pattern + ")", pattern});
  }
  return types;
}

std::vector<FileQuestion::Type> types_to_read() {
  std::vector<FileQuestion::Type> types = file_types([](const textfile::FileFormat& format) {
    if (format.read == nullptr) return std::string_view();
    return format.input_extension.empty() ? format.output_extension : format.input_extension;
  });
  types.insert(types.begin(), {"All files", "*"});
  return types;
}

std::vector<FileQuestion::Type> types_to_write() {
  return file_types([](const textfile::FileFormat& format) {
    return format.write == nullptr ? std::string_view() : format.output_extension;
  });
}

int in_range(int index, const std::vector<FileQuestion::Type>& types) {
  return index >= 0 && static_cast<std::size_t>(index) < types.size() ? index : 0;
}

}  // namespace

bool open_input_files(const CommandContext& context, int) {
  store::Settings& settings = context.session.settings;
  FileQuestion question{"Open Input File(s)", base::path_from_text(settings.ReadWorkingDirectory), "", types_to_read(),
                        0};
  question.type = in_range(settings.ReadFilterNumber, question.types);
  const std::vector<std::filesystem::path> files = context.windows.ask_files_to_open(question);
  if (files.empty()) return false;
  settings.ReadFilterNumber = question.type;
  return read_files(context, files);
}

bool read_files(const CommandContext& context, const std::vector<std::filesystem::path>& files) {
  Session& session = context.session;
  session.front_end.set_status(1, "Opening Input File(s)");
  bool all_read = true, picture_read = false;
  for (const std::filesystem::path& file : files) {
    const std::filesystem::path folder = (session.surroundings.start_directory / file).parent_path();
    session.settings.ReadWorkingDirectory = folder.lexically_normal().string();
    session.settings.ReadFileName = file.stem().string();
    session.settings.ReadFileNameExtn = file.extension().string();
    const bool is_picture = session.files.input_type(file) == kBitmapType;
    const bool read = session.files.do_input(file);
    picture_read = picture_read || (read && is_picture);
    all_read = all_read && read;
  }
  session.front_end.set_status(1, " ");
  if (picture_read) (void)context.windows.show_picture();
  return all_read;
}

bool save_as(const CommandContext& context, int) {
  Session& session = context.session;
  store::Settings& settings = session.settings;
  FileQuestion question{"Opening Output File", base::path_from_text(settings.SaveWorkingDirectory),
                        settings.SaveFileName + settings.SaveFileNameExtn, types_to_write(), 0};
  question.type = in_range(settings.SaveFilterNumber, question.types);
  const std::optional<std::filesystem::path> file = context.windows.ask_file_to_save(question);
  if (!file) return false;
  settings.SaveFilterNumber = question.type;
  settings.SaveWorkingDirectory = file->parent_path().string();
  settings.SaveFileName = file->stem().string();
  settings.SaveFileNameExtn = file->extension().string();
  return session.files.save(*file, session.text_options());
}

bool save_igc(const CommandContext& context, int) {
  Session& session = context.session;
  if (!context.windows.ask_igc_options()) return false;
  FileQuestion question{"Opening Output File",
                        base::path_from_text(session.settings.SaveIGCWorkingDirectory),
                        "track.igc",
                        {{"IGC (*.igc)", "*.igc"}},
                        0};
  const std::optional<std::filesystem::path> file = context.windows.ask_file_to_save(question);
  if (!file) return false;
  session.settings.SaveIGCWorkingDirectory = file->parent_path().string();
  store::OutputOptions options = session.text_options();
  options.kinds_given = true;  // tracks are all that it holds
  return session.files.save(*file, options);
}

bool save_configuration(const CommandContext& context, int) {
  return write_configuration(context.session, context.windows.place());
}

bool write_configuration(Session& session, const std::optional<store::WindowRectangle>& place) {
  if (place) session.settings.StartupLocation = place;
  return store::save_configuration(session.surroundings.start_directory / "pelorix.ini", session.settings,
                                   session.front_end);
}

bool save_datum_list(const CommandContext& context, int) {
  FileQuestion question{"Save internal datum list",
                        context.session.surroundings.start_directory,
                        "Pelorix.dtm",
                        {{"Datum lists (*.dtm)", "*.dtm"}, {"All files", "*"}},
                        0};
  const std::optional<std::filesystem::path> file = context.windows.ask_file_to_save(question);
  if (!file || !geodesy::save_internal_datum_list(*file, context.session.front_end)) return false;
  context.session.front_end.write_line(3, base::format_text("File %s saved", file->string().c_str()));
  return true;
}

bool name_debug_file(const CommandContext& context, int) {
  Session& session = context.session;
  store::Settings& settings = session.settings;
  FileQuestion question{"Serial Debug Name",
                        base::path_from_text(settings.SaveDebugFileWorkingDirectory),
                        settings.DebugFileName + settings.DebugFileNameExtn,
                        {{"Text files (*.txt)", "*.txt"}},
                        0};
  if (question.name.empty()) question.name = "FileDebug.txt";
  const std::optional<std::filesystem::path> file = context.windows.ask_file_to_save(question);
  if (!file) return false;
  settings.SaveDebugFileWorkingDirectory = file->parent_path().string();
  settings.DebugFileName = file->stem().string();
  settings.DebugFileNameExtn = file->extension().string();
  return session.open_debug_log();
}

bool choose_debug_format(const CommandContext& context, int id) {
  context.session.debug_format = id == kHexFormat ? serial::ByteFormat::Hex : serial::ByteFormat::Decimal;
  return true;
}

bool is_debug_format(const CommandContext& context, int id) {
  return (context.session.debug_format == serial::ByteFormat::Hex) == (id == kHexFormat);
}

bool close_debug_file(const CommandContext& context, int) {
  context.session.debug_log.close();
  return true;
}

}  // namespace ui
