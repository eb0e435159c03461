// Positions as texts in the four notations.
#pragma once

#include <string>
#include <string_view>

#include "geodesy/position.h"
#include "geodesy/utm.h"

namespace geodesy {

// The numbers are those of the options pages and of the configuration.
enum class Notation { Dms = 1240, Dmm = 1241, Ddd = 1242, Utm = 1243 };

// The first and second column of a list row: latitude and longitude, or zone with easting and northing.
struct PositionTexts {
  std::string first;
  std::string second;
};

// "N12 59 60.00", "N40 30.5000", "S05.5000000". Rounding happens only in printing, without a carry. Degrees;
// Notation::Utm gives an empty text.
[[nodiscard]] std::string format_latitude(double latitude, Notation notation);
[[nodiscard]] std::string format_longitude(double longitude, Notation notation);

// `ellipsoid` is that of the datum the position is in; only UTM looks at it.
[[nodiscard]] PositionTexts format_position(const Position& position, Notation notation, const Ellipsoid& ellipsoid);

}  // namespace geodesy
