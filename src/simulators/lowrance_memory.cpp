#include "simulators/lowrance_memory.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numbers>
#include <optional>
#include <string_view>

#include "simulators/big_endian.h"

namespace simulators {

namespace {

constexpr std::size_t kNameSize = 13;
constexpr std::array<std::size_t, 2> kEmptySlots{10, 25};  // a waypoint was deleted there

struct Grid {
  std::int32_t y, x;
};

// Mercator's projection of a sphere as large as the earth at its poles, in metres. Formula: Snyder, "Map Projections: A
// Working Manual", equations 7-1 and 7-2a.
Grid projected(const LowrancePlace& place) {
  constexpr double kRadius = 6356752.3142;
  constexpr double kRadians = std::numbers::pi / 180.0;
  const double latitude = std::clamp(place.latitude, -89.9, 89.9);  // it never reaches the poles
  return {static_cast<std::int32_t>(std::lround(kRadius * std::atanh(std::sin(latitude * kRadians)))),
          static_cast<std::int32_t>(std::lround(kRadius * kRadians * place.longitude))};
}

// Numbers in the unit table are never negative.
std::size_t room(std::int16_t slots) { return static_cast<std::size_t>(slots); }

base::Bytes padded_name(std::string_view name) {
  base::Bytes bytes(kNameSize);
  std::copy_n(name.begin(), std::min(name.size(), kNameSize), bytes.begin());
  return bytes;
}

std::uint8_t symbol_of(const LowranceUnit& unit, std::uint8_t symbol) { return symbol < unit.symbols ? symbol : 0; }

// Two slots stay empty among the others where there is room for that.
std::size_t slot_of(std::size_t waypoint, const LowranceData& data, const LowranceUnit& unit) {
  if (data.waypoints.size() + kEmptySlots.size() > room(unit.waypoints)) return waypoint;
  for (const std::size_t empty : kEmptySlots) waypoint += waypoint >= empty ? 1 : 0;
  return waypoint;
}

base::Bytes empty_waypoint(std::size_t slot) {
  base::Bytes record = base::ByteWriter().u16(static_cast<std::uint16_t>(slot)).result();
  record.resize(29);
  return record;
}

base::Bytes waypoint_record(std::size_t slot, const LowranceWaypoint& waypoint, const LowranceUnit& unit) {
  const Grid grid = projected(waypoint.place);
  base::ByteWriter out;
  out.u16(static_cast<std::uint16_t>(slot)).u8(1).u8(symbol_of(unit, waypoint.symbol)).i32(grid.y).i32(grid.x);
  return out.bytes(padded_name(waypoint.name)).u32(waypoint.time).result();
}

std::vector<base::Bytes> waypoint_slots(const LowranceData& data, const LowranceUnit& unit) {
  std::vector<base::Bytes> slots;
  for (std::size_t slot = 0; slot < room(unit.waypoints); ++slot) slots.push_back(empty_waypoint(slot));
  for (std::size_t i = 0; i < std::min(data.waypoints.size(), slots.size()); ++i) {
    const std::size_t slot = slot_of(i, data, unit);
    slots[slot] = waypoint_record(slot, data.waypoints[i], unit);
  }
  return slots;
}

base::Bytes route_record(std::size_t slot, const LowranceRoute& route, const LowranceData& data,
                         const LowranceUnit& unit) {
  std::vector<std::size_t> points;
  for (const int waypoint : route.waypoints) {
    const auto index = static_cast<std::size_t>(waypoint);
    const bool is_held = waypoint >= 0 && index < std::min(data.waypoints.size(), room(unit.waypoints));
    if (is_held && points.size() < room(unit.waypoints_per_route)) points.push_back(slot_of(index, data, unit));
  }
  base::ByteWriter out;
  out.u16(static_cast<std::uint16_t>(slot)).u8(static_cast<std::uint8_t>(points.size()));
  out.bytes(padded_name(route.name));
  for (const std::size_t point : points) out.u16(static_cast<std::uint16_t>(point));
  return out.result();
}

std::vector<base::Bytes> route_slots(const LowranceData& data, const LowranceUnit& unit) {
  std::vector<base::Bytes> slots;
  for (std::size_t slot = 0; slot < room(unit.routes); ++slot) {
    const LowranceRoute route = slot < data.routes.size() ? data.routes[slot] : LowranceRoute{};
    slots.push_back(route_record(slot, route, data, unit));
  }
  return slots;
}

std::vector<base::Bytes> icon_records(const LowranceData& data, const LowranceUnit& unit) {
  std::vector<base::Bytes> records;
  for (const LowranceEvent& event : data.events) {
    if (records.size() == room(unit.icons)) break;
    const Grid grid = projected(event.place);
    base::ByteWriter out;
    out.u16(static_cast<std::uint16_t>(records.size())).i32(grid.y).i32(grid.x).u8(symbol_of(unit, event.symbol));
    records.push_back(out.result());
  }
  return records;
}

// Up to the first step that is too long for a delta.
LowranceTrail trail_of(const std::vector<LowrancePlace>& points, const LowranceUnit& unit) {
  LowranceTrail trail;
  if (points.empty()) return trail;
  Grid last = projected(points[0]);
  trail.y = last.y;
  trail.x = last.x;
  for (std::size_t i = 1; i < std::min(points.size(), room(unit.trail_capacity)); ++i) {
    const Grid next = projected(points[i]);
    const auto is_short = [](std::int64_t step) { return std::abs(step) <= std::numeric_limits<std::int16_t>::max(); };
    if (!is_short(std::int64_t{next.y} - last.y) || !is_short(std::int64_t{next.x} - last.x)) break;
    trail.deltas.emplace_back(static_cast<std::int16_t>(next.y - last.y), static_cast<std::int16_t>(next.x - last.x));
    last = next;
  }
  return trail;
}

// The memory of a trail at `address`. The deltas begin at place `first` of their ring and go on at its start when they
// come to its end.
base::Bytes trail_area(const LowranceTrail& trail, std::uint32_t address, std::size_t first, const LowranceUnit& unit) {
  const std::size_t capacity = room(unit.trail_capacity);
  base::Bytes area;
  if (!trail.deltas.empty()) {
    const auto address_of = [&](std::size_t delta) {
      return static_cast<std::uint32_t>(address + kTrailHeaderSize + 4 * delta);
    };
    append_big_endian(area, static_cast<std::uint32_t>(trail.y), 4);
    append_big_endian(area, static_cast<std::uint32_t>(trail.x), 4);
    append_big_endian(area, address_of(first), 4);
    const std::size_t end = first + trail.deltas.size();
    append_big_endian(area, address_of(end > capacity ? end - capacity : end), 4);
  }
  area.resize(kTrailHeaderSize + 4 * capacity + kTrailEndSize);
  for (std::size_t i = 0; i < trail.deltas.size(); ++i) {
    base::Bytes delta;
    append_big_endian(delta, static_cast<std::uint16_t>(trail.deltas[i].first), 2);
    append_big_endian(delta, static_cast<std::uint16_t>(trail.deltas[i].second), 2);
    const std::size_t at = kTrailHeaderSize + 4 * ((first + i) % capacity);
    std::copy(delta.begin(), delta.end(), area.begin() + static_cast<std::ptrdiff_t>(at));
  }
  return area;
}

// Every second trail has run over the end of its ring.
std::vector<base::Bytes> trail_areas(const std::vector<LowranceTrail>& trails, const LowranceUnit& unit) {
  std::vector<base::Bytes> areas;
  std::uint32_t address = kTrailAreas;
  for (std::size_t i = 0; i < trails.size(); ++i) {
    const std::size_t before_end = trails[i].deltas.size() / 2;
    const std::size_t first = i % 2 == 1 && before_end > 0 ? room(unit.trail_capacity) - before_end : 0;
    areas.push_back(trail_area(trails[i], address, first, unit));
    address += static_cast<std::uint32_t>(areas.back().size());
  }
  return areas;
}

}  // namespace

LowranceMemory fill_lowrance_memory(const LowranceData& data, const LowranceUnit& unit) {
  LowranceMemory memory;
  memory.waypoints = waypoint_slots(data, unit);
  memory.routes = route_slots(data, unit);
  memory.icons = icon_records(data, unit);
  std::vector<LowranceTrail> trails(unit.trails);
  for (std::size_t i = 0; i < std::min(trails.size(), data.trails.size()); ++i) {
    trails[i] = trail_of(data.trails[i], unit);
  }
  if (unit.protocol_version == 0) {
    memory.areas = trail_areas(trails, unit);
  } else {
    memory.trails = std::move(trails);
  }
  return memory;
}

}  // namespace simulators
