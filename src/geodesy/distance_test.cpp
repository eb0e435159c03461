#include "geodesy/distance.h"

#include <gtest/gtest.h>

namespace geodesy {
namespace {

TEST(Distance, OneDegreeOfTheEquatorInEveryUnit) {
  const auto distance = [](DistanceUnit unit) { return great_circle_distance({0.0, 7.0}, {0.0, 8.0}, unit); };
  EXPECT_NEAR(distance(DistanceUnit::NauticalMiles), 60.0074731, 1e-6);  // 3438.1749460 x pi / 180
  EXPECT_NEAR(distance(DistanceUnit::StatuteMiles), 69.0553999, 1e-6);
  EXPECT_NEAR(distance(DistanceUnit::Kilometres), 111.1338402, 1e-6);
  EXPECT_NEAR(distance(DistanceUnit::Feet), 364612.5116, 1e-3);
  EXPECT_NEAR(distance(DistanceUnit::Metres), 111133.8402, 1e-3);
  EXPECT_EQ(distance(static_cast<DistanceUnit>(-7)), distance(DistanceUnit::NauticalMiles));
  EXPECT_EQ(unit_name(static_cast<DistanceUnit>(5)), "nm");
}

TEST(Distance, IsThatOfTheShortWayRoundTheGlobe) {
  // 6367.5 km x pi
  EXPECT_NEAR(great_circle_distance({37.3, -12.9}, {-37.3, 167.1}, DistanceUnit::Kilometres), 20004.0912, 1e-3);
  EXPECT_NEAR(great_circle_distance({90.0, 0.0}, {-90.0, 123.0}, DistanceUnit::Kilometres), 20004.0912, 1e-3);
  EXPECT_EQ(great_circle_distance({51.123456, 7.654321}, {51.123456, 7.654321}, DistanceUnit::Feet), 0.0);
  EXPECT_NEAR(great_circle_distance({0.0, 179.5}, {0.0, -179.5}, DistanceUnit::NauticalMiles), 60.0074731, 1e-6);
}

}  // namespace
}  // namespace geodesy
