// The records of the Lowrance/Eagle interface, as they stand in messages; all little-endian. Layouts: the maker's
// serial interface LSI-100, known from public programs that were written after it. Offsets count behind the leading
// byte of an answer, where those of the same record in a request count from its start.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/byte_cursor.h"
#include "lowrance/mercator.h"
#include "store/garmin_time.h"

namespace lowrance {

inline constexpr std::size_t kNameSize = 13;
inline constexpr int kMostRoutePoints = 200;

// Number u16 0, status u8 2, symbol u8 3, y i32 4, x i32 8, name 12, time u32 25: 29 bytes.
struct WaypointRecord {
  std::uint16_t number = 0;  // of the slot, from 0
  std::uint8_t status = 0;   // 0: the slot is empty
  std::uint8_t symbol = 0;   // of the unit's own set
  GridPoint place;
  std::string name;
  std::uint32_t time = 0;  // seconds since 1992-01-01 00:00:00
};

// Number u16 0, count u8 2, name 3, waypoint numbers u16 16: 16 bytes and 2 a point.
struct RouteRecord {
  std::uint16_t number = 0;
  std::uint8_t count = 0;  // of points, as the record says
  std::string name;
  std::vector<std::uint16_t> waypoints;  // slots; empty where there are more than kMostRoutePoints
};

// Number u16 0, y i32 2, x i32 6, symbol u8 10: 11 bytes.
struct IconRecord {
  std::uint16_t number = 0;
  GridPoint place;
  std::uint8_t symbol = 0;
};

// Trail u8 0, y i32 1, x i32 5, number of deltas u16 9: 11 bytes.
struct TrailOrigin {
  std::uint8_t trail = 0;  // from 0
  GridPoint place;
  std::uint16_t deltas = 0;
};

// From one point of a trail to the next: change of y, then of x.
struct Delta {
  std::int16_t dy = 0, dx = 0;
};
inline constexpr std::size_t kDeltaSize = 4;
inline constexpr int kMostDeltas = 40;  // in one message

// Trail u8 0, count u16 1, pairs of i16 3.
struct DeltaBlock {
  std::uint8_t trail = 0;
  std::vector<Delta> deltas;
};

// From answers, which begin with the leading byte; nothing when the answer is too short for what it says.
[[nodiscard]] std::optional<WaypointRecord> read_waypoint(std::span<const std::uint8_t> answer);
[[nodiscard]] std::optional<RouteRecord> read_route(std::span<const std::uint8_t> answer);
[[nodiscard]] std::optional<IconRecord> read_icon(std::span<const std::uint8_t> answer);
[[nodiscard]] std::optional<std::uint16_t> read_icon_count(std::span<const std::uint8_t> answer);
[[nodiscard]] std::optional<TrailOrigin> read_trail_origin(std::span<const std::uint8_t> answer);
[[nodiscard]] std::optional<DeltaBlock> read_delta_block(std::span<const std::uint8_t> answer);

// For requests. Names are cut to kNameSize and padded with zeros.
[[nodiscard]] base::Bytes write_waypoint(const WaypointRecord& waypoint);
[[nodiscard]] base::Bytes write_route(const RouteRecord& route);
[[nodiscard]] base::Bytes write_icon(const IconRecord& icon);
[[nodiscard]] base::Bytes write_trail_origin(const TrailOrigin& origin);
[[nodiscard]] base::Bytes write_delta_block(const DeltaBlock& block);

// Deliberate : what comes from a unit is taken as it is, what goes to it is moved by the user's hours from UTC.
[[nodiscard]] store::GarminTime from_unit_time(std::uint32_t seconds);
// `offset_seconds`: local time minus UTC. No time stays 0, and so does a time before 1992.
[[nodiscard]] std::uint32_t to_unit_time(store::GarminTime time, std::int64_t offset_seconds);

}  // namespace lowrance
