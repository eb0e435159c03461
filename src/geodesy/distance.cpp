#include "geodesy/distance.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "geodesy/angle.h"

namespace geodesy {
namespace {

struct Unit {
  std::string_view name;
  double per_nautical_mile;
};

// In the order of DistanceUnit. Deliberate : the factor for feet is this program's own.
constexpr std::array kUnits{Unit{"sm", 1.15078}, Unit{"nm", 1.0}, Unit{"km", 1.852}, Unit{"ft", 6076.1184},
                            Unit{"m", 1852.0}};
constexpr double kEarthRadiusNauticalMiles = 3438.1749460043193;

// A number out of a file that names no unit means nautical miles.
const Unit& unit_of(DistanceUnit unit) {
  const auto index = static_cast<std::size_t>(unit);
  return kUnits[index < kUnits.size() ? index : static_cast<std::size_t>(DistanceUnit::NauticalMiles)];
}

double squared_half_sine(double degrees) {
  const double sine = std::sin(degrees * kRadiansPerDegree / 2.0);
  return sine * sine;
}

}  // namespace

double great_circle_distance(const Position& from, const Position& to, DistanceUnit unit) {
  const double h = squared_half_sine(to.latitude - from.latitude) +
                   std::cos(from.latitude * kRadiansPerDegree) * std::cos(to.latitude * kRadiansPerDegree) *
                       squared_half_sine(to.longitude - from.longitude);
  // Between antipodes rounding may carry h beyond 1.
  const double nautical_miles = 2.0 * std::asin(std::sqrt(std::min(h, 1.0))) * kEarthRadiusNauticalMiles;
  return nautical_miles * unit_of(unit).per_nautical_mile;
}

std::string_view unit_name(DistanceUnit unit) { return unit_of(unit).name; }

}  // namespace geodesy
