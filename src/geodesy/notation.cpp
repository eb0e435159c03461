#include "geodesy/notation.h"

#include <cmath>

#include "base/text.h"

namespace geodesy {
namespace {

// `degree_digits` is 2 for latitudes and 3 for longitudes.
std::string format_angle(double angle, char letter, int degree_digits, Notation notation) {
  angle = std::abs(angle);
  const double degrees = std::floor(angle);
  const double minutes = (angle - degrees) * 60.0;
  switch (notation) {
    // Deliberate : no carry. 59.996 seconds print as 60.00 beside the unchanged minutes, which readers accept.
    case Notation::Dms: {
      const double whole_minutes = std::floor(minutes);
      return base::format_text("%c%0*.0f %02.0f %05.2f", letter, degree_digits, degrees, whole_minutes,
                               (minutes - whole_minutes) * 60.0);
    }
    case Notation::Dmm:
      return base::format_text("%c%0*.0f %07.4f", letter, degree_digits, degrees, minutes);
    case Notation::Ddd:
      return base::format_text("%c%0*.7f", letter, degree_digits + 8, angle);
    case Notation::Utm:
      break;
  }
  return {};
}

}  // namespace

std::string format_latitude(double latitude, Notation notation) {
  return format_angle(latitude, latitude >= 0 ? 'N' : 'S', 2, notation);
}

std::string format_longitude(double longitude, Notation notation) {
  return format_angle(longitude, longitude >= 0 ? 'E' : 'W', 3, notation);
}

PositionTexts format_position(const Position& position, Notation notation, const Ellipsoid& ellipsoid) {
  if (notation != Notation::Utm)
    return {format_latitude(position.latitude, notation), format_longitude(position.longitude, notation)};
  const UtmPosition utm = latlon_to_utm(position, ellipsoid);
  return {base::format_text("%s %9.1f", utm.zone.c_str(), utm.easting), base::format_text("%10.1f", utm.northing)};
}

}  // namespace geodesy
