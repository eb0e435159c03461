// A point on the ellipsoid.
#pragma once

namespace geodesy {

struct Position {
  double latitude = 0;   // decimal degrees, north positive
  double longitude = 0;  // decimal degrees, east positive
  friend bool operator==(const Position&, const Position&) = default;
};

}  // namespace geodesy
