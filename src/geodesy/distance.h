// Great-circle distances.
#pragma once

#include <string_view>

#include "geodesy/position.h"

namespace geodesy {

// The numbers are those of the options pages and of the configuration.
enum class DistanceUnit { StatuteMiles = 0, NauticalMiles = 1, Kilometres = 2, Feet = 3, Metres = 4 };

// By the haversine formula on a sphere of 6367.5 km.
[[nodiscard]] double great_circle_distance(const Position& from, const Position& to, DistanceUnit unit);

// "sm", "nm", "km", "ft", "m".
[[nodiscard]] std::string_view unit_name(DistanceUnit unit);

}  // namespace geodesy
