// What a simulated Garmin receiver looks at in records that are sent to it, after the maker's published data formats
// (D100 to D551): whether their length is right and what names them. Everything else it keeps as it came.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace simulators {

// Whether the data bytes have a length that the format can have, its texts closed by a NUL and none longer than the
// format allows. False for a format that is none.
[[nodiscard]] bool has_shape_of(int format, std::span<const std::uint8_t> data);

// What tells a record of this shape from others of its kind: the ident of a waypoint, the number or the name of a
// route, the name of a track, the satellite of D550 and D551. Empty for formats whose records have no name.
[[nodiscard]] std::string record_key(int format, std::span<const std::uint8_t> data);

}  // namespace simulators
