#include "simulators/garmin_memory.h"

#include "simulators/garmin_record_shapes.h"
#include "simulators/garmin_records.h"

namespace simulators {

namespace {

constexpr LinkIds kLink1{.date_time = 14,
                         .position = 17,
                         .pvt = 51,
                         .almanac = 31,
                         .records = 27,
                         .waypoint = 35,
                         .route_header = 29,
                         .route_waypoint = 30,
                         .route_link = 98,
                         .track_header = 99,
                         .track_point = 34,
                         .proximity = 19};
constexpr LinkIds kLink2{.date_time = 20,
                         .position = 24,
                         .pvt = 0,
                         .almanac = 4,
                         .records = 35,
                         .waypoint = 43,
                         .route_header = 37,
                         .route_waypoint = 39,
                         .route_link = 0,
                         .track_header = 0,
                         .track_point = 0,
                         .proximity = 27};

// The records that are added; the formats are known to be fitting ones, so each gives a record.
class Collector {
 public:
  void add(std::uint8_t id, std::optional<base::Bytes> record) {
    if (record) packets_.push_back({id, std::move(*record)});
  }
  [[nodiscard]] std::vector<Packet> result() && { return std::move(packets_); }

 private:
  std::vector<Packet> packets_;
};

// As in uploads, a later one takes the place of the one of its ident.
std::vector<Packet> waypoint_packets(const std::vector<SimWaypoint>& waypoints, std::uint8_t id, int format) {
  std::vector<Packet> packets;
  RecordPlaces places(format);
  for (const SimWaypoint& waypoint : waypoints) {
    std::optional<base::Bytes> record = encode_waypoint(format, waypoint);
    if (!record) continue;
    const std::size_t place = places.place_for(*record);
    if (place > 0) record = encode_waypoint(format, waypoint, static_cast<int>(place));
    put_record({id, std::move(*record)}, place, packets);
  }
  return packets;
}

std::vector<Packet> route_packets(const std::vector<SimRoute>& routes, const LinkIds& ids,
                                  const GarminCapabilities& can) {
  Collector out;
  for (const SimRoute& route : routes) {
    out.add(ids.route_header, encode_route_header(can.route_header, route));
    for (std::size_t i = 0; i < route.points.size(); ++i) {
      out.add(ids.route_waypoint, encode_waypoint(can.route_waypoint, route.points[i]));
      if (can.route_link == 0 || i + 1 == route.points.size()) continue;
      const bool described = i < route.links.size() && route.links[i].has_value();
      out.add(ids.route_link, encode_route_link(described ? *route.links[i] : SimRouteLink{}));
    }
  }
  return std::move(out).result();
}

std::vector<Packet> track_packets(const std::vector<SimTrack>& tracks, const LinkIds& ids,
                                  const GarminCapabilities& can) {
  Collector out;
  for (std::size_t i = 0; i < tracks.size(); ++i) {
    if (can.track_header != 0) {
      out.add(ids.track_header, encode_track_header(can.track_header, tracks[i], static_cast<int>(i)));
    }
    bool first = true;
    for (const SimTrackPoint& point : tracks[i].points) {
      out.add(ids.track_point, encode_track_point(can.track_data, point, first || point.starts_segment));
      first = false;
    }
  }
  return std::move(out).result();
}

// D500 and D501 do not name their satellite: a record for each, in the order of the PRN numbers.
std::vector<Packet> almanac_packets(const SimAlmanac& almanac, std::uint8_t id, int format) {
  Collector out;
  for (std::size_t i = 0; i < almanac.size(); ++i) {
    if (almanac[i] || !names_satellite(format)) out.add(id, encode_satellite(format, static_cast<int>(i), almanac[i]));
  }
  return std::move(out).result();
}

}  // namespace

const LinkIds& link_ids(int link) { return link == 2 ? kLink2 : kLink1; }

GarminMemory fill_memory(const SimulatedData& data, const GarminCapabilities& can) {
  const LinkIds& ids = link_ids(can.link);
  GarminMemory memory;
  if (can.waypoint_transfer != 0) {
    memory.waypoints = waypoint_packets(data.waypoints, ids.waypoint, can.waypoint_data);
  }
  if (can.route_transfer != 0 && (can.route_link == 0 || ids.route_link != 0)) {
    memory.routes = route_packets(data.routes, ids, can);
  }
  if (can.track_transfer != 0 && ids.track_point != 0) memory.tracks = track_packets(data.tracks, ids, can);
  if (can.proximity_transfer != 0) {
    memory.proximity = waypoint_packets(data.proximity, ids.proximity, can.proximity_data);
  }
  if (can.almanac_transfer != 0) memory.almanac = almanac_packets(data.almanac, ids.almanac, can.almanac_data);
  return memory;
}

}  // namespace simulators
