// Fugawi's waypoint text (.fwp): name, comment, description, latitude, longitude, altitude, date and time between
// commas, without a header; WGS-84, metres, UTC, UTF-8 (the order of Fugawi 3.1, as GPSBabel documents it).
#pragma once

#include <string>

#include "base/text_input.h"
#include "base/text_output.h"
#include "store/file_context.h"
#include "store/kept.h"
#include "store/output_options.h"

namespace formats {

inline constexpr store::Kept kFugawiKeeps{.waypoints = store::kKeepsItems | store::kKeepsNames | store::kKeepsComments |
                                                       store::kKeepsAltitudes | store::kKeepsTimes};

// Also reads the other order that is in use: name, comment, latitude, longitude and one column that nobody has
// described, which is not looked at.
[[nodiscard]] int read_fugawi(const store::FileContext& context, base::TextInput& input, const std::string& file_name);

// Columns behind the longitude are written where they are known, so a plain waypoint has five. False, said in a
// message box, when there is no waypoint to write.
[[nodiscard]] bool write_fugawi(const store::FileContext& context, const store::OutputOptions& options,
                                base::TextOutput& out);

}  // namespace formats
