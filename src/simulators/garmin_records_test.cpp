#include "simulators/garmin_records.h"

#include <gtest/gtest.h>

#include <limits>

namespace simulators {
namespace {

using base::Bytes;

Bytes slice(const Bytes& bytes, std::size_t from, std::size_t size) {
  const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(from);
  return Bytes(begin, begin + static_cast<std::ptrdiff_t>(size));
}

TEST(EncodeWaypoint, FixedFormatsHaveTheirSizesWhateverTheTexts) {
  const std::pair<int, std::size_t> sizes[]{{100, 58},  {101, 63},  {102, 64},  {103, 60},  {104, 65},
                                            {107, 65},  {150, 115}, {151, 124}, {152, 124}, {154, 126},
                                            {155, 127}, {400, 62},  {403, 64},  {450, 121}};
  SimWaypoint longest;
  longest.ident = longest.comment = longest.name = longest.city = longest.state = longest.country =
      std::string(300, 'W');
  for (const auto& [format, size] : sizes) {
    EXPECT_EQ(encode_waypoint(format, longest)->size(), size) << format;
    EXPECT_EQ(encode_waypoint(format, SimWaypoint{})->size(), size) << format;
  }
}

TEST(EncodeWaypoint, LongTextsAreCutSoThatTheRecordFitsAPacketAndKeepsItsSixTexts) {
  SimWaypoint longest;
  longest.ident = longest.comment = longest.facility = longest.city = longest.address = longest.cross_road =
      std::string(300, 'W');
  for (const int format : {108, 109, 110}) {
    const Bytes record = *encode_waypoint(format, longest);
    EXPECT_EQ(record.size(), 255u) << format;
    EXPECT_EQ(record.back(), 0) << format;
    const auto texts = record.begin() + (format == 108 ? 48 : format == 109 ? 52 : 62);
    EXPECT_EQ(std::count(texts, record.end(), 0), 6) << format;
  }
}

TEST(EncodeWaypoint, TheClassOfAPointHasAnotherNumberInEachAviationFormat) {
  SimWaypoint vor;
  vor.waypoint_class = 0x43;
  EXPECT_EQ((*encode_waypoint(151, vor))[123], 1);
  EXPECT_EQ((*encode_waypoint(450, vor, 7))[10], 3);
  EXPECT_EQ((*encode_waypoint(450, vor, 7))[0], 7);
  vor.locked = true;
  EXPECT_EQ((*encode_waypoint(150, vor))[8], 7);
  EXPECT_EQ((*encode_waypoint(151, vor))[123], 3);
  EXPECT_EQ((*encode_waypoint(154, vor))[123], 9);
  EXPECT_EQ((*encode_waypoint(155, vor))[123], 5);
}

TEST(EncodeWaypoint, PositionsAtAndBeyondTheEdgesStayOnTheGlobe) {
  SimWaypoint waypoint;
  waypoint.latitude = 90;
  waypoint.longitude = 180;
  EXPECT_EQ(slice(*encode_waypoint(105, waypoint), 0, 8), (Bytes{0, 0, 0, 0x40, 0, 0, 0, 0x80}));
  waypoint.latitude = std::numeric_limits<double>::quiet_NaN();
  waypoint.longitude = 1e300;
  EXPECT_EQ(slice(*encode_waypoint(105, waypoint), 0, 8), (Bytes{0, 0, 0, 0, 0, 0, 0, 0x80}));
}

TEST(EncodeWaypoint, ASymbolThatTheFormatCannotNameBecomesADot) {
  SimWaypoint summit;
  summit.symbol = 8246;
  EXPECT_EQ((*encode_waypoint(101, summit))[62], 18);
  EXPECT_EQ((*encode_waypoint(403, summit))[58], 0);
  EXPECT_EQ(slice(*encode_waypoint(102, summit), 62, 2), (Bytes{0x36, 0x20}));
}

}  // namespace
}  // namespace simulators
