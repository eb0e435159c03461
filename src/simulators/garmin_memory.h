// What a simulated Garmin receiver holds: for each kind of transfer that it can do, the packets of that
// transfer, each record kept as the bytes that go out.
#pragma once

#include <optional>
#include <vector>

#include "simulators/garmin_framing.h"
#include "simulators/garmin_products.h"
#include "simulators/simulated_data.h"

namespace simulators {

// Packet ids of a link; 0 where it has no such packet.
struct LinkIds {
  std::uint8_t date_time, position, pvt;
  std::uint8_t records, waypoint, route_header, route_waypoint, route_link, track_header, track_point, proximity;
};
[[nodiscard]] const LinkIds& link_ids(int link);

// Records without the opening count and the closing packet; nothing for a kind that the product cannot send.
struct GarminMemory {
  using Records = std::optional<std::vector<Packet>>;
  Records waypoints, routes, tracks, proximity;
};

// The data in the record formats that the product speaks.
[[nodiscard]] GarminMemory fill_memory(const SimulatedData& data, const GarminCapabilities& capabilities);

}  // namespace simulators
