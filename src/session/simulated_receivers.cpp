#include "session/simulated_receivers.h"

#include <array>
#include <string>

namespace session {
namespace {

std::optional<float> known(float metres) { return store::is_known(metres) ? std::optional(metres) : std::nullopt; }

// The aviation formats number their classes each in its own way; a class of no map counts as user.
std::uint8_t class_as_in_d108(const store::ItemRecord& item) {
  constexpr std::uint8_t kUser = 0, kAirport = 0x40, kIntersection = 0x41, kNdb = 0x42, kVor = 0x43;
  constexpr std::array<std::uint8_t, 4> kClasses151{kAirport, kVor, kUser, kUser};
  constexpr std::array<std::uint8_t, 8> kClasses15x{kAirport, kIntersection, kNdb, kVor, kUser, 0x44, 0x45, 0x46};
  const std::uint8_t number = item.waypoint_class;
  if (item.record_type == 151) return number < kClasses151.size() ? kClasses151[number] : kUser;
  if (item.record_type >= 152 && item.record_type <= 155)
    return number < kClasses15x.size() ? kClasses15x[number] : kUser;
  return number;
}

simulators::SimWaypoint sim_waypoint(const store::ItemRecord& item) {
  simulators::SimWaypoint waypoint;
  waypoint.ident = item.ident;
  waypoint.comment = item.comment;
  waypoint.facility = item.facility;
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
  waypoint.symbol = static_cast<std::uint16_t>(item.symbol);
  waypoint.display_mode = item.display_mode;
  waypoint.waypoint_class = class_as_in_d108(item);
  // A user waypoint read from a plain file has no subclass of its own.
  if (item.waypoint_class != 0 && item.waypoint_class != store::kClassNotSet) waypoint.subclass = item.subclass;
  waypoint.time = item.time.seconds;
  return waypoint;
}

simulators::SimRoute sim_route(int number, const store::Route& route) {
  simulators::SimRoute result;
  result.number = number;
  result.name = route.header->comment;
  for (const store::ItemRecord& point : route.points) {
    if (point.in_use == 0) continue;
    result.points.push_back(sim_waypoint(point));
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
                         : std::uint8_t{255};
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

simulators::SimulatedData simulated_data(const store::ItemStore& items) {
  simulators::SimulatedData data;
  for (int i = 1; i <= items.waypoint_count(); ++i)
    if (items.waypoint(i).in_use != 0) data.waypoints.push_back(sim_waypoint(items.waypoint(i)));
  for (int i = 1; i <= items.proximity_count(); ++i)
    if (items.proximity(i).in_use != 0) data.proximity.push_back(sim_waypoint(items.proximity(i)));
  for (int number = 0; number < store::kRouteCapacity; ++number)
    if (items.route(number).header) data.routes.push_back(sim_route(number, items.route(number)));
  data.tracks = sim_tracks(items);
  data.almanac = sim_almanac(items.almanac());
  return data;
}

}  // namespace session
