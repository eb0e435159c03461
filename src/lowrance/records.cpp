#include "lowrance/records.h"

#include <algorithm>
#include <limits>

namespace lowrance {
namespace {

using base::ByteReader;
using base::Bytes;
using base::ByteWriter;

constexpr std::uint32_t kUnitEpoch = 63158400;  // 1992-01-01 in seconds since the Garmin epoch

// Behind the leading byte.
ByteReader fields_of(std::span<const std::uint8_t> answer) {
  ByteReader in(answer);
  in.skip(1);
  return in;
}

GridPoint read_place(ByteReader& in) {
  GridPoint place;
  place.y = in.i32();
  place.x = in.i32();
  return place;
}

ByteWriter& write_place(ByteWriter& out, const GridPoint& place) { return out.i32(place.y).i32(place.x); }

ByteWriter& write_name(ByteWriter& out, std::string_view name) {
  Bytes field(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(std::min(name.size(), kNameSize)));
  field.resize(kNameSize);
  return out.bytes(field);
}

}  // namespace

std::optional<WaypointRecord> read_waypoint(std::span<const std::uint8_t> answer) {
  ByteReader in = fields_of(answer);
  WaypointRecord waypoint;
  waypoint.number = in.u16();
  waypoint.status = in.u8();
  waypoint.symbol = in.u8();
  waypoint.place = read_place(in);
  waypoint.name = in.text(kNameSize);
  waypoint.time = in.u32();
  if (!in.ok()) return std::nullopt;
  return waypoint;
}

std::optional<RouteRecord> read_route(std::span<const std::uint8_t> answer) {
  ByteReader in = fields_of(answer);
  RouteRecord route;
  route.number = in.u16();
  route.count = in.u8();
  route.name = in.text(kNameSize);
  if (route.count <= kMostRoutePoints)
    for (int i = 0; i < route.count; ++i) route.waypoints.push_back(in.u16());
  if (!in.ok()) return std::nullopt;
  return route;
}

std::optional<IconRecord> read_icon(std::span<const std::uint8_t> answer) {
  ByteReader in = fields_of(answer);
  IconRecord icon;
  icon.number = in.u16();
  icon.place = read_place(in);
  icon.symbol = in.u8();
  if (!in.ok()) return std::nullopt;
  return icon;
}

std::optional<std::uint16_t> read_icon_count(std::span<const std::uint8_t> answer) {
  ByteReader in = fields_of(answer);
  const std::uint16_t count = in.u16();
  if (!in.ok()) return std::nullopt;
  return count;
}

std::optional<TrailOrigin> read_trail_origin(std::span<const std::uint8_t> answer) {
  ByteReader in = fields_of(answer);
  TrailOrigin origin;
  origin.trail = in.u8();
  origin.place = read_place(in);
  origin.deltas = in.u16();
  if (!in.ok()) return std::nullopt;
  return origin;
}

std::optional<DeltaBlock> read_delta_block(std::span<const std::uint8_t> answer) {
  ByteReader in = fields_of(answer);
  DeltaBlock block;
  block.trail = in.u8();
  const std::size_t count = in.u16();
  if (count * kDeltaSize > in.remaining()) return std::nullopt;
  for (std::size_t i = 0; i < count; ++i) {
    const std::int16_t dy = in.i16();
    block.deltas.push_back({dy, in.i16()});
  }
  if (!in.ok()) return std::nullopt;
  return block;
}

Bytes write_waypoint(const WaypointRecord& waypoint) {
  ByteWriter out;
  out.u16(waypoint.number).u8(waypoint.status).u8(waypoint.symbol);
  write_name(write_place(out, waypoint.place), waypoint.name).u32(waypoint.time);
  return out.result();
}

Bytes write_route(const RouteRecord& route) {
  ByteWriter out;
  write_name(out.u16(route.number).u8(route.count), route.name);
  for (const std::uint16_t waypoint : route.waypoints) out.u16(waypoint);
  return out.result();
}

Bytes write_icon(const IconRecord& icon) {
  ByteWriter out;
  write_place(out.u16(icon.number), icon.place).u8(icon.symbol);
  return out.result();
}

Bytes write_trail_origin(const TrailOrigin& origin) {
  ByteWriter out;
  write_place(out.u8(origin.trail), origin.place).u16(origin.deltas);
  return out.result();
}

Bytes write_delta_block(const DeltaBlock& block) {
  ByteWriter out;
  out.u8(block.trail).u16(static_cast<std::uint16_t>(block.deltas.size()));
  for (const Delta& delta : block.deltas) out.i16(delta.dy).i16(delta.dx);
  return out.result();
}

store::GarminTime from_unit_time(std::uint32_t seconds) {
  // What does not fit is the mark of a field that nobody has filled in.
  if (seconds > std::numeric_limits<std::uint32_t>::max() - kUnitEpoch) return {};
  return {seconds + kUnitEpoch};
}

std::uint32_t to_unit_time(store::GarminTime time, std::int64_t offset_seconds) {
  if (time.seconds < kUnitEpoch) return 0;
  const std::int64_t seconds = std::int64_t{time.seconds} - kUnitEpoch + offset_seconds;
  return static_cast<std::uint32_t>(std::clamp<std::int64_t>(seconds, 0, std::numeric_limits<std::uint32_t>::max()));
}

}  // namespace lowrance
