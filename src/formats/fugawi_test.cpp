#include "formats/fugawi.h"

#include <limits>

#include "store/symbols.h"
#include "tests/support/format_fixture.h"

namespace formats {
namespace {

constexpr std::uint32_t kNoon = 391867200;  // 2002-06-01 12:00:00 UTC

class Fugawi : public support::FormatTest {
 protected:
  int read(std::string_view text) { return read_with(read_fugawi, text); }
  std::string write() { return write_with(write_fugawi); }
};

TEST_F(Fugawi, OnlyWhatIsKnownIsWrittenBehindThePosition) {
  push_waypoint("PLAIN");
  start(-54.325, -10.145, kNoon).ident = "ALL";
  item().comment = "Fuel";
  item().altitude = -3.25F;
  ASSERT_EQ(store.push_waypoint(0), 0);
  start(0, 180, kNoon).ident = "TIME";
  ASSERT_EQ(store.push_waypoint(0), 0);
  start(0, 180).ident = "HIGH";
  item().altitude = 8848;
  ASSERT_EQ(store.push_waypoint(0), 0);
  EXPECT_EQ(write(),
            "PLAIN,,,54.3250000,10.1450000\n"
            "ALL,Fuel,,-54.3250000,-10.1450000,-3.2,20020601,120000\n"
            "TIME,,,0.0000000,180.0000000,,20020601,120000\n"
            "HIGH,,,0.0000000,180.0000000,8848.0\n");
}

TEST_F(Fugawi, WhatWasWrittenIsReadAgain) {
  start(-54.325, -10.145, kNoon).ident = "#1 M\xFCnchen";
  item().comment = "Gas \xA3";
  item().altitude = 12.5F;
  ASSERT_EQ(store.push_waypoint(0), 0);
  const std::string text = write();
  EXPECT_EQ(text, " #1 M\xC3\xBCnchen,Gas \xC2\xA3,,-54.3250000,-10.1450000,12.5,20020601,120000\n");
  store.clear_all();
  ASSERT_EQ(read(text), 1);
  const store::ItemRecord waypoint = store.waypoint(1);
  EXPECT_EQ(waypoint.ident, "#1 M\xFCnchen");
  EXPECT_EQ(waypoint.comment, "Gas \xA3");
  EXPECT_EQ(waypoint.position, (geodesy::Position{-54.325, -10.145}));
  EXPECT_EQ(waypoint.altitude, 12.5F);
  EXPECT_EQ(waypoint.time.seconds, kNoon);
}

TEST_F(Fugawi, CommasInTextsBecomeDashesAndAreCounted) {
  push_waypoint("A,B");
  EXPECT_EQ(write(), "A-B,,,54.3250000,10.1450000\n");
  EXPECT_EQ(front_end.lines[2], "1 texts hold characters that separate fields or lines: written with '-'");
}

TEST_F(Fugawi, BothOrdersOfColumnsAreRead) {
  struct Case {
    std::string_view line, comment;
    double latitude, longitude;
  };
  for (const Case& line : {
           Case{"A,c,54.5,10.5,x", "c", 54.5, 10.5},
           Case{"A,c,54.5,10.5,33", "c", 54.5, 10.5},  // a number of somebody's
           Case{"A,c,54.5,10.5,33.5", "c", 54.5, 10.5},
           Case{"A,c,54.5,10.5", "c", 54.5, 10.5},
           Case{"A,c,d,54.5,10.5", "c", 54.5, 10.5},
           Case{"A,,d,54.5,10.5", "d", 54.5, 10.5},
           Case{"A,c,700,54.5,10.5", "c", 54.5, 10.5},  // a description that is no latitude
           Case{"A,c,7,54.5,10.5,,,", "c", 54.5, 10.5},
           Case{" A , c , , 54.5 , 10.5 , 3.0 ", "c", 54.5, 10.5},
       }) {
    SCOPED_TRACE(line.line);
    store.clear_all();
    ASSERT_EQ(read(line.line), 1);
    const store::ItemRecord waypoint = store.waypoint(1);
    EXPECT_EQ(waypoint.ident, "A");
    EXPECT_EQ(waypoint.comment.view(), line.comment);
    EXPECT_EQ(waypoint.position, (geodesy::Position{line.latitude, line.longitude}));
    EXPECT_EQ(waypoint.symbol, store::kDotSymbol);
  }
}

TEST_F(Fugawi, DatesAreReadWithTwoOrFourDigitsOfTheYearAndWithoutATime) {
  ASSERT_EQ(read("A,,,1,2,,020601,120000\nB,,,1,2,,20020601,\nC,,,1,2,,990101,000000\nD,,,1,2,,,120000\n"
                 "E,,,1,2,,20021301,120000\n"),
            5);
  EXPECT_EQ(store.waypoint(1).time.seconds, kNoon);
  EXPECT_EQ(store.waypoint(2).time.seconds, kNoon - 43200);
  EXPECT_EQ(store.waypoint(3).time.seconds, 284083200U);  // 1999-01-01
  EXPECT_EQ(store.waypoint(4).time.seconds, 0U);
  EXPECT_EQ(store.waypoint(5).time.seconds, 0U);
  EXPECT_EQ(front_end.lines[2], "1 dates are of an unknown form and were left out");
}

TEST_F(Fugawi, AForeignFileWithCommentsAndBadLinesIsReadForItsWaypoints) {
  EXPECT_EQ(read(sample("fugawi/coast.fwp")), 3);
  EXPECT_EQ(store.waypoint_count(), 3);
  EXPECT_EQ(store.waypoint(2).altitude, 41.3F);
  EXPECT_EQ(front_end.lines[2], "2 lines are no waypoints and were passed over, the first in line 6");
}

TEST_F(Fugawi, NoWaypointsAreNoFile) {
  push_waypoint("NOWHERE", std::numeric_limits<double>::infinity());
  EXPECT_EQ(write(), "");
  push_waypoint("HARB");
  options.waypoints = false;
  EXPECT_EQ(write(), "");
  ASSERT_EQ(front_end.boxes.size(), 2U);
  EXPECT_EQ(front_end.boxes[0].first, "write_fugawi");
}

}  // namespace
}  // namespace formats
