// What a simulated Garmin receiver holds: for each kind of transfer that it can do, the packets of that
// transfer, each record kept as the bytes that go out.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "simulators/garmin_framing.h"
#include "simulators/garmin_products.h"
#include "simulators/simulated_data.h"

namespace simulators {

inline constexpr std::size_t kMostRecords = 0xFFFF;  // that one count packet can announce

// Packet ids of a link; 0 where it has no such packet.
struct LinkIds {
  std::uint8_t date_time, position, pvt, almanac;
  std::uint8_t records, waypoint, route_header, route_waypoint, route_link, track_header, track_point, proximity;
};
[[nodiscard]] const LinkIds& link_ids(int link);

// Records without the opening count and the closing packet; nothing for a kind that the product does not have.
struct GarminMemory {
  using Records = std::optional<std::vector<Packet>>;
  Records waypoints, routes, tracks, proximity, almanac;
};

inline constexpr std::uint16_t kNoCommand = 0xFFFF;
// The number of a command in either command protocol.
struct CommandNumbers {
  std::uint16_t a010;
  std::uint16_t a011;
};
// What a transfer command sends, and what a closing packet with its number ends.
struct TransferCommand {
  CommandNumbers numbers;
  GarminMemory::Records GarminMemory::*records;
};
inline constexpr std::array<TransferCommand, 5> kTransferCommands{{
    {{1, 4}, &GarminMemory::almanac},
    {{3, 17}, &GarminMemory::proximity},
    {{4, 8}, &GarminMemory::routes},
    {{6, kNoCommand}, &GarminMemory::tracks},
    {{7, 21}, &GarminMemory::waypoints},
}};

// The data in the record formats that the product speaks.
[[nodiscard]] GarminMemory fill_memory(const SimulatedData& data, const GarminCapabilities& capabilities);

}  // namespace simulators
