#include "textfile/file_format.h"

#include <algorithm>

#include "textfile/text_reader.h"
#include "textfile/text_writer.h"

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

int read_native_text(const store::FileContext& context, base::TextInput& input, const std::string& file_name) {
  TextReader reader(context.store, context.shift, context.datums, context.settings, context.front_end,
                    context.command_options);
  return reader.read(input, file_name);
}

bool write_native_text(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out) {
  store::OutputOptions known = options;
  if (context.datums.find(options.datum) == nullptr) {
    context.shift.set_datum_shift("WGS-84", options.datum);  // says so
    known.datum = "WGS-84";
  }
  TextWriter(context.store, context.shift, context.front_end).write(known, out);
  return true;
}

store::Kept native_text_keeps(const store::Settings&, const store::OutputOptions& options) {
  using namespace store;
  const bool is_short = options.version < 2;
  // What the user chose to leave out is nobody's loss.
  constexpr Properties kColumns =
      kKeepsItems | kKeepsNames | kKeepsComments | kKeepsSymbols | kKeepsDisplay | kKeepsTimes;
  constexpr Properties kDetails = kKeepsColours | kKeepsAltitudes | kKeepsDepths | kKeepsAddresses;
  constexpr Properties kTrack = kKeepsItems | kKeepsTimes | kKeepsSegments;
  Kept kept;
  kept.waypoints = kColumns | (is_short ? 0 : kDetails);
  kept.routes = kept.waypoints | kKeepsTitles | kKeepsNumbers | (is_short ? 0 : kKeepsLinks);
  kept.proximity = kColumns | kKeepsDistances | (is_short ? 0 : kKeepsColours);
  kept.tracks = kTrack | (is_short ? 0 : kKeepsAltitudes | kKeepsDepths | kKeepsTitles | kKeepsLines);
  kept.events = kKeepsOfEvents & ~(kKeepsNames | (is_short ? kKeepsColours : 0));
  return kept;
}

}  // namespace textfile
