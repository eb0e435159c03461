#include "geodesy/utm.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace geodesy {
namespace {

constexpr Ellipsoid kWgs84;
constexpr Ellipsoid kClarke1866{6378206.4, 1.0 - 6356583.8 / 6378206.4};

struct Case {
  Position position;
  const char* zone;
  double easting;
  double northing;
  Ellipsoid ellipsoid = kWgs84;
};

// Figures of PROJ 9.1; southern northings here count on from the equator's ten million.
constexpr std::array kWitnessed{
    Case{{0.0, 0.0}, "31N", 166021.4431, 0.0},
    Case{{51.5, 7.25}, "32U", 378531.9365, 5706881.1181},
    Case{{40.0, -100.0}, "14T", 414639.5382, 4428236.0646},
    Case{{83.9, 17.9}, "33Y", 534390.8313, 9317795.7533},
    Case{{-30.0, 12.1}, "33J", 220241.5549, 20000000.0 - 6677672.7749},
    Case{{-79.9, 16.5}, "33C", 529363.1676, 20000000.0 - 1129197.2484},
    Case{{45.0, 179.999}, "60T", 736367.2107, 4987326.5844},
    Case{{-17.0, 180.0}, "61K", 180548.4468, 10000000.0 + 1882001.8091},
    Case{{40.0, -100.0}, "14T", 414637.2957, 4428026.0388, kClarke1866},
    Case{{85.0, 44.0}, "00Z", 2385853.1264, 1600437.3910},
    Case{{84.3, -132.5}, "00Y", 1533054.9137, 2427876.3391},
    Case{{-85.0, 44.0}, "00B", 2385853.1264, 2399562.6090},
    Case{{-80.0001, -132.5}, "00A", 1179454.5954, 1248108.6661},
};

TEST(Utm, FiguresAgreeWithAnIndependentProgramToAMillimetre) {
  for (const Case& expected : kWitnessed) {
    SCOPED_TRACE(expected.zone);
    const UtmPosition utm = latlon_to_utm(expected.position, expected.ellipsoid);
    EXPECT_EQ(utm.zone, expected.zone);
    EXPECT_NEAR(utm.easting, expected.easting, 0.001);
    EXPECT_NEAR(utm.northing, expected.northing, 0.001);
  }
}

TEST(Utm, TheInverseGivesThePositionBack) {
  for (const Case& expected : kWitnessed) {
    SCOPED_TRACE(expected.zone);
    const int zone_number = (expected.zone[0] - '0') * 10 + expected.zone[1] - '0';
    const Position position = utm_to_latlon(zone_number, expected.position.latitude < 0, expected.easting,
                                            expected.northing, expected.ellipsoid);
    EXPECT_NEAR(position.latitude, expected.position.latitude, 1e-8);
    EXPECT_NEAR(position.longitude, expected.position.longitude, 2e-8);
  }
}

TEST(Utm, BothWaysOfCountingSouthernNorthingsLieInTheSouth) {
  EXPECT_NEAR(utm_to_latlon(33, true, 220241.5549, 6677672.7749, kWgs84).latitude, -30.0, 1e-8);
  EXPECT_NEAR(utm_to_latlon(33, true, 220241.5549, 13322327.2251, kWgs84).latitude, -30.0, 1e-8);
}

TEST(Utm, BandsBeginAtTheirSouthernEdge) {
  struct Edge {
    double latitude;
    const char* zone;
  };
  // Deliberate : from 80 North on the letter is Y.
  for (const Edge edge : {Edge{-80.0, "31C"}, Edge{-72.0, "31D"}, Edge{-40.0001, "31G"}, Edge{-32.0, "31J"},
                          Edge{-8.0, "31M"}, Edge{-1e-300, "31M"}, Edge{0.0, "31N"}, Edge{-0.0, "31N"},
                          Edge{7.9999, "31N"}, Edge{8.0, "31P"}, Edge{72.0, "31X"}, Edge{79.9999, "31X"},
                          Edge{80.0, "31Y"}, Edge{84.0, "31Y"}, Edge{84.0001, "00Z"}, Edge{-80.0001, "00B"}})
    EXPECT_EQ(latlon_to_utm({edge.latitude, 0.0}, kWgs84).zone, edge.zone) << edge.latitude;
}

TEST(Utm, NoLongitudeOfAnyNumberLeavesTheZones) {
  const double huge = 1e300;
  EXPECT_EQ(latlon_to_utm({40.0, -180.0}, kWgs84).zone, "01T");
  EXPECT_EQ(latlon_to_utm({40.0, -180.00004}, kWgs84).zone, "01T");  // zone 00 would read as polar
  EXPECT_EQ(latlon_to_utm({40.0, -huge}, kWgs84).zone, "01T");
  EXPECT_EQ(latlon_to_utm({40.0, huge}, kWgs84).zone, "61T");
  EXPECT_EQ(latlon_to_utm({40.0, std::numeric_limits<double>::quiet_NaN()}, kWgs84).zone, "01T");
}

TEST(Utm, ThePolesAreAtTheFalseOrigin) {
  for (const double pole : {90.0, -90.0}) {
    const UtmPosition utm = latlon_to_utm({pole, 77.0}, kWgs84);
    EXPECT_NEAR(utm.easting, 2000000.0, 1e-6);
    EXPECT_NEAR(utm.northing, 2000000.0, 1e-6);
    EXPECT_NEAR(utm_to_latlon(0, pole < 0, 2000000.0, 2000000.0, kWgs84).latitude, pole, 1e-9);
  }
}

TEST(Utm, AnOriginLatitudeOnlyMovesTheNorthing) {
  const GridPoint point = transverse_mercator({51.5, 7.25}, 49.0, 9.0, 0.9996, kWgs84);
  const double equator_to_49 = transverse_mercator({49.0, 9.0}, 0.0, 9.0, 0.9996, kWgs84).y;
  EXPECT_NEAR(point.y, 5706881.1181 - equator_to_49, 0.001);
  EXPECT_NEAR(inverse_transverse_mercator(point, 49.0, 9.0, 0.9996, kWgs84).latitude, 51.5, 1e-8);
}

TEST(Utm, AHopelessEllipsoidEndsWithoutAPosition) {
  EXPECT_TRUE(std::isnan(utm_to_latlon(0, false, 2100000.0, 2100000.0, {6378137.0, -7.0}).latitude));
}

}  // namespace
}  // namespace geodesy
