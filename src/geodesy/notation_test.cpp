#include "geodesy/notation.h"

#include <gtest/gtest.h>

namespace geodesy {
namespace {

constexpr Ellipsoid kWgs84;

// Deliberate : nothing is carried into the minutes or degrees.
TEST(Notation, SecondsAndMinutesRoundUpToSixty) {
  EXPECT_EQ(format_latitude(12.9999999, Notation::Dms), "N12 59 60.00");
  EXPECT_EQ(format_longitude(-6.9999999, Notation::Dmm), "W006 60.0000");
}

TEST(Notation, ColumnsKeepTheirWidth) {
  EXPECT_EQ(format_latitude(-5.5, Notation::Ddd), "S05.5000000");
  EXPECT_EQ(format_longitude(-7.25, Notation::Ddd), "W007.2500000");
  EXPECT_EQ(format_latitude(5.0125, Notation::Dmm), "N05 00.7500");
  EXPECT_EQ(format_longitude(179.5, Notation::Dmm), "E179 30.0000");
  EXPECT_EQ(format_latitude(-33.0525, Notation::Dms), "S33 03 09.00");
  EXPECT_EQ(format_longitude(7.0, Notation::Dms), "E007 00 00.00");
  const PositionTexts utm = format_position({40.0, -100.0}, Notation::Utm, kWgs84);
  EXPECT_EQ(utm.first, "14T  414639.5");
  EXPECT_EQ(utm.second, " 4428236.1");
}

TEST(Notation, TheEquatorIsNorthAndTheMeridianEast) {
  EXPECT_EQ(format_latitude(-0.0, Notation::Dmm), "N00 00.0000");
  EXPECT_EQ(format_longitude(-0.0, Notation::Dmm), "E000 00.0000");
  EXPECT_EQ(format_position({-0.0, -0.0}, Notation::Utm, kWgs84).second, "       0.0");
}

}  // namespace
}  // namespace geodesy
