#include "streetatlas/map_reader.h"

#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "base/remarks.h"
#include "base/text.h"
#include "geodesy/distance.h"
#include "store/symbols.h"
#include "streetatlas/map_items.h"

namespace streetatlas {
namespace {

using geodesy::Position;

constexpr double kMetresPerNauticalMile = 1855.322236;  // Deliberate : 1852 is what others count
constexpr std::int16_t kSymbolAndComment = 5;

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

struct RouteMarker {
  std::string number_text;
  std::uint16_t number = 0;
  std::string_view name;  // of the point
};

// "(03:12)Bridge": a point of route 3. The point's place in the route is not looked at: points come in order.
std::optional<RouteMarker> route_marker(std::string_view text) {
  constexpr std::string_view kPattern = "(00:00)";
  if (text.size() < kPattern.size()) return std::nullopt;
  for (std::size_t i = 0; i < kPattern.size(); ++i)
    if (kPattern[i] == '0' ? !is_digit(text[i]) : text[i] != kPattern[i]) return std::nullopt;
  const int number = (text[1] - '0') * 10 + (text[2] - '0');
  return RouteMarker{std::string(text.substr(1, 2)), static_cast<std::uint16_t>(number), text.substr(kPattern.size())};
}

store::GarminTime time_of_reading(const base::Clock& clock) {
  const std::int64_t seconds = clock.unix_seconds() - store::kGarminEpochUnix;
  if (!std::in_range<std::uint32_t>(seconds)) return {};
  return {static_cast<std::uint32_t>(seconds)};
}

// Puts what a file says into the store.
class MapStorer {
 public:
  MapStorer(const store::FileContext& context, const MapFile& map)
      : store_(context.store), front_end_(context.front_end), map_(map), now_(time_of_reading(context.clock)) {}

  // The number of records stored.
  int store_map();

 private:
  void store_item(const MapItem& item);
  void store_symbol(const MapItem& item);
  void store_route_symbol(const RouteMarker& marker, const Position& position);
  void store_line(const MapItem& item);
  void store_circle(const MapItem& item);
  void store_route(const MapRoute& route);
  void store_route_point(const Position& position, std::string_view name);
  void start_route(std::uint16_t number, std::string_view number_text, std::string_view name);
  // False, and counted, for a position that is none.
  [[nodiscard]] bool has_place(const Position& position);
  // CurrentItem at that place, now; false where has_place is.
  [[nodiscard]] bool start_record(const Position& position, std::string_view ident);
  [[nodiscard]] bool start_waypoint(const Position& position, std::string_view ident);
  void count(int refused) { accepted_ += 1 - refused; }
  [[nodiscard]] std::string_view route_name(std::uint16_t number) const;
  void report() const;

  store::ItemStore& store_;
  base::FrontEnd& front_end_;
  const MapFile& map_;
  store::GarminTime now_;
  int accepted_ = 0;
  int item_number_ = 0;  // of the item being stored, from 1
  int bad_positions_ = 0;
  int first_bad_item_ = 0;
  int points_without_route_ = 0;
  std::optional<std::uint16_t> open_route_;  // that symbols are adding points to
  std::array<bool, store::kRouteCapacity> routes_of_symbols_{};
};

int MapStorer::store_map() {
  store_.set_input_time_offset(0);
  store_.clear_route_overflow();
  store_.forget_pending_track();
  for (const MapItem& item : map_.items) {
    ++item_number_;
    store_item(item);
  }
  for (const MapRoute& route : map_.routes) {
    // The symbols have drawn that route already.
    if (!routes_of_symbols_[route.number]) store_route(route);
  }
  store_.forget_pending_track();
  store_.start_item();
  report();
  return accepted_;
}

void MapStorer::store_item(const MapItem& item) {
  switch (item.type) {
    case ItemType::Text:
      if (start_waypoint(item.position, item.text)) count(store_.push_waypoint(0));
      break;
    case ItemType::Symbol:
      store_symbol(item);
      break;
    case ItemType::Note:
      break;  // remarks on the map, no items of a receiver
    case ItemType::Line:
    case ItemType::Area:
      store_line(item);
      break;
    case ItemType::Circle:
      store_circle(item);
      break;
  }
}

void MapStorer::store_symbol(const MapItem& item) {
  if (const std::optional<RouteMarker> marker = route_marker(item.text)) {
    store_route_symbol(*marker, item.position);
  } else if (item.text == "Icon") {
    if (start_record(item.position, item.text)) count(store_.push_event());
  } else if (start_waypoint(item.position, item.text)) {
    count(store_.push_waypoint(0));
  }
}

void MapStorer::store_route_symbol(const RouteMarker& marker, const Position& position) {
  if (!has_place(position)) return;  // a header is made for a point that can be stored
  if (open_route_ != marker.number) {
    start_route(marker.number, marker.number_text, route_name(marker.number));
    open_route_ = marker.number;
    routes_of_symbols_[marker.number] = true;
  }
  store_route_point(position, marker.name);
}

// A point whose route found no room is kept as a waypoint.
void MapStorer::store_route_point(const Position& position, std::string_view name) {
  if (!start_waypoint(position, name)) return;
  if (store_.route_overflow()) ++points_without_route_;
  count(store_.route_overflow() ? store_.push_waypoint(0) : store_.push_route(true));
}

void MapStorer::store_line(const MapItem& item) {
  bool begins = true;
  store_.set_track_line(item.line);
  for (const Position& point : item.points) {
    if (!start_record(point, "")) continue;
    if (std::exchange(begins, false)) store_.start_segment();
    count(store_.push_track());
  }
}

void MapStorer::store_circle(const MapItem& item) {
  if (!start_waypoint(item.position, base::format_text("PROX%02d", store_.proximity_count() + 1))) return;
  Position rim = item.rim;
  if (std::abs(rim.latitude) > 90) rim.latitude = item.position.latitude;
  if (std::abs(rim.longitude) > 180) rim.longitude = item.position.longitude;
  const double nautical_miles =
      geodesy::great_circle_distance(item.position, rim, geodesy::DistanceUnit::NauticalMiles);
  store_.CurrentItem.proximity_distance = static_cast<float>(nautical_miles * kMetresPerNauticalMile);
  count(store_.push_proximity());
}

void MapStorer::store_route(const MapRoute& route) {
  start_route(route.number, base::format_text("%02d", int{route.number}), route.name);
  for (const MapRoutePoint& point : route.points) store_route_point(point.position, point.name);
}

void MapStorer::start_route(std::uint16_t number, std::string_view number_text, std::string_view name) {
  if (store_.route_overflow()) return;  // which was said at the first that found no room
  store_.start_route(number, number_text, name);
  count(store_.push_route(true));
}

bool MapStorer::has_place(const Position& position) {
  if (is_on_earth(position)) return true;
  if (bad_positions_++ == 0) first_bad_item_ = item_number_;
  return false;
}

bool MapStorer::start_record(const Position& position, std::string_view ident) {
  if (!has_place(position)) return false;
  store_.start_item();
  store_.CurrentItem.position = position;
  store_.CurrentItem.time = now_;
  store_.CurrentItem.ident = ident;
  return true;
}

bool MapStorer::start_waypoint(const Position& position, std::string_view ident) {
  if (!start_record(position, ident)) return false;
  store_.CurrentItem.symbol = store::kDotSymbol;  // what Street Atlas means by its numbers is not known
  store_.CurrentItem.display_mode = kSymbolAndComment;
  return true;
}

std::string_view MapStorer::route_name(std::uint16_t number) const {
  for (const MapRoute& route : map_.routes)
    if (route.number == number) return route.name;
  return {};
}

void MapStorer::report() const {
  if (map_.unknown_type) front_end_.write_line(1, base::format_text("New SA Item found 0x%04x", *map_.unknown_type));
  base::Remarks remarks;
  remarks.add(bad_positions_, "positions are not on the earth and were passed over, the first in item " +
                                  std::to_string(first_bad_item_));
  remarks.add(points_without_route_, "points of routes that found no room are waypoints only");
  remarks.say(front_end_);
  const int understood = static_cast<int>(map_.items.size());
  if (understood < map_.announced)
    front_end_.write_line(3, base::format_text("Only the first %d of %d items were understood; the rest of the file "
                                               "was not read",
                                               understood, map_.announced));
}

int read_map(const store::FileContext& context, base::TextInput& input, const std::string& file_name,
             bool may_have_routes) {
  const std::string_view contents = input.rest();
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(contents.data()), contents.size());
  const std::optional<MapFile> map = parse_map_file(bytes, may_have_routes);
  if (!map) {
    context.front_end.write_line(1, "File " + file_name + " is not a valid DeLorme .SA file");
    return -1;
  }
  return MapStorer(context, *map).store_map();
}

}  // namespace

int read_street_atlas_3(const store::FileContext& context, base::TextInput& input, const std::string& file_name) {
  return read_map(context, input, file_name, false);
}

int read_street_atlas(const store::FileContext& context, base::TextInput& input, const std::string& file_name) {
  return read_map(context, input, file_name, true);
}

}  // namespace streetatlas
