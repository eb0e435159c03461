#include "session/simulated_lowrance.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

#include "base/text.h"
#include "lowrance/mercator.h"
#include "lowrance/records.h"
#include "lowrance/route_upload.h"
#include "store/symbol_sets.h"

namespace session {
namespace {

simulators::LowrancePlace place_of(const store::ItemRecord& item) {
  return {item.position.latitude, item.position.longitude};
}

// The list of waypoints as it grows, with the place of each of them in it.
class WaypointList {
 public:
  WaypointList(const store::ItemStore& items, const store::Settings& settings, int symbols)
      : settings_(settings), symbols_(symbols) {
    for (int number = 0; number < store::kRouteCapacity; ++number)
      for (const store::ItemRecord& point : items.route(number).points) points_.insert(ident_of(point));
  }

  void add(const store::ItemRecord& item) {
    const int next_place = static_cast<int>(list_.size());
    const auto [first, is_new] = by_ident_.try_emplace(ident_of(item), next_place);
    // The points of a route that was read are waypoints too, often beside those that they were made of.
    const bool is_copy = !is_new && points_.contains(ident_of(item));
    if (item.number != 0) by_number_.try_emplace(item.number, is_copy ? first->second : next_place);
    if (is_copy) return;
    simulators::LowranceWaypoint waypoint;
    waypoint.name = item.ident;
    waypoint.place = place_of(item);
    waypoint.symbol = symbol_of(item);
    waypoint.time = lowrance::to_unit_time(item.time, 0);
    list_.push_back(std::move(waypoint));
  }
  // Of the waypoint that stands for a route point, which is added where there is none.
  int place_of_point(const store::ItemRecord& point) {
    if (const auto found = by_number_.find(point.number); found != by_number_.end()) return found->second;
    if (const auto found = by_ident_.find(ident_of(point)); found != by_ident_.end()) return found->second;
    store::ItemRecord waypoint = point;
    waypoint.number = 0;  // of a waypoint that is not there
    add(waypoint);
    return static_cast<int>(list_.size()) - 1;
  }
  [[nodiscard]] std::uint8_t symbol_of(const store::ItemRecord& item) const {
    return store::lowrance_symbol(store::symbol_code(item, settings_), symbols_);
  }
  std::vector<simulators::LowranceWaypoint> take() { return std::move(list_); }

 private:
  using Ident = std::tuple<std::string, double, double>;
  static Ident ident_of(const store::ItemRecord& item) {
    return {std::string(item.ident), item.position.latitude, item.position.longitude};
  }

  const store::Settings& settings_;
  int symbols_;
  std::set<Ident> points_;  // of routes
  std::vector<simulators::LowranceWaypoint> list_;
  std::map<std::uint32_t, int> by_number_;
  std::map<Ident, int> by_ident_;
};

std::vector<std::vector<simulators::LowrancePlace>> trails_of(const store::ItemStore& items) {
  std::vector<std::vector<simulators::LowrancePlace>> trails;
  for (int i = 1; i <= items.track_point_count(); ++i) {
    const store::ItemRecord point = items.track_point(i);
    if (point.in_use == 0) continue;
    if (trails.empty() || point.segment_flag != store::kContinues) trails.emplace_back();
    trails.back().push_back(place_of(point));
  }
  return trails;
}

// Up to the unit's room, and to a step that is too long for it.
std::size_t points_that_fit(const std::vector<simulators::LowrancePlace>& trail, const simulators::LowranceUnit& unit) {
  constexpr int kLongestStep = 32767;  // metres of the unit's grid
  const std::size_t room = std::min(trail.size(), static_cast<std::size_t>(std::max<int>(unit.trail_capacity, 0)));
  for (std::size_t i = 1; i < room; ++i) {
    const lowrance::GridPoint from = lowrance::to_grid({trail[i - 1].latitude, trail[i - 1].longitude});
    const lowrance::GridPoint to = lowrance::to_grid({trail[i].latitude, trail[i].longitude});
    if (std::abs(std::int64_t{to.y} - from.y) > kLongestStep || std::abs(std::int64_t{to.x} - from.x) > kLongestStep)
      return i;
  }
  return room;
}

}  // namespace

simulators::LowranceData lowrance_data(const store::ItemStore& items, const store::Settings& settings,
                                       const simulators::LowranceUnit& unit) {
  simulators::LowranceData data;
  WaypointList waypoints(items, settings, unit.symbols);
  for (int i = 1; i <= items.waypoint_count(); ++i)
    if (items.waypoint(i).in_use != 0) waypoints.add(items.waypoint(i));
  for (int number = 0; number < store::kRouteCapacity; ++number) {
    const store::Route& route = items.route(number);
    if (!route.header) continue;
    data.routes.resize(static_cast<std::size_t>(number) + 1);  // a route keeps its number
    simulators::LowranceRoute& loaded = data.routes.back();
    loaded.name = lowrance::unit_route_name(route.header->comment);
    for (const store::ItemRecord& point : route.points)
      if (point.in_use != 0) loaded.waypoints.push_back(waypoints.place_of_point(point));
  }
  for (int i = 1; i <= items.event_count(); ++i) {
    const store::ItemRecord event = items.event(i);
    if (event.in_use != 0) data.events.push_back({place_of(event), waypoints.symbol_of(event)});
  }
  data.waypoints = waypoints.take();
  data.trails = trails_of(items);
  return data;
}

std::string not_loaded(const simulators::LowranceData& data, const store::ItemStore& items,
                       const simulators::LowranceUnit& unit) {
  std::string kinds;
  const auto look = [&kinds](std::size_t held, int room, const char* plural) {
    const int excess = static_cast<int>(held) - std::max(room, 0);
    if (excess > 0) kinds += base::format_text("%s%d %s", kinds.empty() ? "" : ", ", excess, plural);
  };
  look(data.waypoints.size(), unit.waypoints, "waypoints");
  std::size_t routes = 0;
  for (int number = std::max<int>(unit.routes, 0); number < store::kRouteCapacity; ++number)
    if (items.route(number).header) ++routes;
  look(routes, 0, "routes");
  look(data.events.size(), unit.icons, "events");
  look(data.trails.size(), unit.trails, "plot trails");
  for (const simulators::LowranceRoute& route : data.routes)
    look(route.waypoints.size(), unit.waypoints_per_route, "route points");
  for (const auto& trail : data.trails) look(trail.size() - points_that_fit(trail, unit), 0, "points of a plot trail");
  look(static_cast<std::size_t>(items.proximity_count()), 0, "proximity waypoints");
  if (!items.almanac().empty()) kinds += kinds.empty() ? "the almanac" : ", the almanac";
  return kinds;
}

}  // namespace session
