// KML 2.2 files, which are only written. Positions are WGS-84, times UTC, texts UTF-8.
// Sources: OGC KML 2.2; Google's KML reference for gx:Track.
#pragma once

#include "base/text_output.h"
#include "store/file_context.h"
#include "store/kept.h"
#include "store/output_options.h"

namespace formats {

// What can be seen in the file. Routes are lines, whose points have neither names nor times. A segment keeps its times
// where all its points have one; others are counted.
inline constexpr store::Properties kKmlPointKeeps =
    store::kKeepsItems | store::kKeepsNames | store::kKeepsComments | store::kKeepsSymbols | store::kKeepsTimes |
    store::kKeepsAltitudes | store::kKeepsDepths | store::kKeepsDistances | store::kKeepsAddresses;
inline constexpr store::Kept kKmlKeeps{
    .waypoints = kKmlPointKeeps,
    .routes = store::kKeepsItems | store::kKeepsAltitudes | store::kKeepsTitles | store::kKeepsNumbers,
    .proximity = kKmlPointKeeps,
    .tracks = store::kKeepsItems | store::kKeepsTimes | store::kKeepsAltitudes | store::kKeepsTitles |
              store::kKeepsSegments | store::kKeepsLines,
    .events = store::kKeepsOfEvents & ~(store::kKeepsDisplay | store::kKeepsColours)};

// One folder for each kind of items. Heights count as such only where every point of a line has one.
[[nodiscard]] bool write_kml(const store::FileContext& context, const store::OutputOptions& options,
                             base::TextOutput& out);

}  // namespace formats
