#include "simulators/built_in_data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace simulators {
namespace {

constexpr const char* kIdentCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr const char* kNameCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 -";

TEST(BelievableWeekend, EveryReceiverCanShowItsTexts) {
  const SimulatedData data = believable_weekend();
  std::set<std::string> idents;
  for (const SimWaypoint& waypoint : data.waypoints) {
    EXPECT_TRUE(idents.insert(waypoint.ident).second) << waypoint.ident;
    EXPECT_LE(waypoint.ident.size(), 6u);
    EXPECT_LE(waypoint.comment.size(), 40u);
    EXPECT_EQ(waypoint.ident.find_first_not_of(kIdentCharacters), std::string::npos) << waypoint.ident;
    EXPECT_EQ(waypoint.comment.find_first_not_of(kNameCharacters), std::string::npos) << waypoint.comment;
  }
  for (const SimRoute& route : data.routes) {
    EXPECT_EQ(route.name.find_first_not_of(kNameCharacters), std::string::npos);
    for (const SimWaypoint& point : route.points) EXPECT_TRUE(idents.contains(point.ident));
  }
}

TEST(BelievableWeekend, ItsTracksAreWalkedAndPaddledAtAPlausibleSpeed) {
  const SimulatedData data = believable_weekend();
  for (const SimTrack& track : data.tracks) {
    double metres = 0;
    for (std::size_t i = 1; i < track.points.size(); ++i) {
      const SimTrackPoint& from = track.points[i - 1];
      const SimTrackPoint& to = track.points[i];
      const double step = std::hypot((to.latitude - from.latitude) * 111195,
                                     (to.longitude - from.longitude) * 111195 * 0.583);  // cos 54.33
      const double seconds = to.time - from.time;
      EXPECT_GT(seconds, 5) << track.name << ' ' << i;
      EXPECT_LT(step / seconds, 1.5) << track.name << ' ' << i;
      EXPECT_LT(std::abs(*to.altitude - *from.altitude), 40) << track.name << ' ' << i;
      metres += step;
    }
    EXPECT_GT(metres, 5000) << track.name;
    EXPECT_LT(metres, 20000) << track.name;
    EXPECT_LT(track.points.back().time - track.points.front().time, 8u * 3600) << track.name;
  }
}

TEST(BelievableWeekend, ItsSatellitesAreSpreadOverSixPlanesAndCollideNowhere) {
  const SimulatedData data = believable_weekend();
  std::set<long> planes;
  std::set<std::pair<long, long>> places;  // plane, degrees along it
  for (const std::optional<SimSatellite>& satellite : data.almanac) {
    if (!satellite) continue;
    const double kDegrees = 180 / 3.14159265;
    const long plane = std::lround(satellite->right_ascension * kDegrees / 60);
    planes.insert((plane + 6) % 6);
    const double along = (satellite->mean_anomaly + satellite->argument_of_perigee) * kDegrees;
    EXPECT_TRUE(places.insert({plane, std::lround(along / 10 + 72) % 36}).second);
    EXPECT_NEAR(satellite->inclination * kDegrees, 55, 1.1);
    EXPECT_NEAR(satellite->sqrt_semi_major_axis, 5153.6, 0.1);
    EXPECT_GT(satellite->eccentricity, 0);
    EXPECT_LE(std::abs(satellite->mean_anomaly), 3.1416F);
    EXPECT_LE(std::abs(satellite->argument_of_perigee), 3.1416F);
  }
  EXPECT_EQ(planes.size(), 6u);
  EXPECT_EQ(places.size(), 28u);
}

}  // namespace
}  // namespace simulators
