// Universal Transverse Mercator and, for the polar caps, Universal Polar Stereographic, by the series of
// J. P. Snyder, "Map Projections: A Working Manual" (USGS Professional Paper 1395): within a millimetre
// inside a zone. There are no special zones for Norway and Svalbard.
#pragma once

#include <string>

#include "geodesy/position.h"

namespace geodesy {

struct Ellipsoid {
  double a = 6378137.0;              // semi-major axis, metres
  double f = 0.0033528106647474805;  // flattening
};

struct UtmPosition {
  std::string zone;     // "14S": zone number and band letter; "00A", "00B", "00Y", "00Z" at the poles
  double easting = 0;   // metres
  double northing = 0;  // metres
};

// Metres in the plane of a projection.
struct GridPoint {
  double x = 0;  // east
  double y = 0;  // north
};

// Zones by 6 degrees from 180 West (zone 1); longitude 180 is in zone 61. UTM from 80 South to 84 North, both
// included, beyond that polar.
[[nodiscard]] UtmPosition latlon_to_utm(const Position& position, const Ellipsoid& ellipsoid);
// Zone number 0 is polar. Southern northings may be counted from the equator's 10 000 000 m down or up.
[[nodiscard]] Position utm_to_latlon(int zone_number, bool southern, double easting, double northing,
                                     const Ellipsoid& ellipsoid);

// Without false easting and northing. Degrees; good to about 4 degrees from the central meridian.
[[nodiscard]] GridPoint transverse_mercator(const Position& position, double origin_latitude, double central_meridian,
                                            double scale_factor, const Ellipsoid& ellipsoid);
[[nodiscard]] Position inverse_transverse_mercator(const GridPoint& point, double origin_latitude,
                                                   double central_meridian, double scale_factor,
                                                   const Ellipsoid& ellipsoid);

// About the pole of the position's hemisphere, with the 2 000 000 m of UPS added to both.
[[nodiscard]] GridPoint polar_stereographic(const Position& position, const Ellipsoid& ellipsoid);
// The pole itself has longitude 0 (or 180).
[[nodiscard]] Position inverse_polar_stereographic(const GridPoint& point, bool southern, const Ellipsoid& ellipsoid);

}  // namespace geodesy
