// What a simulated receiver is filled with, in plain values. Positions are WGS-84 degrees, lengths metres,
// times seconds since 1989-12-31 00:00:00 UTC with 0 for none; texts are Latin-1 of any length and are cut by
// the record format that carries them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace simulators {

// Subclass bytes of points and links that do not come from a map.
inline constexpr std::array<std::uint8_t, 18> kPlainSubclass{0,    0,    0,    0,    0,    0,    0xFF, 0xFF, 0xFF,
                                                             0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

struct SimWaypoint {
  std::string ident, comment, facility, city, address, cross_road;
  std::string state, country;  // two letters each
  std::string name;            // facility name of the aviation formats; `facility` where it is empty
  std::string link_ident;      // D106 only
  double latitude = 0;
  double longitude = 0;
  std::optional<float> altitude, depth, proximity;
  std::uint16_t symbol = 18;        // symbol_type; 18 is the waypoint dot
  int display_mode = 3;             // 1 symbol, 3 symbol and name, 5 symbol and comment
  std::uint8_t colour = 255;        // 0 to 15, 255 the receiver's default
  std::uint8_t waypoint_class = 0;  // numbered as in D108: 0 user, 0x40 airport, ...; 255 counts as user
  std::array<std::uint8_t, 18> subclass = kPlainSubclass;
  bool locked = false;  // in D150 to D155, which have a class for it
  // Class and subclass in D106, which numbers them in its own way; those above, cut, where the class is 0.
  std::uint8_t d106_class = 0;
  std::array<std::uint8_t, 13> d106_subclass{};
  std::uint32_t time = 0;
};

// The leg from one route point to the next.
struct SimRouteLink {
  std::uint16_t link_class = 3;  // 0 line, 1 link, 2 net, 3 direct, 0xFF snap
  std::array<std::uint8_t, 18> subclass = kPlainSubclass;
  std::string ident;
};

struct SimRoute {
  int number = 0;
  std::string name;
  std::vector<SimWaypoint> points;
  // Element i is the leg from point i to point i + 1; a direct leg where it is missing.
  std::vector<std::optional<SimRouteLink>> links;
};

struct SimTrackPoint {
  double latitude = 0;
  double longitude = 0;
  std::uint32_t time = 0;
  std::optional<float> altitude, depth;
  bool starts_segment = false;
};

struct SimTrack {
  std::string name;
  std::uint8_t colour = 255;  // 0 to 15, 255 the receiver's default
  std::vector<SimTrackPoint> points;
};

// The orbit of a GPS satellite, in the units of the GPS interface document (IS-GPS-200): radians, seconds, square
// root of metres.
struct SimSatellite {
  std::int16_t week = 0;            // of the 1024-week era
  float time_of_applicability = 0;  // seconds of that week
  float af0 = 0, af1 = 0;           // clock offset and drift
  float eccentricity = 0;
  float sqrt_semi_major_axis = 0;
  float mean_anomaly = 0;
  float argument_of_perigee = 0;
  float right_ascension = 0;
  float rate_of_right_ascension = 0;
  float inclination = 0;
  std::uint8_t health = 0;  // 0 usable
};
using SimAlmanac = std::array<std::optional<SimSatellite>, 32>;  // by PRN number minus 1; none: not known

struct SimulatedData {
  std::vector<SimWaypoint> waypoints;
  std::vector<SimRoute> routes;
  std::vector<SimTrack> tracks;
  std::vector<SimWaypoint> proximity;
  SimAlmanac almanac;
};

}  // namespace simulators
