#include "streetatlas/map_items.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/byte_cursor.h"
#include "base/text.h"
#include "store/item_store.h"

namespace streetatlas {
namespace {

using base::ByteReader;
using geodesy::Position;

// Bytes of a body ahead of its text length, its point count or its rim.
constexpr std::size_t kAheadOfText = 4;
constexpr std::size_t kAheadOfAreaColour = 2;
constexpr std::size_t kBehindAreaWidth = 8;
constexpr std::size_t kAheadOfRim = 24;
// A symbol's body is known to have 13 bytes, but its known fields make 12.
constexpr std::size_t kAheadOfSymbolText = 12;
constexpr std::size_t kAheadOfSymbolTextShort = 11;

bool is_item_type(std::uint16_t type) { return (type >= 1 && type <= 3) || (type >= 7 && type <= 9); }
// Types that exist but whose items nobody knows.
bool is_reserved_type(std::uint16_t type) { return type >= 4 && type <= 6; }

Position read_position(ByteReader& in) {
  const double latitude = degrees_of(in.u32());
  const double longitude_west = degrees_of(in.u32());
  return {latitude, 0.0 - longitude_west};  // not -x, which makes a negative zero
}

std::string read_short_text(ByteReader& in) {
  const std::size_t length = in.u8();
  return in.text(length);
}

void read_own_text(ByteReader& in, std::size_t bytes_ahead, MapItem& item) {
  in.skip(bytes_ahead);
  std::string text = read_short_text(in);
  if (!text.empty()) item.text = std::move(text);
}

std::uint8_t read_line_property(ByteReader& in) { return static_cast<std::uint8_t>(in.u16()); }

void read_points(ByteReader& in, MapItem& item) {
  for (int left = in.u16(); left > 0 && in.ok(); --left) item.points.push_back(read_position(in));
}

// Whether all of the item was there, in.ok() tells.
MapItem read_item(ByteReader& in, ItemType type, std::size_t ahead_of_symbol_text) {
  MapItem item;
  item.type = type;
  item.position = read_position(in);
  in.skip(4);
  item.text = read_short_text(in);
  switch (type) {
    case ItemType::Text:
    case ItemType::Note:
      read_own_text(in, kAheadOfText, item);
      break;
    case ItemType::Symbol:
      read_own_text(in, ahead_of_symbol_text, item);
      break;
    case ItemType::Line:
      for (std::uint8_t& property : item.line) property = read_line_property(in);
      read_points(in, item);
      break;
    case ItemType::Area:
      in.skip(kAheadOfAreaColour);
      item.line[0] = read_line_property(in);
      item.line[1] = read_line_property(in);
      in.skip(kBehindAreaWidth);
      read_points(in, item);
      break;
    case ItemType::Circle:
      in.skip(kAheadOfRim);
      item.rim = read_position(in);
      break;
  }
  return item;
}

// The items as they come out when a symbol's text begins where it is supposed to.
struct Reading {
  std::vector<MapItem> items;
  std::optional<std::uint16_t> unknown_type;
  bool complete = false;      // as many items as announced
  std::size_t confirmed = 0;  // items behind which there was a type, or which were the last
  std::span<const std::uint8_t> rest;
  std::optional<std::vector<MapRoute>> routes;
};

Reading read_items(ByteReader in, int announced, std::size_t ahead_of_symbol_text) {
  const auto count = static_cast<std::size_t>(announced);
  Reading reading;
  while (reading.items.size() < count) {
    const std::uint16_t type = in.u16();
    if (!in.ok()) return reading;
    if (is_item_type(type) || is_reserved_type(type)) reading.confirmed = reading.items.size();
    if (!is_item_type(type)) {
      reading.unknown_type = type;
      return reading;
    }
    MapItem item = read_item(in, static_cast<ItemType>(type), ahead_of_symbol_text);
    if (!in.ok()) return reading;
    reading.items.push_back(std::move(item));
  }
  reading.confirmed = count;
  reading.complete = true;
  reading.rest = in.bytes(in.remaining());
  return reading;
}

// Nothing for a point that the layout does not allow. `serial` counts the points of the section, from 1.
std::optional<MapRoutePoint> read_route_point(ByteReader& in, int serial) {
  static constexpr std::array<std::string_view, 5> kNamesByKind{"", "START", "STOP", "FINISH", "NO NAME"};
  MapRoutePoint point;
  point.position = read_position(in);
  const std::size_t kind = in.u8();
  point.name = read_short_text(in);
  if (!in.ok() || kind >= kNamesByKind.size() || !is_on_earth(point.position)) return std::nullopt;
  if (point.name.empty()) point.name = kind > 0 ? std::string(kNamesByKind[kind]) : base::format_text("S%05d", serial);
  return point;
}

// Nothing unless every byte has its meaning: nobody has described this section, so one that looks different is
// another one.
std::optional<std::vector<MapRoute>> read_routes(std::span<const std::uint8_t> bytes) {
  ByteReader in(bytes);
  std::vector<MapRoute> routes;
  int serial = 0;
  for (int routes_left = in.u16(); routes_left > 0; --routes_left) {
    MapRoute route;
    route.number = in.u16();
    route.name = read_short_text(in);
    int points_left = in.u16();
    if (!in.ok() || route.number >= store::kRouteCapacity || points_left == 0) return std::nullopt;
    for (; points_left > 0; --points_left) {
      std::optional<MapRoutePoint> point = read_route_point(in, ++serial);
      if (!point) return std::nullopt;
      route.points.push_back(std::move(*point));
    }
    routes.push_back(std::move(route));
  }
  if (!in.ok() || in.remaining() > 0) return std::nullopt;
  return routes;
}

// The better the items and the file's length fit, the greater.
auto rank(const Reading& reading) {
  const bool to_the_end = reading.complete && (reading.rest.empty() || reading.routes);
  return std::tuple(reading.complete, to_the_end, reading.confirmed);
}

// The layout of notes is a choice of ours. Where a file does not come out, it may be because of that, and the
// items from the first note on may be made of the wrong bytes.
void drop_doubtful_items(Reading& reading) {
  const bool in_step = reading.complete || (reading.unknown_type && is_reserved_type(*reading.unknown_type));
  if (in_step) return;
  const auto is_note = [](const MapItem& item) { return item.type == ItemType::Note; };
  reading.items.erase(std::find_if(reading.items.begin(), reading.items.end(), is_note), reading.items.end());
}

// The number of items; nothing when this is no map.
std::optional<int> read_header(ByteReader& in) {
  const std::uint16_t version = in.u16();
  in.skip(4);
  in.skip(in.u8());  // a text
  in.skip(4 + 4);    // a position
  in.skip(2 + 134);
  in.skip(2 + 8);
  in.skip(2 + 20);
  const int count = in.u16();
  if (!in.ok() || (version != 256 && version != 258)) return std::nullopt;
  return count;
}

}  // namespace

double degrees_of(std::uint32_t code) {
  // Deliberate : 2^23 - 1 steps to a degree, though other products of the family have 2^23.
  return static_cast<std::int32_t>(0x80000000U - code) / 8388607.0;
}

bool is_on_earth(const Position& position) {
  return std::abs(position.latitude) <= 90.0 && std::abs(position.longitude) <= 180.0;
}

std::optional<MapFile> parse_map_file(std::span<const std::uint8_t> bytes, bool may_have_routes) {
  ByteReader in(bytes);
  const std::optional<int> announced = read_header(in);
  if (!announced) return std::nullopt;
  Reading best = read_items(in, *announced, kAheadOfSymbolText);
  Reading other = read_items(in, *announced, kAheadOfSymbolTextShort);
  if (may_have_routes) {
    best.routes = read_routes(best.rest);
    other.routes = read_routes(other.rest);
  }
  if (rank(other) > rank(best)) std::swap(best, other);
  drop_doubtful_items(best);
  return MapFile{std::move(best.items), *announced, best.unknown_type,
                 std::move(best.routes).value_or(std::vector<MapRoute>{})};
}

}  // namespace streetatlas
