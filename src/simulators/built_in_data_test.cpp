#include "simulators/built_in_data.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace simulators
