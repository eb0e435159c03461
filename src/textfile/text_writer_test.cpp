#include "textfile/text_writer.h"

#include <limits>

#include "tests/support/text_file_fixture.h"

namespace textfile {
namespace {

using support::kNoonSeconds;
using support::TextFileTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST_F(TextFileTest, EmptyStoresGiveTheHeaderAlone) {
  options.now_unix = 1022932800;  // 2002-06-01 12:00:00 UTC
  options.datum = "European_1950";
  options.notation = geodesy::Notation::Dms;
  options.offset_hours = -5;
  EXPECT_EQ(write(), "Version 2\n#Sat Jun 01 12:00:00 2002 GMT\nD European_1950\nM DMS\nZ -5.000000\n");
  options.version = 1;
  EXPECT_THAT(write(), StartsWith("#Sat"));
}

TEST_F(TextFileTest, ColumnsAndKindsThatAreSwitchedOffAreLeftOut) {
  start_waypoint("A");
  item().time = {kNoonSeconds};
  push_waypoint();
  start_waypoint("P");
  item().proximity_distance = 100;
  ASSERT_EQ(store.push_proximity(), 0);
  options.no_comments = options.no_symbols = options.zero_time = true;
  options.offset_seconds = 3600;
  const std::string place = "N54 19.5000 E010 08.7000 Sun Dec 31 00:00:00 1989 ";
  // Proximity waypoints always get both columns.
  const std::string alarm = "P  P               " + place + "                    ^    0^Black ^S+C^0^100.0  ";
  EXPECT_THAT(written_lines(), ElementsAre("W  A               " + place, alarm));
  options.waypoints = false;
  EXPECT_THAT(written_lines(), ElementsAre(alarm));
}

TEST_F(TextFileTest, TimesAreLocalExceptOfEventsAndRoutePoints) {
  options.offset_seconds = -5 * 3600;
  const auto start = [this] {
    start_waypoint("A");
    item().time = {kNoonSeconds};
  };
  start();
  push_waypoint();
  store.start_route(4, "04", "Trip");
  ASSERT_EQ(store.push_route(true), 0);
  start();
  ASSERT_EQ(store.push_route(true), 0);
  start();
  ASSERT_EQ(store.push_event(), 0);
  const std::vector<std::string> lines = written_lines();
  ASSERT_EQ(lines.size(), 6U);  // the route point is a waypoint too
  EXPECT_THAT(lines[0], HasSubstr(" 07:00:00 "));
  EXPECT_EQ(lines[2], "R  04 Trip");
  EXPECT_THAT(lines[3], HasSubstr(" 12:00:00 "));
  EXPECT_EQ(lines[4], "E  04");
  EXPECT_THAT(lines[5], StartsWith("I  N54 19.5000 E010 08.7000 Sat Jun 01 12:00:00 2002 "));
  EXPECT_THAT(TextWriter(store, shift, front_end).item_line(store.waypoint(1), options), lines[0]);
}

// Deliberate : a type 105 waypoint is whole with its c1 line, however long its ident.
TEST_F(TextFileTest, AClassOrALongIdentBringsTheFullLinesWhateverTheKind) {
  start_waypoint("HARBOUR MASTERS OFFICE");
  item().detail_kind = store::kLongIdentDetails;
  item().record_type = 106;
  push_waypoint();
  EXPECT_THAT(written_lines(),
              ElementsAre(StartsWith("W "), "c5 1e24, 1e24, FF 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00",
                          "c6 HARBOUR MASTERS OFFICE;;;;;106;", "c1 HARBOUR MASTERS OFFICE", "c2 ",
                          "c3 FF 00 00 00 00 00 00 00 00 00 00 00 00 00"));
  store.clear_all();
  start_waypoint("PIER");
  item().detail_kind = store::kLongIdentDetails;
  item().record_type = 105;
  item().link_ident = "I 95";
  push_waypoint();
  // The blank tells the link from the short texts that stand for none, and c4 the type from 106.
  EXPECT_THAT(written_lines(), ElementsAre(StartsWith("W "), "c1 PIER", "c2 I 95 ",
                                           "c3 FF 00 00 00 00 00 00 00 00 00 00 00 00 00", "c4 ;;;;255;105;"));
  store.clear_all();
  start_waypoint("FIELD");
  item().record_type = 151;
  item().waypoint_class = 64;
  push_waypoint();
  EXPECT_THAT(written_lines(),
              ElementsAre(StartsWith("W "), "c5 1e24, 1e24, 40 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00",
                          "c6 FIELD;;;;;0;", "c4 ;;;;64;151;"));
  store.clear_all();
  start_waypoint("USER");
  item().waypoint_class = 0;
  push_waypoint();
  start_waypoint("NOWHERE UP");
  item().altitude = -std::numeric_limits<float>::infinity();
  push_waypoint();
  EXPECT_EQ(written_lines().size(), 2U);
}

TEST_F(TextFileTest, ARouteHeaderHasTheSameLineInAListAsInTheFile) {
  store.start_route(4, "04", "Out\nand ^ back");
  ASSERT_EQ(store.push_route(true), 0);
  const std::string line = TextWriter(store, shift, front_end).item_line(*store.route(4).header, options);
  EXPECT_EQ(line, "R  04 Out-and ^ back");
  EXPECT_THAT(written_lines(), ElementsAre(line, "E  04"));
}

TEST_F(TextFileTest, DistancesFollowTheSecondAndLaterPointsAndEachSegmentHasItsSum) {
  options.distances = true;
  const auto push_points = [this](const std::vector<double>& latitudes) {
    for (const double latitude : latitudes) {
      store.start_item();
      item().position = {latitude, 0};
      ASSERT_EQ(store.push_track(), 0);
    }
  };
  push_points({10, 11, 13});
  store.start_segment();
  push_points({20});
  const std::vector<std::string> lines = written_lines();
  ASSERT_EQ(lines.size(), 10U);
  // One degree of a sphere of 6367.5 km: 60.00747 nm.
  EXPECT_EQ(lines[3], "; Dist:  60.0075 nm,  69.0554 sm, 111.1338 km");
  EXPECT_EQ(lines[6], "; DSum: 180.0224 nm, 207.1662 sm, 333.4015 km");
  EXPECT_THAT(lines[8], StartsWith("T  N20"));
  EXPECT_EQ(lines[9], "; DSum:   0.0000 nm,   0.0000 sm,   0.0000 km");
}

TEST_F(TextFileTest, CharactersThatWouldBreakALineBecomeDashesAndAreCounted) {
  start_waypoint("A^B\nW  C");
  item().comment = "one;two^three";
  item().facility = "Pier; north";
  push_waypoint();
  options.version = 2;
  EXPECT_THAT(written_lines(), ElementsAre(StartsWith("W  A-B-W  C        N54"), StartsWith("c5 1e24, 1e24, FF"),
                                           "c6 A-B-W  C;Pier- north;;;;0;"));
  EXPECT_THAT(written_lines()[0], HasSubstr(" one;two-three "));
  EXPECT_THAT(front_end.lines[2], StartsWith("3 texts "));
  options.version = 1;
  EXPECT_THAT(written_lines()[0], HasSubstr(" one-two^three "));
}

TEST_F(TextFileTest, WhatHasNoPositionIsLeftOutAndSaid) {
  start_waypoint("NOWHERE");
  item().position = {std::nan(""), 0};
  push_waypoint();
  EXPECT_THAT(written_lines(), IsEmpty());
  EXPECT_THAT(front_end.lines[2], HasSubstr("1 items without a position"));
}

TEST_F(TextFileTest, AnUnknownDatumIsReportedOnceAFile) {
  for (int i = 0; i < 3; ++i) {
    start_waypoint("A");
    push_waypoint();
  }
  options.datum = "Atlantis";
  EXPECT_EQ(written_lines().size(), 3U);
  EXPECT_EQ(front_end.boxes.size(), 1U);
}

}  // namespace
}  // namespace textfile
