// Data for a simulated receiver that fills what record formats have room for.
#pragma once

#include "simulators/simulated_data.h"

namespace support {

// Waypoints with something in every field; none that a format would have to cut to the same ident.
inline simulators::SimulatedData rich_data() {
  simulators::SimWaypoint harbour;
  harbour.ident = "HARBOUR MASTER";
  harbour.comment = "FORTY LETTERS ARE THE LONGEST OF COMMENTS AND THESE ARE MORE";
  harbour.latitude = -33.857;
  harbour.longitude = 151.215;
  harbour.altitude = 12.4F;
  harbour.depth = 3.5F;
  harbour.proximity = 250.0F;
  harbour.symbol = 150;
  harbour.display_mode = 5;
  harbour.colour = 12;  // blue
  harbour.time = 360401400;
  simulators::SimWaypoint peak;
  peak.ident = "PEAK";
  peak.latitude = 54.3701;
  peak.longitude = -3.1189;
  peak.symbol = 8246;
  peak.display_mode = 1;
  peak.colour = 9;  // red
  peak.waypoint_class = 0x40;
  peak.subclass.fill(0xAB);
  peak.facility = "Light";
  peak.city = "Kiel";
  peak.address = "Quay 1";
  peak.cross_road = "Quay and River";
  peak.state = "SH";
  peak.country = "DE";
  peak.name = "Peak Field";
  peak.link_ident = "LINK OF A TYPE 106";
  simulators::SimWaypoint sea;
  sea.ident = "SEA";
  sea.longitude = -180;
  sea.altitude = 0.0F;
  simulators::SimulatedData data;
  data.waypoints = {harbour, peak, sea};
  data.proximity = {harbour, peak};
  simulators::SimRoute route;
  route.number = 7;
  route.name = "ROUND THE BAY";
  route.points = {harbour, peak, sea};
  route.links = {simulators::SimRouteLink{0x0102, peak.subclass, "OVER THE HILL"}, std::nullopt};
  data.routes = {route};
  simulators::SimTrack track;
  track.name = "OUT AND BACK";
  track.colour = 2;
  track.points = {{54.0, 10.0, 360401400, 12.5F, 3.25F, true},
                  {54.1, 10.1, 360401460, std::nullopt, std::nullopt, false},
                  {-54.2, -10.2, 0, -7.5F, std::nullopt, true}};
  data.tracks = {track};
  return data;
}

}  // namespace support
