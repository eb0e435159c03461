#include "textfile/file_format.h"

#include <algorithm>

#include "textfile/text_reader.h"

namespace textfile {
namespace {

bool has_four_commas(std::string_view line) { return std::count(line.begin(), line.end(), ',') == 4; }

bool begins_with_one_of(std::string_view line, std::string_view characters) {
  return !line.empty() && characters.find(line[0]) != std::string_view::npos;
}

}  // namespace

bool recognises_native_text(std::string_view first_line) {
  return !has_four_commas(first_line) && begins_with_one_of(first_line, "#!DMEINRTVPZ;W 0123456789");
}

bool recognises_comma_waypoints(std::string_view first_line) {
  return has_four_commas(first_line) && begins_with_one_of(first_line, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-");
}

int read_native_text(const FileContext& context, std::string_view contents, const std::string& file_name) {
  TextReader reader(context.store, context.shift, context.datums, context.settings, context.front_end,
                    context.command_options);
  return reader.read(contents, file_name);
}

std::optional<std::string> write_native_text(const FileContext& context, const TextOptions& options) {
  TextOptions known = options;
  if (context.datums.find(options.datum) == nullptr) {
    context.shift.set_datum_shift("WGS-84", options.datum);  // says so
    known.datum = "WGS-84";
  }
  return TextWriter(context.store, context.shift, context.front_end).write(known);
}

}  // namespace textfile
