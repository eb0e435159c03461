#include "textfile/text_reader.h"

#include "tests/support/text_file_fixture.h"

namespace textfile {
namespace {

using support::kNoon;
using support::kNoonSeconds;
using support::TextFileTest;
using testing::ElementsAre;

constexpr std::string_view kHome = "W  HOME            N54 19.5000 E010 08.7000 ";

std::string with_time(std::string_view head) { return std::string(head) + std::string(kNoon); }

TEST_F(TextFileTest, AFileWithoutHeaderIsInDegreesAndMinutesOfWgs84AndInUtc) {
  EXPECT_EQ(read(with_time(kHome) + " At the quay\n"), 1);
  ASSERT_EQ(store.waypoint_count(), 1);
  EXPECT_EQ(store.waypoint(1).ident, "HOME");
  EXPECT_EQ(store.waypoint(1).comment, "At the quay");
  EXPECT_NEAR(store.waypoint(1).position.latitude, 54.325, 1e-12);
  EXPECT_NEAR(store.waypoint(1).position.longitude, 10.145, 1e-12);
  EXPECT_EQ(store.waypoint(1).time.seconds, kNoonSeconds);
  EXPECT_FALSE(store::is_known(store.waypoint(1).altitude));
  EXPECT_EQ(store.waypoint(1).waypoint_class, store::kClassNotSet);
}

TEST_F(TextFileTest, EveryLineEndWillDo) {
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    store.clear_all();
    EXPECT_EQ(read("M DMM" + end + std::string(kHome) + end + "c5   10.0, 1e24, 05" + end + std::string(kHome)), 2);
    ASSERT_EQ(store.waypoint_count(), 2);
    EXPECT_EQ(store.waypoint(1).altitude, 10.0F);
  }
}

struct PositionCase {
  std::string_view line;
  std::string_view notation;
  double latitude, longitude;
};

TEST_F(TextFileTest, PositionsAreReadInEveryNotationAndLayout) {
  constexpr std::array kCases{
      PositionCase{"W  A               S54 19.5000 W010 08.7000", "DMM", -54.325, -10.145},
      PositionCase{"W  A               N54 19 30.00 E010 08 42.00", "DMS", 54.325, 10.145},
      PositionCase{"W  A               N54.3250000 E010.1450000", "DDD", 54.325, 10.145},
      PositionCase{"W  A               32U  574466.8  6020286.8", "UTM", 54.325, 10.145},
      PositionCase{"W  A               32U  574466.8  6020286.8", "", 54.325, 10.145},
      PositionCase{"W  A               19H  256378.0  6250579.0", "UTM", -33.857, -71.63333167},
      PositionCase{"W  A               19H  256378.0 13749421.0", "UTM", -33.857, -71.63333167},
      PositionCase{"W  A               00Y 2000000.0  2000000.0", "UTM", 90, 0},
      PositionCase{"W  A      N54 19.5000 E010 08.7000", "DMM", 54.325, 10.145},
      PositionCase{"W  A      N54 19 30.00 E010 08 42.00", "DMS", 54.325, 10.145},
      PositionCase{"W  A      32U  574466.8  6020286.8", "", 54.325, 10.145},
      PositionCase{"W  A      N54\26019.5000 E010\26008.7000", "", 54.325, 10.145},
      PositionCase{"WAY    N54\26019.5000 E010\26008.7000", "", 54.325, 10.145},
  };
  for (const PositionCase& c : kCases) {
    store.clear_all();
    const std::string head = c.notation.empty() ? "" : "M " + std::string(c.notation) + "\n";
    read(head + std::string(c.line) + "\n");
    ASSERT_EQ(store.waypoint_count(), 1) << c.line;
    EXPECT_NEAR(store.waypoint(1).position.latitude, c.latitude, 1e-6) << c.line;
    if (c.latitude < 90) {
      EXPECT_NEAR(store.waypoint(1).position.longitude, c.longitude, 2e-6) << c.line;
    }
  }
}

TEST_F(TextFileTest, LinesWithoutAPositionAreNeitherKeptNorCounted) {
  for (const std::string_view line :
       {"W  A               N91 00.0001 E010 08.7000", "W  A               N54 19.5000 E361 00.0001",
        "W  A               N54 60.5000 E010 08.7000", "W  A               N54 19.5000 E010 08.700",
        "W  A               N54 19.5000", "W  A               N-4 19.5000 E010 08.7000",
        "W  A               Nnan.000000 E010 08.7000", "T  N54 19.5000 X010 08.7000", "W", "W  ", "1234567890",
        "W  A               99U  574466.8  6020286.8", "W  A               32I  574466.8  6020286.8",
        "W  A               32U 9574466.8  6020286.8", "W_ A               N54 19.5000 E010 08.7000"}) {
    EXPECT_EQ(read(std::string(line) + "\n"), 0) << line;
    EXPECT_TRUE(store.empty()) << line;
  }
}

// A file that never says UTM may still hold a damaged line.
TEST_F(TextFileTest, ADamagedLineDoesNotMakeTheRestOfTheFileUtm) {
  EXPECT_EQ(read("W  DAMAGED, LONG ENOUGH TO HOLD THE COLUMNS OF UTM\n" + std::string(kHome) + "\n"), 1);
}

TEST_F(TextFileTest, TheZoneLineTakesTheOffsetOffUnlessItIsToBeIgnored) {
  const std::string text = "Z -5.000000\n" + with_time(kHome) + "\n";
  read(text);
  EXPECT_EQ(store.waypoint(1).time.seconds, kNoonSeconds + 5 * 3600);
  EXPECT_EQ(store.input_time_offset(), 0);  // a download that follows sends UTC
  read("Z 48\n" + with_time(kHome) + "\nZ -48.01\n" + with_time(kHome) + "\n");
  EXPECT_EQ(store.waypoint(2).time.seconds, kNoonSeconds - 48 * 3600);
  EXPECT_EQ(store.waypoint(3).time.seconds, kNoonSeconds);
  settings.DontConvertInputTime = 1;
  store.clear_all();
  read(text + text);
  EXPECT_EQ(store.waypoint(2).time.seconds, kNoonSeconds);
}

TEST_F(TextFileTest, NoTimeAndTimesBeforeThereWereAnyStayNoTime) {
  for (const std::string_view time : {"Sun Dec 31 00:00:00 1989", "Thu Jan 01 00:00:00 1970",
                                      "Fri Feb 30 00:00:00 2001", "Sun Dec 31 04:59:59 1989"}) {
    store.clear_all();
    read("Z 5\n" + std::string(kHome) + std::string(time) + "\n");
    EXPECT_EQ(store.waypoint(1).time.seconds, 0U) << time;
  }
}

TEST_F(TextFileTest, TheVersionChoosesTheSeparatorOfTheSymbolColumn) {
  const std::string line = with_time(kHome);
  read(line + " a^b;   18;1;3\nVersion 2\n" + line + " a;b^   18^Red   ^S+N^3\n" + line + " c^   18^odd^odd^odd\n");
  EXPECT_EQ(store.waypoint(1).comment, "a^b");
  EXPECT_EQ(store.waypoint(1).symbol, 18);
  EXPECT_EQ(store.waypoint(1).display_mode, 1);
  EXPECT_EQ(store.waypoint(1).symbol_mode, 3);
  EXPECT_EQ(store.waypoint(2).comment, "a;b");
  EXPECT_EQ(store.waypoint(2).colour, 1);
  EXPECT_EQ(store.waypoint(2).display_mode, 3);
  EXPECT_EQ(store.waypoint(3).display_mode, 5);
  EXPECT_EQ(store.waypoint(3).symbol_mode, static_cast<int>(settings.IconSelector));
}

TEST_F(TextFileTest, TheVersionIsTheNumberThatBeginsAtTheNinthCharacterWhateverFollowsIt) {
  const std::string line = "\n" + with_time(kHome) + " a;b^   18^Red   ^S+N^3\n";
  for (const std::string version : {"Version 2.0", "Version 2 beta", "Version 3", "V       2"}) {
    store.clear_all();
    read(version + line);
    EXPECT_EQ(store.waypoint(1).comment, "a;b") << version;
  }
  for (const std::string version : {"Version 1.9", "Version", "Version two", "Version -2"}) {
    store.clear_all();
    read(version + line);
    EXPECT_EQ(store.waypoint(1).comment, "a") << version;
  }
}

TEST_F(TextFileTest, AProximityLineGivesAProximityWaypointAndAWaypointWithEitherSeparator) {
  const std::string line = with_time("P  HOME            N54 19.5000 E010 08.7000 ");
  EXPECT_EQ(read("Version 2\n" + line + " alarm^   18^Black ^S  ^0^250.5\n" + line + " ^   18^Black ^S  ^0;75\n" +
                 line + " ^   18^Black ^S  ^0^1e24\n" + line + "\n"),
            4);
  ASSERT_EQ(store.proximity_count(), 4);
  EXPECT_EQ(store.waypoint_count(), 4);
  EXPECT_EQ(store.proximity(1).proximity_distance, 250.5F);
  EXPECT_EQ(store.proximity(2).proximity_distance, 75.0F);
  EXPECT_FALSE(store::is_known(store.proximity(3).proximity_distance));
  EXPECT_FALSE(store::is_known(store.proximity(4).proximity_distance));
}

TEST_F(TextFileTest, AnEleventhProximityLineCountsOnceLessButGivesItsWaypoint) {
  std::string text;
  for (int i = 0; i < 11; ++i) text += "P  HOME            N54 19.5000 E010 08.7000\n";
  EXPECT_EQ(read(text), 10);
  EXPECT_EQ(store.waypoint_count(), 11);
}

TEST_F(TextFileTest, WaypointsAfterARouteEndAreNoRoutePoints) {
  const std::string home = std::string(kHome) + "\n";
  EXPECT_EQ(read("R  05 One\n" + home + "E  05\n" + home + "R  06 Two\n" + home + home), 7);
  EXPECT_EQ(store.route(5).points.size(), 1U);
  EXPECT_EQ(store.route(5).header->comment, "One");
  EXPECT_EQ(store.route(5).header->ident, "05");
  EXPECT_EQ(store.route(6).points.size(), 2U);
  EXPECT_EQ(store.waypoint_count(), 4);
}

TEST_F(TextFileTest, ARouteNameBeginsBehindItsNumberHoweverLong) {
  read("R  005 Three\nE  005\nR  6 One\nE  6\nR  07  Blank\nE  07\nR  08\nE  08\n");
  EXPECT_EQ(store.route(5).header->comment, "Three");
  EXPECT_EQ(store.route(6).header->comment, "One");
  EXPECT_EQ(store.route(7).header->comment, " Blank");
  EXPECT_EQ(store.route(8).header->comment, "");
}

TEST_F(TextFileTest, ARouteWithoutRoomStopsTheFileAtItsFirstPoint) {
  const std::string home = std::string(kHome) + "\n";
  EXPECT_EQ(read(home + "R  100 Too far\n" + home + "T  N54 19.5000 E010 08.7000\n"), 1);
  EXPECT_EQ(front_end.boxes.size(), 1U);
  EXPECT_EQ(store.track_point_count(), 0);
  EXPECT_EQ(read(home), 1);  // the next file is read again
}

TEST_F(TextFileTest, TheLastHeightOfATrackPointNeedsNoSemicolonBehindIt) {
  const std::string point = with_time("T  N54 19.5000 E010 08.7000 ");
  read(point + " ;100.5\n" + point + ";100.5;3\n" + point + " ;;3\n" + point + "\n");
  EXPECT_EQ(store.track_point(1).altitude, 100.5F);
  EXPECT_FALSE(store::is_known(store.track_point(1).depth));
  EXPECT_EQ(store.track_point(2).altitude, 100.5F);
  EXPECT_EQ(store.track_point(2).depth, 3.0F);
  EXPECT_FALSE(store::is_known(store.track_point(3).altitude));
  EXPECT_EQ(store.track_point(3).depth, 3.0F);
  EXPECT_FALSE(store::is_known(store.track_point(4).altitude));
}

TEST_F(TextFileTest, DatumLinesShiftWhatFollowsAndUnknownOnesAreSaid) {
  const std::string home = std::string(kHome) + "\n";
  EXPECT_EQ(read("D 61 European_1950\n" + home + "D Atlantis Grid\n" + home), 4);
  // By geocentric translation of the ED50 position; the shift here is good to some centimetres.
  EXPECT_NEAR(store.waypoint(1).position.latitude, 54.3243384, 2e-6);
  EXPECT_NEAR(store.waypoint(1).position.longitude, 10.1437529, 2e-6);
  EXPECT_EQ(front_end.lines[1], "Datum 'Atlantis Grid' not found.  Using WGS-84.");
  EXPECT_NEAR(store.waypoint(2).position.latitude, 54.325, 1e-12);
  EXPECT_TRUE(front_end.boxes.empty());

  EXPECT_EQ(read("Dummy\n" + home), 1);
  EXPECT_EQ(front_end.times_written(1, "Bad Datum in file: a file. Using WGS-84."), 1);
  EXPECT_EQ(front_end.lines[1], "Bad line: 'Dummy'");
  EXPECT_EQ(settings.externaldatum, "WGS-84");
}

// Easting and northing by the series of Krueger on the international ellipsoid.
TEST_F(TextFileTest, UtmOfAFileInAnotherDatumIsInvertedOnItsEllipsoid) {
  read("D European_1950\nM UTM\nW  A               32U  574470.4  6020416.4\n");
  EXPECT_NEAR(store.waypoint(1).position.latitude, 54.3243384, 2e-6);
  EXPECT_NEAR(store.waypoint(1).position.longitude, 10.1437529, 3e-6);
}

TEST_F(TextFileTest, OptionLinesAreHandedOverWhole) {
  read("! -d -j 3\n!\n");
  EXPECT_THAT(options_seen, ElementsAre("! -d -j 3"));
}

TEST_F(TextFileTest, DetailLinesOfOlderWaypointsHaveMeaningsOfTheirOwn) {
  read("Version 2\n" + std::string(kHome) + "\nc1 FULL IDENT\nc2 LINK\nc3 40 0A 0B\n" + std::string(kHome) +
       "\nc5 0, 1.5, 00\n");
  const store::ItemRecord& old = store.waypoint(1);
  EXPECT_EQ(old.ident, "FULL IDENT");
  EXPECT_EQ(old.comment, "SP WAYPOINT");  // Deliberate : its comment column holds the ident
  EXPECT_EQ(old.link_ident, "");          // Deliberate : up to four characters stand for no link
  EXPECT_EQ(old.record_type, 106);
  EXPECT_EQ(old.subclass[1], 0x0B);
  // Deliberate : a user waypoint keeps the fields, but is none with details.
  EXPECT_EQ(store.waypoint(2).detail_kind, store::kNoDetails);
  EXPECT_EQ(store.waypoint(2).altitude, 0.0F);
  EXPECT_EQ(store.waypoint(2).depth, 1.5F);
}

// Deliberate : a bad subclass on a c7 line is said with the name c5.
TEST_F(TextFileTest, ABadDetailLineIsSaidAndChangesNothing) {
  struct Case {
    std::string line, said;
  };
  for (const Case& c :
       {Case{"c3 4", "c3 line error: 'c3 4'"}, Case{"c5 12, 80", "c5 line error: 'c5 12, 80'"},
        Case{"c5 x, 1, 80", "c5 line error: 'c5 x, 1, 80'"}, Case{"c7 no comma", "c7 line error: 'c7 no comma'"},
        Case{"c7 A, 3", "c7 line error Class: 'c7 A, 3'"},
        Case{"c7 A, 0003 1", "c5 line error SubClass: 'c7 A, 0003 1'"},
        Case{"c7 " + std::string(52, 'A') + ", 0003",
             "c7 line error Ident: 'c7 " + std::string(52, 'A') + ", 0003'"}}) {
    store.clear_all();
    EXPECT_EQ(read(std::string(kHome) + "\n" + c.line + "\n" + std::string(kHome) + "\n"), 2);
    EXPECT_EQ(front_end.lines[1], c.said);
    EXPECT_EQ(store.waypoint(1).ident, "HOME");
    EXPECT_EQ(store.waypoint(1).detail_kind, store::kNoDetails);
    EXPECT_FALSE(store::is_known(store.waypoint(1).altitude));
  }
}

TEST_F(TextFileTest, OlderLayoutsAreReadWithTheirDegreeSigns) {
  EXPECT_EQ(read(sample("older_layouts.txt")), 6);
  ASSERT_EQ(store.waypoint_count(), 3);
  EXPECT_EQ(store.waypoint(2).ident, "PIER");
  EXPECT_EQ(store.waypoint(2).comment, "Two berths");
  EXPECT_NEAR(store.waypoint(2).position.latitude, 54 + 20.5 / 60, 1e-12);
  EXPECT_EQ(store.waypoint(3).symbol, 18);
  ASSERT_EQ(store.track_point_count(), 1);
  EXPECT_NEAR(store.track_point(1).position.longitude, 10 + 10.0 / 60, 1e-12);
  ASSERT_EQ(store.event_count(), 1);
  EXPECT_EQ(store.event(1).ident, "LONG EVENT");
  EXPECT_EQ(store.event(1).comment, "with an ident");
}

TEST_F(TextFileTest, EscEndsALargeFileWithWhatWasRead) {
  std::string text;
  for (int i = 0; i < 30000; ++i) text += std::string(kHome) + "\n";
  int polls = 0;
  front_end.esc = [&polls] { return ++polls == 3; };
  EXPECT_EQ(read(text), 2999);
  EXPECT_EQ(front_end.lines[2], "Operation Aborted");
  EXPECT_EQ(front_end.progress_range, 0);  // the bar is taken away
  int shown = 0;
  front_end.esc = [&] {
    shown = front_end.progress;
    return false;
  };
  EXPECT_EQ(read(text), 30000);
  EXPECT_GT(shown, 90);
}

}  // namespace
}  // namespace textfile
