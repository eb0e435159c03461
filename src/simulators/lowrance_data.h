// What a simulated Lowrance/Eagle unit is filled with, in plain values. Positions are WGS-84 degrees, times seconds
// since 1992-01-01 00:00:00; symbols are numbers of the unit's own set; texts are cut by the records that carry them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace simulators {

struct LowrancePlace {
  double latitude = 0;
  double longitude = 0;
};

struct LowranceWaypoint {
  std::string name;
  LowrancePlace place;
  std::uint8_t symbol = 0;
  std::uint32_t time = 0;
};

struct LowranceRoute {
  std::string name;
  std::vector<int> waypoints;  // places in LowranceData::waypoints, from 0
};

struct LowranceEvent {
  LowrancePlace place;
  std::uint8_t symbol = 0;
};

struct LowranceData {
  std::vector<LowranceWaypoint> waypoints;
  std::vector<LowranceRoute> routes;
  std::vector<LowranceEvent> events;
  std::vector<std::vector<LowrancePlace>> trails;
};

// A season on a lake: some 40 waypoints, 4 routes made of them, 12 events, 2 trails of 300 points; the same at every
// call.
[[nodiscard]] LowranceData believable_season();

}  // namespace simulators
