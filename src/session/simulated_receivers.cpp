#include "session/simulated_receivers.h"

#include <algorithm>
#include <limits>
#include <string>

#include "garmin/waypoint_values.h"

namespace session {
namespace {

constexpr std::uint8_t kDefaultColour = 255;  // of a receiver

std::optional<float> known(float metres) { return store::is_known(metres) ? std::optional(metres) : std::nullopt; }

// D106 has classes of its own.
void set_class(const store::ItemRecord& item, simulators::SimWaypoint& waypoint) {
  constexpr std::uint8_t kLockedOfD154 = 9;
  waypoint.waypoint_class = garmin::class_number(item, 108);
  waypoint.subclass = garmin::subclass(item, 108);
  waypoint.locked = garmin::class_number(item, 154) == kLockedOfD154;
  if (item.record_type != 106 || item.waypoint_class == store::kClassNotSet) return;
  waypoint.d106_class = item.waypoint_class;
  std::copy_n(item.subclass.begin(), waypoint.d106_subclass.size(), waypoint.d106_subclass.begin());
}

simulators::SimWaypoint sim_waypoint(const store::ItemRecord& item, const store::Settings& settings) {
  simulators::SimWaypoint waypoint;
  waypoint.ident = item.ident;
  waypoint.comment = item.comment;
  waypoint.facility = item.facility.empty() ? item.name.view() : item.facility.view();
  waypoint.city = item.city;
  waypoint.address = item.address;
  waypoint.cross_road = item.cross_road;
  waypoint.state = item.state;
  waypoint.country = item.country;
  waypoint.name = item.name;
  waypoint.link_ident = item.link_ident;
  waypoint.latitude = item.position.latitude;
  waypoint.longitude = item.position.longitude;
  waypoint.altitude = known(item.altitude);
  waypoint.depth = known(item.depth);
  if (item.proximity_distance > 0) waypoint.proximity = known(item.proximity_distance);
  waypoint.symbol = garmin::symbol_type(item, settings, std::numeric_limits<std::uint16_t>::max());
  waypoint.colour = garmin::colour_code(item.colour).value_or(kDefaultColour);
  waypoint.display_mode = item.display_mode;
  set_class(item, waypoint);
  waypoint.time = item.time.seconds;
  return waypoint;
}

simulators::SimRoute sim_route(int number, const store::Route& route, const store::Settings& settings) {
  simulators::SimRoute result;
  result.number = number;
  result.name = route.header->comment;
  for (const store::ItemRecord& point : route.points) {
    if (point.in_use == 0) continue;
    result.points.push_back(sim_waypoint(point, settings));
    std::optional<simulators::SimRouteLink> link;
    if (point.has_route_link != 0)
      link = simulators::SimRouteLink{point.link_class, point.link_subclass, std::string(point.route_link_ident)};
    result.links.push_back(link);
  }
  return result;
}

std::vector<simulators::SimTrack> sim_tracks(const store::ItemStore& items) {
  std::vector<simulators::SimTrack> tracks;
  for (int i = 1; i <= items.track_point_count(); ++i) {
    const store::ItemRecord& point = items.track_point(i);
    if (point.in_use == 0) continue;
    if (tracks.empty() || point.segment_flag == store::kStartsNamedTrack) {
      simulators::SimTrack track;
      track.name = point.segment_flag == store::kStartsNamedTrack ? std::string(point.ident) : "ACTIVE LOG";
      track.colour = point.colour < store::kDefaultColour && point.segment_flag == store::kStartsNamedTrack
                         ? point.colour
                         : kDefaultColour;
      tracks.push_back(track);
    }
    simulators::SimTrackPoint sim_point;
    sim_point.latitude = point.position.latitude;
    sim_point.longitude = point.position.longitude;
    sim_point.time = point.time.seconds;
    sim_point.altitude = known(point.altitude);
    sim_point.depth = known(point.depth);
    sim_point.starts_segment = tracks.back().points.empty() || point.segment_flag != store::kContinues;
    tracks.back().points.push_back(sim_point);
  }
  return tracks;
}

simulators::SimAlmanac sim_almanac(const store::Almanac& almanac) {
  simulators::SimAlmanac result;
  for (std::size_t i = 0; i < result.size(); ++i) {
    const std::optional<store::AlmanacEntry>& entry = almanac.satellites[i];
    if (!entry) continue;
    result[i] = simulators::SimSatellite{.week = entry->week,
                                         .time_of_applicability = entry->time_of_applicability,
                                         .af0 = entry->af0,
                                         .af1 = entry->af1,
                                         .eccentricity = entry->eccentricity,
                                         .sqrt_semi_major_axis = entry->sqrt_semi_major_axis,
                                         .mean_anomaly = entry->mean_anomaly,
                                         .argument_of_perigee = entry->argument_of_perigee,
                                         .right_ascension = entry->right_ascension,
                                         .rate_of_right_ascension = entry->rate_of_right_ascension,
                                         .inclination = entry->inclination,
                                         .health = entry->health.value_or(0)};
  }
  return result;
}

}  // namespace

simulators::SimulatedData simulated_data(const store::ItemStore& items, const store::Settings& settings) {
  simulators::SimulatedData data;
  for (int i = 1; i <= items.waypoint_count(); ++i)
    if (items.waypoint(i).in_use != 0) data.waypoints.push_back(sim_waypoint(items.waypoint(i), settings));
  for (int i = 1; i <= items.proximity_count(); ++i)
    if (items.proximity(i).in_use != 0) data.proximity.push_back(sim_waypoint(items.proximity(i), settings));
  for (int number = 0; number < store::kRouteCapacity; ++number)
    if (items.route(number).header) data.routes.push_back(sim_route(number, items.route(number), settings));
  data.tracks = sim_tracks(items);
  data.almanac = sim_almanac(items.almanac());
  return data;
}

}  // namespace session
