// Typed or filed texts back to positions: everything the formatters print, and what people type.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "geodesy/position.h"
#include "geodesy/utm.h"

namespace geodesy {

struct ParsedPosition {
  std::optional<Position> position;
  std::string problem;  // one sentence without a full stop when there is no position, else empty
};

// Latitude and longitude in degrees, degrees and minutes, or degrees, minutes and seconds, or UTM or UPS
// (zone, easting, northing; `ellipsoid` is that of the datum they are in). "N51 30.5000 E007 15.2500",
// "51.5, 7.25", "51°30'15\"N 7°15'W", "-0:30 7:15", "51,5 7,25", "E 7.25 N 51.5", "32U  382000.0  5700000.0".
// Latitude comes first unless the letters N, S, E, W say otherwise. A comma between digits is a decimal sign
// or a separator, whichever makes a position; when both do, or when it is not clear which number belongs to
// which angle, the text is refused. Minutes and seconds are below 60, but 60 is taken in the last part, where
// printing rounds up to it. Longitudes go to 180.01, since a datum shift may carry them a little beyond 180.
// A UTM zone needs its band letter; a northing more than a band away from that band is refused, N taken as "north" too.
[[nodiscard]] ParsedPosition parse_position(std::string_view text, const Ellipsoid& ellipsoid);

// One latitude or longitude in degrees: "N12 59 60.00", "W007.2500000", "-33.5", "12 30 S". Without a letter
// it may be as large as a longitude. Nothing when it is not one, or too large.
[[nodiscard]] std::optional<double> parse_angle(std::string_view text);

}  // namespace geodesy
