// What a simulated Lowrance/Eagle unit holds, in the bytes that it keeps and sends.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "base/byte_cursor.h"
#include "simulators/lowrance_data.h"
#include "simulators/lowrance_options.h"

namespace simulators {

// A trail as the delta commands carry it.
struct LowranceTrail {
  std::int32_t y = 0, x = 0;                                  // of the first point
  std::vector<std::pair<std::int16_t, std::int16_t>> deltas;  // y, x
  friend bool operator==(const LowranceTrail&, const LowranceTrail&) = default;
};

struct LowranceMemory {
  std::vector<base::Bytes> waypoints;  // by slot: number, status, symbol, y, x, name, time; 29 bytes
  std::vector<base::Bytes> routes;     // by slot: number, count, name, waypoint numbers; 16 bytes and 2 a point
  std::vector<base::Bytes> icons;      // as many as there are: number, y, x, symbol; 11 bytes
  std::vector<LowranceTrail> trails;   // of units whose protocol version is not 0
  std::vector<base::Bytes> areas;      // of units whose protocol version is 0: the memory of each trail
  friend bool operator==(const LowranceMemory&, const LowranceMemory&) = default;
};

// The data as far as the unit has room for them.
[[nodiscard]] LowranceMemory fill_lowrance_memory(const LowranceData& data, const LowranceUnit& unit);

// Where the trail areas, one behind the other, and the planes of the screen are in the unit's memory.
inline constexpr std::uint32_t kTrailAreas = 0x00021000;
inline constexpr std::uint32_t kBlackPlane = 0x00080000;
inline constexpr std::uint32_t kGreyPlane = 0x00090000;

// A trail area: y, x of the first point, address of the first delta, address behind the last one; the ring of deltas, 4
// bytes each; bytes that hold none.
inline constexpr std::size_t kTrailHeaderSize = 16;
inline constexpr std::size_t kTrailEndSize = 4;

}  // namespace simulators
