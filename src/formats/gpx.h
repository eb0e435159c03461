// GPX files: 1.0 and 1.1 are read, 1.1 is written. Positions are WGS-84, times UTC, texts UTF-8.
// Sources: topografix GPX 1.0 and 1.1 schemas; Garmin GpxExtensions v3 schema.
#pragma once

#include <string>
#include <string_view>

#include "base/text_input.h"
#include "base/text_output.h"
#include "store/file_context.h"
#include "store/kept.h"
#include "store/output_options.h"

namespace formats {

// All items and all that is known of them; no almanac.
inline constexpr store::Properties kGpxPointKeeps = store::kKeepsItems | store::kKeepsNames | store::kKeepsComments |
                                                    store::kKeepsSymbols | store::kKeepsDisplay | store::kKeepsColours |
                                                    store::kKeepsTimes | store::kKeepsAltitudes | store::kKeepsDepths |
                                                    store::kKeepsDistances | store::kKeepsAddresses;
inline constexpr store::Kept kGpxKeeps{
    .waypoints = kGpxPointKeeps,
    .routes = kGpxPointKeeps | store::kKeepsLinks | store::kKeepsTitles | store::kKeepsNumbers,
    .proximity = kGpxPointKeeps,
    .tracks = store::kKeepsItems | store::kKeepsTimes | store::kKeepsAltitudes | store::kKeepsDepths |
              store::kKeepsTitles | store::kKeepsSegments | store::kKeepsLines,
    .events = store::kKeepsOfEvents};

// An XML document, which only the reader can tell from other ones, or the beginning of a GPX file without XML
// declaration. UTF-16 too.
[[nodiscard]] bool recognises_gpx(std::string_view first_line);

// Refuses what is no whole XML document, what has anything beside it, and what is no GPX. Points without a valid
// position are passed over. A waypoint with an alarm distance becomes a waypoint and a proximity waypoint.
[[nodiscard]] int read_gpx(const store::FileContext& context, base::TextInput& input, const std::string& file_name);

// What is written reads back as it was, apart from characters of Windows beyond Latin-1 in texts, and the longitude
// 180, which comes back as -180: the same place.
[[nodiscard]] bool write_gpx(const store::FileContext& context, const store::OutputOptions& options,
                             base::TextOutput& out);

}  // namespace formats
