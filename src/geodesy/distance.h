// Units of distances, and great-circle distances.
#pragma once

#include <string_view>

#include "geodesy/position.h"

namespace geodesy {

// The numbers are those of the options pages and of the configuration.
enum class DistanceUnit { StatuteMiles = 0, NauticalMiles = 1, Kilometres = 2, Feet = 3, Metres = 4 };

inline constexpr double kMetresPerFoot = 0.3048;

// Metres in one unit, exactly.
[[nodiscard]] constexpr double metres_per(DistanceUnit unit) {
  switch (unit) {
    case DistanceUnit::StatuteMiles:
      return 1609.344;
    case DistanceUnit::NauticalMiles:
      return 1852;
    case DistanceUnit::Kilometres:
      return 1000;
    case DistanceUnit::Feet:
      return kMetresPerFoot;
    case DistanceUnit::Metres:
      break;
  }
  return 1;
}

// By the haversine formula on a sphere of 6367.5 km. Deliberate : its factors for units are not those of metres_per().
[[nodiscard]] double great_circle_distance(const Position& from, const Position& to, DistanceUnit unit);

// "sm", "nm", "km", "ft", "m".
[[nodiscard]] std::string_view unit_name(DistanceUnit unit);

}  // namespace geodesy
