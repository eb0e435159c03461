#include "formats/csv.h"

#include <limits>

#include "base/text.h"
#include "formats/csv_fields.h"
#include "store/symbols.h"
#include "tests/support/described_store.h"
#include "tests/support/format_fixture.h"

namespace formats {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::uint32_t kNoon = 391867200;  // 2002-06-01 12:00:00 UTC
constexpr std::string_view kHead =
    "Version 2\nDatum:,WGS-84\nZoneOffset:,0.000000\n"
    "\"Type\",\"Name\",\"Lat\",\"Long\",\"Month#\",\"Day#\",\"Year\",\"Hour\",\"Min\",\"Sec\",\"Comment\",\"Symbol#\","
    "\"SymbolColor\",\"SymbolDisplay\"\n";

class Csv : public support::FormatTest {
 protected:
  int read(std::string_view text) { return read_with(read_csv, text); }
  int read_rows(std::string_view rows) { return read(std::string(kHead) + std::string(rows)); }
  std::string write() { return write_with(write_csv); }
  // What follows the header.
  std::string written_rows() {
    const std::string text = write();
    const std::size_t rows = text.find("SymbolDisplay\"\n") + 15;
    return text.substr(rows);
  }
  void start_route(std::uint32_t number, std::string_view name) {
    store.start_route(number, base::format_text("%02u", static_cast<unsigned>(number)), name);
    ASSERT_EQ(store.push_route(true), 0);
  }
  // One of everything, with what its rows can say.
  void fill_store() {
    start(54.325, 10.145, kNoon).ident = "HARB, east";
    item().comment = "Fuel, water, 3";
    item().symbol = 8246;
    item().colour = 3;
    item().display_mode = 1;
    ASSERT_EQ(store.push_waypoint(0), 0);
    push_waypoint("\"Old Inn\"", -0.00000001, -179.99999999);
    push_track_point(54.1, 10.1, kNoon);
    push_track_point(54.2, 10.2, 0);
    store.start_segment();
    push_track_point(54.3, 10.3, kNoon + 2);
    start(1, 2).symbol = 7;
    ASSERT_EQ(store.push_event(), 0);
    start_route(7, "Out, and back,");
    start(3, 4, kNoon).ident = "POINT";
    item().display_mode = 3;
    ASSERT_EQ(store.push_route(true), 0);
    start_route(8, "");
  }
  // The records but for their serial numbers: a route's points count as waypoints when they are read.
  std::vector<store::ItemRecord> records() {
    std::vector<store::ItemRecord> all = support::all_records(store);
    for (store::ItemRecord& record : all) record.number = 0;
    return all;
  }
  // The same positions to about a millimetre, everything else exactly.
  void expect_same(const std::vector<store::ItemRecord>& before) {
    const std::vector<store::ItemRecord> after = records();
    EXPECT_EQ(support::described(after), support::described(before));
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
      EXPECT_NEAR(after[i].position.latitude, before[i].position.latitude, 1.1e-8);
      EXPECT_NEAR(after[i].position.longitude, before[i].position.longitude, 1.1e-8);
    }
  }
};

TEST_F(Csv, RowsAreWrittenToTheLetter) {
  fill_store();
  options.offset_seconds = -19080;  // 5 hours and 18 minutes
  options.offset_hours = -5.3;
  options.datum = "WGS-84";
  std::string head(kHead);
  head.replace(head.find("0.000000"), 8, "-5.300000");
  EXPECT_EQ(write(), head +
                         "W,HARB, east,54.32500000,10.14500000,6,1,2002,6,42,0,Fuel, water, 3,8246,Green,S\n"
                         "W, \"Old Inn\",-0.00000001,-179.99999999,12,31,1989,0,0,0,,0,Black,S+C\n"
                         "W,POINT,3.00000000,4.00000000,6,1,2002,6,42,0,,0,Black,S+N\n"
                         "N,,54.10000000,10.10000000,6,1,2002,6,42,0\n"
                         "T,,54.20000000,10.20000000,12,31,1989,0,0,0\n"
                         "N,,54.30000000,10.30000000,6,1,2002,6,42,2\n"
                         "I,,1.00000000,2.00000000,7\n"
                         "R,07,Out, and back,\n"
                         "W,POINT,3.00000000,4.00000000,6,1,2002,6,42,0,,0,Black,S+N\n"
                         "E,07\n"
                         "R,08,\n"
                         "E,08\n");
}

TEST_F(Csv, WhatIsNotWantedIsNotWritten) {
  fill_store();
  options.waypoints = options.tracks = options.events = false;
  EXPECT_THAT(written_rows(), testing::StartsWith("R,07,"));
  options.routes = false;
  EXPECT_EQ(write(), kHead);
}

TEST_F(Csv, UtmTakesFourColumnsInZoneBandEastingAndNorthing) {
  push_waypoint("A", 0, 0);
  push_waypoint("SOUTH", -30, -100);
  push_waypoint("POLE", -85, -1);
  options.notation = geodesy::Notation::Utm;
  EXPECT_THAT(base::split(written_rows(), '\n'),
              ElementsAre("W,A,31,N,166021.4432,0.000,12,31,1989,0,0,0,,0,Black,S+C",
                          testing::StartsWith("W,SOUTH,14,J,403549.8474,13319206.223,12,"),
                          testing::StartsWith("W,POLE,00,A,"), ""));
}

TEST_F(Csv, AStartThatWasDeletedStillSeparatesTheSegments) {
  const std::string rows = "N,,1,2,,,,,,\nN,,1,3,,,,,,\nT,,1,4,,,,,,\n";
  ASSERT_EQ(read_rows(rows), 3);
  // As a list does it: a store of its own, whose second point is not in use.
  store::ItemStore::Contents contents = store.contents();
  store::ItemRecord deleted = contents.track_points[1];
  deleted.in_use = 0;
  contents.track_points.replace(1, deleted);
  store.restore(contents);
  EXPECT_THAT(base::split(written_rows(), '\n'),
              ElementsAre(testing::StartsWith("N,,1.00000000,2"), testing::StartsWith("N,,1.00000000,4"), ""));
}

TEST_F(Csv, RecordsWithoutAPositionAreCounted) {
  push_waypoint("NOWHERE", std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(write(), kHead);
  EXPECT_EQ(front_end.lines[2], "1 items without a position are not written");
}

TEST_F(Csv, ColoursWithoutAWordAreBlackAndCounted) {
  start(1, 2).colour = 4;
  ASSERT_EQ(store.push_waypoint(0), 0);
  start(1, 3).colour = 5;
  ASSERT_EQ(store.push_waypoint(0), 0);
  start(1, 4).colour = store::kDefaultColour;  // nobody's choice, so nothing is lost
  ASSERT_EQ(store.push_waypoint(0), 0);
  EXPECT_THAT(base::split(written_rows(), '\n'),
              ElementsAre(testing::EndsWith(",Yellow,S+C"), testing::EndsWith(",Black,S+C"),
                          testing::EndsWith(",Black,S+C"), ""));
  EXPECT_EQ(front_end.lines[2], "1 colours have no word and are written as Black");
}

TEST_F(Csv, PlacesOnTheDateLineAndAtThePolesComeBackFromUtm) {
  const std::vector<geodesy::Position> places{{10, -180}, {-54.325, 180}, {90, 0}, {-90, 0}};
  for (const geodesy::Position& place : places) push_waypoint("", place.latitude, place.longitude);
  options.notation = geodesy::Notation::Utm;
  const std::string text = write();
  store.clear_all();
  ASSERT_EQ(read(text), 4);
  for (int i = 1; i <= 4; ++i) {
    const geodesy::Position& place = places[static_cast<std::size_t>(i - 1)];
    EXPECT_NEAR(store.waypoint(i).position.latitude, place.latitude, 1.1e-8);
    if (i <= 2) {
      EXPECT_NEAR(std::abs(store.waypoint(i).position.longitude), 180, 1.1e-8);
    }
  }
}

TEST_F(Csv, ADatumIsTakenOffAgain) {
  push_waypoint("A", 35.65, 139.75);
  options.datum = "Tokyo";
  const std::string text = write();
  EXPECT_THAT(text, HasSubstr("Datum:,Tokyo\n"));
  EXPECT_THAT(text, HasSubstr("W,A,35.6467"));
  store.clear_all();
  ASSERT_EQ(read(text), 1);
  EXPECT_NEAR(store.waypoint(1).position.latitude, 35.65, 1e-6);
  EXPECT_NEAR(store.waypoint(1).position.longitude, 139.75, 1e-6);
}

TEST_F(Csv, AnUnknownDatumIsSaidAndTakenForWgs84) {
  EXPECT_EQ(read("Version 2\nDatum:,Atlantis\n" + std::string("W,A,1,2,6,1,2002,12,0,0,,0,Black,S\n")), 1);
  EXPECT_EQ(front_end.lines[1], "Datum 'Atlantis' not found.  Using WGS-84.");
  EXPECT_EQ(store.waypoint(1).position.latitude, 1);
}

TEST_F(Csv, TimesAreUtcAgainUnlessTheUserWantsThemAsTheyStand) {
  const std::string text =
      "Version 2\nZoneOffset:,-5.000000\nN,,1,2,6,1,2002,7,0,0\nR,07,r\nW,A,1,2,6,1,2002,7,0,0,,0,Black,S\nE,07\n";
  ASSERT_EQ(read(text), 3);
  EXPECT_EQ(store.track_point(1).time.seconds, kNoon);
  EXPECT_EQ(store.waypoint(1).time.seconds, kNoon);
  EXPECT_EQ(store.route(7).points[0].time.seconds, kNoon);
  settings.DontConvertInputTime = 1;
  ASSERT_EQ(read(text), 3);
  EXPECT_EQ(store.track_point(2).time.seconds, kNoon - 5 * 3600);
}

TEST_F(Csv, TheEpochIsNoTimeInLocalTimeAndInUtc) {
  ASSERT_EQ(read("Version 2\nZoneOffset:,2.000000\nN,,1,2,12,31,1989,0,0,0\nT,,1,2,12,31,1989,2,0,0\n"), 2);
  EXPECT_EQ(store.track_point(1).time.seconds, 0U);
  EXPECT_EQ(store.track_point(2).time.seconds, 0U);
}

TEST_F(Csv, CommasGoToTheTextTheyAreIn) {
  struct Case {
    std::string_view row, ident, comment;
  };
  for (const Case& line : {
           Case{"W,A,B,1.5,2.5,6,1,2002,12,0,0,,0,Black,S", "A,B", ""},
           Case{"W,A,1.5,2.5,6,1,2002,12,0,0,x,y,0,Black,S", "A", "x,y"},
           Case{"W,,A,,1.5,2.5,6,1,2002,12,0,0,,,0,Black,S", ",A,", ","},
           Case{"W,5,10,1.5,2.5,6,1,2002,12,0,0,1,2,3,0,Black,S", "5,10", "1,2,3"},
           Case{"W,A,1.5,2.5,6,1,2002,12,0,0,1.5,2.5,6,1,2002,12,0,0,c,0,Black,S", "A", "1.5,2.5,6,1,2002,12,0,0,c"},
           Case{"W,\"A,B\",1.5,2.5,6,1,2002,12,0,0,\"say \"\"x\"\"\",0,Black,S", "A,B", "say \"x\""},
           Case{"W,A \"B\",\"C\",1.5,2.5,6,1,2002,12,0,0,x,\"y\",0,Black,S", "A \"B\",\"C\"", "x,\"y\""},
           Case{"\"W\",\"A\",\"1.5\",\"2,5\",6,1,2002,12,0,0,,0,Black,S", "A", ""},
           Case{"W,5\" pipe,1.5,2.5,6,1,2002,12,0,0,\"open,0,Black,S", "5\" pipe", "\"open"},
       }) {
    SCOPED_TRACE(line.row);
    store.clear_all();
    ASSERT_EQ(read_rows(line.row), 1);
    EXPECT_EQ(store.waypoint(1).ident.view(), line.ident);
    EXPECT_EQ(store.waypoint(1).comment.view(), line.comment);
    EXPECT_EQ(store.waypoint(1).position, (geodesy::Position{1.5, 2.5}));
    EXPECT_EQ(store.waypoint(1).time.seconds, kNoon);
  }
}

TEST_F(Csv, FilesThatASpreadsheetHasSavedAreTheSame) {
  ASSERT_GT(read(sample("csv/as_written.csv")), 0);
  const std::vector<store::ItemRecord> original = records();
  ASSERT_EQ(original.size(), 11U);
  for (const char* const name : {"csv/all_quoted.csv", "csv/semicolons.csv"}) {
    SCOPED_TRACE(name);
    store.clear_all();
    EXPECT_GT(read(sample(name)), 0);
    expect_same(original);
  }
}

TEST_F(Csv, ATextWhoseCommasBecameOtherSeparatorsHasItsCommasAgain) {
  ASSERT_EQ(read("Version 2\nW;HARB; east;1,5;2,5;6;1;2002;12;0;0;Fuel; 3;0;Black;S\nR;7;Out; and back;\nE;7\n"), 2);
  EXPECT_EQ(store.waypoint(1).ident, "HARB, east");
  EXPECT_EQ(store.waypoint(1).comment, "Fuel, 3");
  EXPECT_EQ(store.route(7).header->comment, "Out, and back");
}

TEST_F(Csv, AByteOrderMarkMakesAFileAsWrittenUtf8) {
  const std::string file = std::string(kHead) + "W,K\xC3\xB6ln \"C\",\"D\",1,2,6,1,2002,12,0,0,,0,Black,S\n";
  ASSERT_EQ(read("\xEF\xBB\xBF" + file), 1);
  EXPECT_EQ(store.waypoint(1).ident, "K\xF6ln \"C\",\"D\"");
  ASSERT_EQ(read(file), 1);
  EXPECT_EQ(store.waypoint(2).ident, "K\xC3\xB6ln \"C\",\"D\"");
}

TEST_F(Csv, BadRowsAreCountedAndTheFirstIsNamed) {
  EXPECT_EQ(read_rows("W,A,91,2,6,1,2002,12,0,0,,0,Black,S\n"  // line 5: latitude
                      "W,A,1,nan,6,1,2002,12,0,0,,0,Black,S\n"
                      "W,A,1,2,13,1,2002,12,0,0,,0,Black,S\n"                  // month
                      "W,A,1,2,2,30,2002,12,0,0,,0,Black,S\n"                  // day
                      "W,A,1,2,6,1,2002,24,0,0,,0,Black,S\n"                   // hour
                      "W,A,1,2,6,1,2002,12,0,0,,99999,Black,S\n"               // symbol
                      "W,A,1,2,6,1,2002,12,0,0,0,Black,S\n"                    // no comment
                      "W,A,00,Q,2000000,2000000,6,1,2002,12,0,0,,0,Black,S\n"  // zone
                      "T\nT,\nI,,1,2\nI,,1,2,99999\nX,1\nR,100,x\nR\n"
                      "T,,1,2\n"),
            1);
  EXPECT_EQ(front_end.lines[2], "15 rows could not be read and were passed over, the first in line 5");
  EXPECT_EQ(store.waypoint_count(), 0);
  EXPECT_EQ(store.track_point_count(), 1);
}

TEST_F(Csv, WaypointsOfOtherProgramsAreReadByTheNamesOfTheirColumns) {
  ASSERT_EQ(read(sample("csv/foreign.csv")), 4);
  const store::ItemRecord peak = store.waypoint(1);
  EXPECT_EQ(peak.ident, "Gro\337e Kuppe");
  EXPECT_EQ(peak.comment, "two lines");
  EXPECT_EQ(peak.position, (geodesy::Position{50.5, -9.875}));
  EXPECT_EQ(peak.altitude, 950.5F);
  EXPECT_EQ(peak.time.seconds, kNoon);
  EXPECT_EQ(peak.symbol, *store::symbol_of_gpx_name("Summit"));
  EXPECT_NEAR(store.waypoint(2).position.latitude, 50.5083333, 1e-6);  // in degrees and minutes
  EXPECT_FALSE(store::is_known(store.waypoint(2).altitude));
  EXPECT_EQ(store.waypoint(2).symbol, store::kDotSymbol);
  EXPECT_EQ(store.waypoint(3).time.seconds, kNoon);
  EXPECT_EQ(store.waypoint(4).time.seconds, 0U);
  EXPECT_EQ(front_end.lines[2],
            "1 rows could not be read and were passed over, the first in line 6; "
            "1 times are of an unknown form and were left out");
}

TEST_F(Csv, AQuoteThatStaysOpenTakesNoOtherRows) {
  for (const std::string end : {"", "\"C\",9,10\n"}) {
    SCOPED_TRACE(end);
    store.clear_all();
    EXPECT_EQ(read("name,lat,lon\nA,\"1,2\n\"B\nb\",3,4\n\"5 inch,5,6\nD,7,8\n" + end), end.empty() ? 3 : 4);
    EXPECT_EQ(store.waypoint(1).ident, "B b");
    EXPECT_EQ(store.waypoint(2).ident, "\"5 inch");
    EXPECT_EQ(store.waypoint(3).ident, "D");
    EXPECT_THAT(front_end.lines[2], testing::EndsWith("passed over, the first in line 2"));
  }
}

TEST_F(Csv, EachCellOfAForeignPositionIsAnAngleOfItsOwn) {
  struct Case {
    std::string_view latitude, longitude;
    geodesy::Position position;
  };
  for (const Case& cells : {Case{"54", "10 08.7", {54, 10.145}}, Case{"54,5", "W 10", {54.5, -10}},
                            Case{"33 51 30 S", "151 12 30 east", {-33 - 51.5 / 60, 151 + 12.5 / 60}}}) {
    SCOPED_TRACE(cells.latitude);
    store.clear_all();
    ASSERT_EQ(read("lat;lon\n" + std::string(cells.latitude) + ';' + std::string(cells.longitude)), 1);
    EXPECT_NEAR(store.waypoint(1).position.latitude, cells.position.latitude, 1e-9);
    EXPECT_NEAR(store.waypoint(1).position.longitude, cells.position.longitude, 1e-9);
  }
  EXPECT_EQ(read("lat;lon\n54 10;\n;54 10\n91 N;10\n54;180.005\nE 54;10\n54;10 n\n10 E;54 N\n54;32U 500000\n"), 0);
  EXPECT_EQ(front_end.lines[2], "8 rows could not be read and were passed over, the first in line 2");
}

TEST_F(Csv, AnAltitudeWhoseCommaMayBeOfThousandsIsLeftOutAndCounted) {
  ASSERT_EQ(read("lat,lon,alt\n1,2,\"1,204\"\n1,2,\"1,204.5\"\n1,2,\"1,2\"\n1,2,1.204\n"), 4);
  EXPECT_FALSE(store::is_known(store.waypoint(1).altitude));
  EXPECT_FALSE(store::is_known(store.waypoint(2).altitude));
  EXPECT_EQ(store.waypoint(3).altitude, 1.2F);
  EXPECT_EQ(store.waypoint(4).altitude, 1.204F);
  EXPECT_EQ(front_end.lines[2], "2 altitudes are unclear and were left out");
  ASSERT_EQ(read("lat;lon;alt\n1;2;1,204\n"), 1);
  EXPECT_EQ(store.waypoint(5).altitude, 1.204F);
}

TEST_F(Csv, AFileOfSomethingElseIsRefusedOnce) {
  EXPECT_EQ(read("Item,Price\nApples,3\nPears,4\n"), -1);
  ASSERT_EQ(front_end.boxes.size(), 1U);
  EXPECT_EQ(front_end.boxes[0].first, "do_input");
  EXPECT_TRUE(store.empty());
  EXPECT_EQ(read(""), 0);
}

TEST_F(Csv, NumbersOfSpreadsheetsAreRead) {
  EXPECT_EQ(csv_number(" 54,325 "), 54.325);
  EXPECT_EQ(csv_number("1,0E+01"), 10);
  EXPECT_EQ(csv_integer("1.2E+01"), 12);
  EXPECT_EQ(csv_integer("12.5"), std::nullopt);
  EXPECT_EQ(csv_integer("1E300"), std::nullopt);
  EXPECT_EQ(csv_number("1,234,5"), std::nullopt);
  EXPECT_EQ(csv_number(""), std::nullopt);
}

}  // namespace
}  // namespace formats
