// Almanac records of Garmin receivers: one satellite each. D500 and D501 do not say which; always 32 of them come, in
// the order of the PRN numbers.
#pragma once

#include <optional>
#include <span>

#include "garmin/record_format.h"
#include "store/almanac.h"

namespace garmin {

// Nothing: the receiver knows nothing of this satellite (its week is negative).
using SatelliteRecord = std::optional<store::AlmanacEntry>;
using AlmanacFormat = FormatOf<SatelliteRecord>;

extern const std::span<const AlmanacFormat> kAlmanacFormats;  // D500, D501

}  // namespace garmin
