// Places as Lowrance/Eagle units count them: whole metres of a spherical Mercator projection. Formulas: any textbook on
// map projections (Snyder, "Map Projections: A Working Manual", p. 41), on a sphere of the WGS-84 polar radius.
#pragma once

#include <cstdint>
#include <optional>

#include "geodesy/position.h"

namespace lowrance {

struct GridPoint {
  std::int32_t y = 0;  // metres north of the equator, as the projection stretches them
  std::int32_t x = 0;  // metres east of Greenwich
  friend bool operator==(const GridPoint&, const GridPoint&) = default;
};

// Degrees, WGS-84, to whole metres, toward zero. A value within 1e-6 m of a whole number is that number, so that what a
// unit has sent goes back as it was. The poles, which the projection does not reach, end at its largest values.
[[nodiscard]] std::int32_t latitude_to_y(double latitude);
[[nodiscard]] std::int32_t longitude_to_x(double longitude);
[[nodiscard]] double y_to_latitude(std::int32_t y);
[[nodiscard]] double x_to_longitude(std::int32_t x);

// False at the poles, which are infinitely far away here, and where no place is.
[[nodiscard]] bool is_on_grid(const geodesy::Position& position);
[[nodiscard]] GridPoint to_grid(const geodesy::Position& position);
// Nothing for an x beyond the 180th meridian, where no place is.
[[nodiscard]] std::optional<geodesy::Position> from_grid(const GridPoint& point);

}  // namespace lowrance
