// OziExplorer's text formats: waypoint (.wpt), route (.rte), track (.plt) and event (.evt) files (OziExplorer help,
// file formats). Lines are written as OziExplorer has them; what is read goes further (docs/formats/ozi.md). Dates are
// UTC.
#pragma once

#include <string>
#include <string_view>

#include "base/text_input.h"
#include "base/text_output.h"
#include "formats/line_texts.h"
#include "store/file_context.h"
#include "store/kept.h"
#include "store/output_options.h"

namespace formats {

// Where single items lose a property that is named here, the writer counts them on output line 2.
inline constexpr store::Kept kOziWaypointKeeps{.waypoints = store::kKeepsItems | store::kKeepsNames |
                                                            store::kKeepsComments | store::kKeepsSymbols |
                                                            store::kKeepsDisplay | store::kKeepsTimes};
inline constexpr store::Kept kOziRouteKeeps{.routes = store::kKeepsItems | store::kKeepsNames | store::kKeepsComments |
                                                      store::kKeepsSymbols | store::kKeepsDisplay | store::kKeepsTimes |
                                                      store::kKeepsTitles | store::kKeepsNumbers};
inline constexpr store::Kept kOziTrackKeeps{.tracks = store::kKeepsItems | store::kKeepsTimes | store::kKeepsSegments |
                                                      store::kKeepsTitles};
inline constexpr store::Kept kOziEventKeeps{.events = store::kKeepsItems | store::kKeepsSymbols};

// Makes what records hold fit for a line, and counts what that changes.
class OziChanges {
 public:
  explicit OziChanges(const store::Settings& settings) : settings_(settings) {}

  // The text with the byte that stands for a comma (209, an N with tilde) in place of each, a real such N as N, and
  // '-' for control characters.
  [[nodiscard]] std::string field(std::string_view text);
  // OziExplorer's number of the record's symbol.
  [[nodiscard]] int symbol(const store::ItemRecord& item);
  // False when the record is not in use or has no position, so that it is left out.
  [[nodiscard]] bool writes(const store::ItemRecord& item);
  // The name of a track log is not in the file, which has room for one.
  void drop_title() { ++dropped_titles_; }
  // On output line 2.
  void report(base::FrontEnd& front_end) const;

 private:
  const store::Settings& settings_;
  LineTexts texts_;
  int tildes_ = 0;
  int inexact_symbols_ = 0;
  int dropped_titles_ = 0;
};

// The line of a waypoint file, without its end.
[[nodiscard]] std::string format_ozi_waypoint_line(int number, const store::ItemRecord& item, OziChanges& changes);

// Every record in use, under its index as number. An empty store gives the header lines.
[[nodiscard]] bool write_ozi_waypoints(const store::FileContext& context, const store::OutputOptions& options,
                                       base::TextOutput& out);
[[nodiscard]] bool write_ozi_routes(const store::FileContext& context, const store::OutputOptions& options,
                                    base::TextOutput& out);
[[nodiscard]] bool write_ozi_track(const store::FileContext& context, const store::OutputOptions& options,
                                   base::TextOutput& out);
[[nodiscard]] bool write_ozi_events(const store::FileContext& context, const store::OutputOptions& options,
                                    base::TextOutput& out);

// The number of records accepted; -1 when the first line is not that of such a file, which a message box says.
[[nodiscard]] int read_ozi_waypoints(const store::FileContext& context, base::TextInput& input,
                                     const std::string& file_name);
[[nodiscard]] int read_ozi_routes(const store::FileContext& context, base::TextInput& input,
                                  const std::string& file_name);
[[nodiscard]] int read_ozi_track(const store::FileContext& context, base::TextInput& input,
                                 const std::string& file_name);
[[nodiscard]] int read_ozi_events(const store::FileContext& context, base::TextInput& input,
                                  const std::string& file_name);

}  // namespace formats
