#include "formats/ozi.h"

#include <functional>
#include <limits>

#include "base/text.h"
#include "store/symbols.h"
#include "tests/support/format_fixture.h"

namespace formats {
namespace {

using store::IconSet;
using store::ItemRecord;
using testing::ElementsAre;
using testing::HasSubstr;

using Reader = int (*)(const store::FileContext&, base::TextInput&, const std::string&);
using Writer = bool (*)(const store::FileContext&, const store::OutputOptions&, base::TextOutput&);

constexpr std::uint32_t kTime = 360401400;  // 4171.3125 days after 1989-12-31
constexpr std::string_view kWaypointHead = "OziExplorer Waypoint File Version 1.0\nWGS 84\nReserved 2\nReserved 3\n";
constexpr std::string_view kRouteHead = "OziExplorer Route File Version 1.0\nWGS 84\nReserved 1\nReserved 2\n";
constexpr std::string_view kTrackHead =
    "OziExplorer Track Point File Version 2.0\nWGS 84\nAltitude is in Feet\nReserved 3\n";
constexpr std::string_view kEventHead = "OziExplorer Event File Version 1.0\nWGS 84\nReserved 2\nReserved 3\n";

std::string joined(std::string_view head, std::string_view rest) { return std::string(head) + std::string(rest); }

class Ozi : public support::FormatTest {
 protected:
  int read(Reader reader, std::string_view text) { return read_with(reader, text); }
  std::string write(Writer writer) { return write_with(writer); }
  ItemRecord& start(std::string_view ident, double latitude = 54.325, double longitude = 10.145) {
    store.start_item();
    store.CurrentItem.ident = ident;
    store.CurrentItem.position = {latitude, longitude};
    store.CurrentItem.symbol = store::kDotSymbol;
    store.CurrentItem.display_mode = 3;
    return store.CurrentItem;
  }
  void push_waypoint(std::string_view ident) {
    start(ident);
    ASSERT_EQ(store.push_waypoint(0), 0);
  }
  void push_track_point(std::uint32_t seconds) {
    start("").time = {seconds};
    ASSERT_EQ(store.push_track(), 0);
  }
  // As when the user deletes a record from a list.
  void remove(store::PackedItems store::ItemStore::Contents::*items, std::size_t index) {
    store::ItemStore::Contents contents = store.contents();
    ItemRecord item = (contents.*items)[index];
    item.in_use = 0;
    (contents.*items).replace(index, item);
    store.restore(contents);
  }
};

TEST_F(Ozi, AnEmptyStoreGivesTheHeaderLines) {
  EXPECT_EQ(write(write_ozi_waypoints), kWaypointHead);
  EXPECT_EQ(write(write_ozi_routes), kRouteHead);
  EXPECT_EQ(write(write_ozi_track), joined(kTrackHead, "0,2,255,Sun Dec 31 00:00:00 1989,0\n0\n"));
  EXPECT_EQ(write(write_ozi_events), kEventHead);
}

TEST_F(Ozi, WaypointsAreWrittenUnderTheirIndexInFullWithoutTheDeletedOnes) {
  ItemRecord& harbour = start("HARBOUR", -33.857, 151.215);
  harbour.time = {kTime};
  harbour.symbol = 150;
  harbour.display_mode = 5;
  harbour.comment = "Fuel";
  ASSERT_EQ(store.push_waypoint(0), 0);
  push_waypoint("DELETED");
  start("TWENTY CHARACTERS XY", -0.0000001, -179.9999996).display_mode = 1;
  ASSERT_EQ(store.push_waypoint(0), 0);
  start("NOWHERE", std::numeric_limits<double>::quiet_NaN());
  ASSERT_EQ(store.push_waypoint(0), 0);
  remove(&store::ItemStore::Contents::waypoints, 1);
  const std::string blanks(40, ' ');
  EXPECT_EQ(
      write(write_ozi_waypoints),
      joined(kWaypointHead,
             "   1,HARBOUR       , -33.857000, 151.215000,37044.3125000, 5, 1, 4,         0,    65535,Fuel" +
                 blanks.substr(4) + ", 0,2,0, -777\n" +
                 "   3,TWENTY CHARACTERS XY,  -0.000000,-180.000000,32873.0000000,70, 1, 4,         0,    65535," +
                 blanks + ", 0,1,0, -777\n"));
  EXPECT_EQ(front_end.lines[2], "1 items without a position are not written");
  options.zero_time = true;
  EXPECT_THAT(write(write_ozi_waypoints), Not(HasSubstr("37044")));
  options.waypoints = false;
  EXPECT_EQ(write(write_ozi_waypoints), kWaypointHead);
}

TEST_F(Ozi, ADeletedPointLeavesItsPlaceInTheRouteFree) {
  store.start_route(7, "07", "Round, the bay");
  ASSERT_EQ(store.push_route(true), 0);
  for (const std::string_view ident : {"A", "B", "C"}) {
    start(ident);
    ASSERT_EQ(store.push_route(true), 0);
  }
  store::ItemStore::Contents contents = store.contents();
  contents.routes[7].points[1].in_use = 0;
  store.restore(contents);
  const std::string rest = "             ,  54.325000,  10.145000,32873.0000000,70, 1, 4,         0,    65535," +
                           std::string(40, ' ') + ", 0,0,0, -777\n";
  const std::string written = write(write_ozi_routes);
  EXPECT_EQ(written,
            joined(kRouteHead, "R,  7,Round\xD1 the bay,,255\nW,  7,  1,  1,A" + rest + "W,  7,  3,  3,C" + rest));
  store.clear_all();
  EXPECT_EQ(read(read_ozi_routes, written), 3);
  EXPECT_EQ(store.route(7).header->comment, "Round, the bay");
  EXPECT_EQ(store.waypoint_count(), 2);
}

TEST_F(Ozi, ATrackKeepsItsBreaksAndTheNameOfItsFirstLog) {
  push_track_point(kTime);
  store.start_track_log("Out, and back", "Blue");
  push_track_point(0);
  push_track_point(kTime + 1);
  store.start_track_log("No room", "Red");
  push_track_point(kTime + 2);
  push_track_point(kTime + 3);
  remove(&store::ItemStore::Contents::track_points, 3);
  const std::string written = write(write_ozi_track);
  const std::string place = "  54.325000,  10.145000,";
  // The start of the second log is deleted, but the two logs are still two.
  EXPECT_EQ(written, joined(kTrackHead, "0,2,255,Out\xD1 and back,0\n5\n" + place + "1,-777,37044.3125000\n" + place +
                                            "2,-777,32873.0000000\n" + place + "0,-777,37044.3125116\n" + place +
                                            "2,-777,37044.3125347\n"));
  EXPECT_EQ(front_end.lines[2], "1 track names are not written, the file has room for one");
  store.clear_all();
  EXPECT_EQ(read(read_ozi_track, written), 4);
  EXPECT_EQ(store.track_point(1).segment_flag, 1);
  EXPECT_EQ(store.track_point(2).ident, "Out, and back");
  EXPECT_EQ(store.track_point(2).colour, store::kDefaultColour);
  EXPECT_EQ(store.track_point(4).time.seconds, kTime + 3);
  std::string again = write(write_ozi_track);
  again.replace(again.find("\n4\n"), 3, "\n5\n");
  EXPECT_EQ(again, written);
}

TEST_F(Ozi, EventsHaveTheColourOfTheSetting) {
  start("");
  ASSERT_EQ(store.push_event(), 0);
  for (const auto& [setting, colour] :
       {std::pair(0, "         0"), std::pair(1, "       255"), std::pair(2, "  16711680"), std::pair(3, "     32768"),
        std::pair(4, "     65535"), std::pair(5, "         0"), std::pair(-1, "         0")}) {
    settings.EventColor = setting;
    EXPECT_EQ(write(write_ozi_events),
              joined(kEventHead, "  1,  54.325000,  10.145000,70,0," + std::string(colour) + ",  16777215\n"));
  }
}

TEST_F(Ozi, ACommaSurvivesAndWhatCannotIsSaid) {
  start("A,B").comment = "one, two\tthree";
  ASSERT_EQ(store.push_waypoint(0), 0);
  start("ESPA\321A").symbol = 8294;  // a red circle, newer than OziExplorer's list
  ASSERT_EQ(store.push_waypoint(0), 0);
  const std::string written = write(write_ozi_waypoints);
  EXPECT_THAT(written, HasSubstr("   1,A\321B           ,"));
  EXPECT_THAT(written, HasSubstr(",one\xD1 two-three   "));
  EXPECT_THAT(written, HasSubstr("   2,ESPANA        ,  54.325000,  10.145000,32873.0000000,70,"));
  EXPECT_EQ(front_end.lines[2],
            "1 texts hold characters that separate fields or lines: written with '-'; 1 texts hold an N with tilde, "
            "which is OziExplorer's comma: written as N; 1 symbols have no OziExplorer number: written as a dot");
  store.clear_all();
  EXPECT_EQ(read(read_ozi_waypoints, written), 2);
  EXPECT_EQ(store.waypoint(1).ident, "A,B");
  EXPECT_EQ(store.waypoint(1).comment, "one, two-three");
}

TEST_F(Ozi, FieldsMayBeEmptyOrMissing) {
  EXPECT_EQ(read(read_ozi_waypoints, "\xEF\xBB\xBF\r\n" + sample("ozi/garmin_v11.wpt")), 4);
  EXPECT_EQ(front_end.lines[2], "1 lines are no waypoints and were passed over, the first in line 11");
  const ItemRecord slipway = store.waypoint(1);
  EXPECT_EQ(slipway.ident, "SLIPWAY");
  EXPECT_EQ(slipway.comment, "Launch here, low water");
  EXPECT_EQ(slipway.position, (geodesy::Position{54.325, 10.145}));
  EXPECT_EQ(slipway.time.seconds, 3971 * 86400U + 47199);  // 2000-11-14 13:06:39
  EXPECT_EQ(slipway.symbol, 150);
  EXPECT_EQ(slipway.display_mode, 3);
  EXPECT_FLOAT_EQ(slipway.altitude, 167.3352F);
  const ItemRecord cafe = store.waypoint(2);
  EXPECT_EQ(cafe.ident, "Caf\xE9");
  EXPECT_EQ(cafe.time.seconds, 0U);
  EXPECT_EQ(cafe.display_mode, 5);
  const ItemRecord unnamed = store.waypoint(3);
  EXPECT_EQ(unnamed.ident, "");
  EXPECT_EQ(unnamed.symbol, store::kDotSymbol);
  EXPECT_EQ(unnamed.display_mode, 1);
  EXPECT_FALSE(store::is_known(unnamed.altitude));
  ASSERT_EQ(store.proximity_count(), 1);
  EXPECT_EQ(store.proximity(1).proximity_distance, 150.5F);
  EXPECT_EQ(store.waypoint(4).longitude_hemisphere, 'W');
  EXPECT_EQ(store.waypoint(4).display_mode, 3);
}

TEST_F(Ozi, HeadersMayBeIncompleteOrFilledUpWithCommasOrStandInTheMiddle) {
  constexpr std::string_view kBanner = "OziExplorer Track Point File Version 2.1";
  struct Case {
    std::string text;
    int points;
    std::string name;
  };
  const std::string commas = joined(kBanner,
                                    ",,,,\nWGS 84,,,,\nAltitude is in Feet,,,,\nReserved 3,,,,\n0,2,255,Walk,0\n2,,,,\n"
                                    "54,10,1,100,36844.5\n55,10,0,100,36844.6\n");
  const std::string bare = joined(kBanner, "\nWGS 84\nAltitude is in Feet\nReserved 3\n54,10,1,100,36844.5\n");
  for (const Case& c : {Case{commas, 2, "Walk"}, Case{commas + commas, 4, "Walk"}, Case{bare, 1, ""},
                        Case{joined(kBanner, "\n\n\n\n54,10,1\n"), 1, ""}}) {
    store.clear_all();
    EXPECT_EQ(read(read_ozi_track, c.text), c.points) << c.text;
    ASSERT_EQ(store.track_point_count(), c.points) << c.text;
    EXPECT_EQ(store.track_point(1).ident, c.name);
    EXPECT_EQ(store.track_point(1).position.latitude, 54);
  }
  EXPECT_EQ(read(read_ozi_waypoints, "OziExplorer Waypoint File Version 1.0\n\n\n\n1,A,54,10\n2,B,55,11\n"), 2);
  EXPECT_EQ(front_end.lines[1], "Datum '' not found.  Using WGS-84.");
}

TEST_F(Ozi, RoutePointsGoToTheRouteOfTheirNumberAndEmptyRoutesAreNone) {
  EXPECT_EQ(read(read_ozi_routes, sample("ozi/padded.rte")), 7);
  const auto idents = [this](int number) {
    std::vector<std::string> result;
    for (const ItemRecord& point : store.route(number).points) result.emplace_back(point.ident.view());
    return result;
  };
  EXPECT_EQ(store.route_count(), 2);
  EXPECT_EQ(store.route(0).header->comment, "ROUND THE BAY");
  EXPECT_THAT(idents(0), ElementsAre("SLIPWAY", "BUOY", "HOME"));
  EXPECT_THAT(idents(3), ElementsAre("TOP", "STRAY"));
  EXPECT_EQ(store.route(0).points[1].symbol, 17);
  EXPECT_EQ(store.route(0).points[0].time.seconds, 3971 * 86400U + 47199);
  EXPECT_EQ(store.waypoint_count(), 5);
  store.clear_all();
  // Without route lines, or with numbers that no route can have, the first free one takes them.
  EXPECT_EQ(read(read_ozi_routes, joined(kRouteHead, "W,100,1,1,A,1,2\nR,,B,,\nW,,2,2,C,1,2\nX,0,1,1,D,1,2\n")), 4);
  EXPECT_THAT(idents(0), ElementsAre("A"));
  EXPECT_THAT(idents(1), ElementsAre("C"));
}

TEST_F(Ozi, RoutesWithoutNameOrRoomKeepTheirPoints) {
  EXPECT_EQ(read(read_ozi_routes,
                 joined(kRouteHead, "R,99,A\nW,99,1,1,A1,1,2\nR,1\nW,1,1,1,B1,3,4\nR,99,C\nW,99,1,1,C1,5,6\n")),
            6);
  EXPECT_EQ(store.route(99).points[0].ident, "A1");
  EXPECT_EQ(store.route(1).points[0].ident, "B1");
  EXPECT_EQ(store.route(0).points[0].ident, "C1");
}

TEST_F(Ozi, ATrackOfAnotherProgramIsOneLogWithItsDescriptionAsName) {
  EXPECT_EQ(read(read_ozi_track, sample("ozi/logged_v21.plt")), 4);
  const ItemRecord first = store.track_point(1);
  EXPECT_EQ(first.segment_flag, store::kStartsNamedTrack);
  EXPECT_EQ(first.ident, "Canal walk");
  EXPECT_EQ(store::kColourNames[first.colour], "Blue");
  EXPECT_FLOAT_EQ(first.altitude, 167.39616F);
  EXPECT_EQ(store.track_point(2).time.seconds, 3971 * 86400U + 47204);
  EXPECT_FALSE(store::is_known(store.track_point(2).altitude));
  EXPECT_EQ(store.track_point(3).segment_flag, store::kStartsSegment);
  EXPECT_EQ(store.track_point(4).segment_flag, store::kContinues);
  EXPECT_EQ(store.track_point(4).altitude, 0);
  const std::string in_metres =
      joined("OziExplorer Track\nWGS84\nAltitude is in Meters\nReserved 3\n", "0,1,255,,0\n1\n54,10,0,100\n");
  EXPECT_EQ(read(read_ozi_track, in_metres), 1);
  EXPECT_EQ(store.track_point(5).segment_flag, store::kStartsSegment);
  EXPECT_EQ(store.track_point(5).altitude, 100);
}

TEST_F(Ozi, EventsHaveFourToEightFields) {
  EXPECT_EQ(read(read_ozi_events, sample("ozi/symbols.evt")), 2);
  EXPECT_EQ(store.event(1).symbol, 150);
  EXPECT_EQ(store.event(2).symbol, 17);
  EXPECT_EQ(store.event(2).latitude_hemisphere, 'S');
}

TEST_F(Ozi, DatesThatAreNoneGiveNoTime) {
  for (const std::string_view date :
       {"", "0", "-1", "32873", "32872.9", "1e300", "nan", "inf", "14-Nov-00", "82583.3"}) {
    store.clear_all();
    EXPECT_EQ(read(read_ozi_waypoints, joined(kWaypointHead, "1,A,1,2," + std::string(date))), 1);
    EXPECT_EQ(store.waypoint(1).time.seconds, 0U) << date;
  }
}

TEST_F(Ozi, PositionsOfOtherDatumsAreShifted) {
  const auto position_in = [this](std::string_view datum, std::string_view place) {
    store.clear_all();
    EXPECT_EQ(read(read_ozi_waypoints, joined("OziExplorer Waypoint File Version 1.0\n",
                                              std::string(datum) + "\n2\n3\n1,A," + std::string(place))),
              1);
    return store.waypoint(1).position;
  };
  const geodesy::Position shifted = position_in("NAD27 CONUS", "40,-100");
  EXPECT_NEAR(shifted.latitude, 40.00001, 3e-5);
  EXPECT_NEAR(shifted.longitude, -100.00040, 5e-5);
  EXPECT_EQ(position_in("NAD27 CONUS", "90,-100").longitude, -100);
  EXPECT_LT(position_in("NAD27 CONUS", "40,-180").longitude, 180.0);
  EXPECT_EQ(position_in("WGS84", "40,-100"), (geodesy::Position{40, -100}));
  EXPECT_TRUE(front_end.lines[1].empty());
  EXPECT_EQ(position_in("Atlantis 9", "40,-100"), (geodesy::Position{40, -100}));
  EXPECT_EQ(front_end.lines[1], "Datum 'Atlantis 9' not found.  Using WGS-84.");
}

TEST_F(Ozi, BadLinesAndLongTextsAreCountedOnce) {
  const std::string text =
      joined(kWaypointHead, "1,A,91,0\n2,B,0,180.1\n3,C,nan,0\n4,D,1e999,0\n\x01\x02,,,\n,,\n5," +
                                std::string(51, 'X') + ",1,2,,,,,,," + std::string(41, 'Y') + "\n");
  EXPECT_EQ(read(read_ozi_waypoints, text), 1);
  EXPECT_EQ(front_end.line_writes.size(), 1U);
  EXPECT_EQ(front_end.lines[2],
            "6 lines are no waypoints and were passed over, the first in line 5; 2 texts were too long and are cut");
  EXPECT_EQ(store.waypoint(1).comment.size(), 40U);
}

TEST_F(Ozi, FilesOfOtherKindsAreRefusedByName) {
  struct Case {
    Reader reader;
    std::string_view line;
    std::string text;
  };
  const std::vector<Case> cases{
      {read_ozi_waypoints, "G  WGS 84\n", "a file is no OziExplorer waypoint file: it looks like a CompeGPS file."},
      {read_ozi_routes, "$PMGNRTE,1,1\n", "a file is no OziExplorer route file: it looks like a Magellan file."},
      {read_ozi_track, "H  SOFTWARE\n", "a file is no OziExplorer track file: it looks like a PCX5 file."},
      {read_ozi_events, "OziExplorer Route File Version 1.0\n",
       "a file is no OziExplorer event file: it looks like an OziExplorer route file."},
      {read_ozi_waypoints, "1,A,54,10\n", "a file is no OziExplorer waypoint file."}};
  for (const Case& c : cases) {
    EXPECT_EQ(read(c.reader, c.line), -1);
    EXPECT_EQ(front_end.boxes.back().second, c.text);
  }
  EXPECT_EQ(front_end.boxes.size(), cases.size());
  EXPECT_TRUE(store.empty());
}

TEST_F(Ozi, EverySymbolOfTheGarminSetComesBackWithTheStartSettings) {
  std::string lines;
  for (int number = 0; number < 155; ++number)
    lines += "1,S" + std::to_string(number) + ",1,2,," + std::to_string(number) + "\n";
  ASSERT_EQ(read(read_ozi_waypoints, joined(kWaypointHead, lines)), 155);
  EXPECT_EQ(store.waypoint(1).symbol, 16384);   // airport
  EXPECT_EQ(store.waypoint(155).symbol, 8253);  // wrecker
  const std::string written = write(write_ozi_waypoints);
  store.clear_all();
  ASSERT_EQ(read(read_ozi_waypoints, written), 155);
  EXPECT_EQ(write(write_ozi_waypoints), written);
  int number = 0;
  for (const ItemRecord& item : store.contents().waypoints)
    EXPECT_EQ(store::find_symbol(item.symbol)->ozi_number, number++);
}

TEST_F(Ozi, SymbolNumbersFollowTheReceiverAndTheSettings) {
  const auto family = [this](store::Family value) { settings.GPS = value; };
  const auto only = [this](int store::Settings::*setting) {
    settings.SA_Ozi_to_GIII = settings.SA_Ozi_to_LEI28 = 0;
    settings.*setting = 1;
  };
  struct Case {
    std::function<void()> set_up;
    IconSet mode;
    int symbol;
    int number;         // in the file
    IconSet read_mode;  // with the same set in IconSelector
    int read_symbol;
  };
  const std::vector<Case> cases{
      {[] {}, IconSet::Lei15, 8, 25, IconSet::Lei15, 8},
      {[] {}, IconSet::StreetPilot, 8, 25, IconSet::StreetPilot, 8},
      {[] {}, IconSet::Lei28, 8, 6, IconSet::Lei28, 8},
      {[] {}, IconSet::G12xl, 1, 46, IconSet::G12xl, 1},
      {[] {}, IconSet::G12xl, 8246, 60, IconSet::Giii, 8246},
      {[&] { family(store::Family::Garmin); }, IconSet::Lei28, 8, 25, IconSet::Lei28, 8},
      {[&] { family(store::Family::Lowrance); }, IconSet::Lei15, 8, 6, IconSet::Lei15, 8},
      {[&] { family(store::Family::Lowrance); }, IconSet::Lei28, 178, 27, IconSet::Lei28, 178},
      {[&] { settings.SA_Ozi_to_LEI15 = 1; }, IconSet::Lei15, 8, 6, IconSet::Lei15, 8},
      {[&] { settings.SA_Ozi_to_LEI15 = 1; }, IconSet::Lei15, 178, 0, IconSet::Lei15, 18},
      {[&] { settings.SA_Ozi_to_12 = 1; }, IconSet::G12xl, 15, 15, IconSet::G12xl, 15},
      {[&] { only(&store::Settings::SA_Ozi_to_12); }, IconSet::Giii, 10, 1, IconSet::Giii, 10},
      {[&] { only(&store::Settings::SA_Ozi_to_12); }, IconSet::Giii, 8246, 0, IconSet::Giii, 18},
      {[&] { only(&store::Settings::SA_Ozi_to_GIII); }, IconSet::Lei28, 10, 46, IconSet::Lei28, 10},
      {[] {}, IconSet::Giii, -1, 70, IconSet::Giii, 18},
  };
  for (const Case& c : cases) {
    settings = {};
    c.set_up();
    settings.IconSelector = c.mode;
    store.clear_all();
    start("A").symbol = static_cast<std::int16_t>(c.symbol);
    ASSERT_EQ(store.push_waypoint(0), 0);
    const std::string written = write(write_ozi_waypoints);
    EXPECT_THAT(written, HasSubstr(base::format_text(",32873.0000000,%2d, 1,", c.number)));
    ASSERT_EQ(read(read_ozi_waypoints, written), 1);
    EXPECT_EQ(store.waypoint(2).symbol, c.read_symbol) << c.symbol;
    EXPECT_EQ(store.waypoint(2).symbol_mode, static_cast<int>(c.read_mode)) << c.symbol;
  }
}

// Whoever reads a file knows but one set.
TEST_F(Ozi, AFileIsInOneSymbolSetWhateverTheRecordsAreIn) {
  settings.GPS = store::Family::Lowrance;
  start("GAS").symbol = 8;
  store.CurrentItem.symbol_mode = static_cast<std::uint8_t>(IconSet::Giii);
  ASSERT_EQ(store.push_waypoint(0), 0);
  start("HOUSE").symbol = 10;
  store.CurrentItem.symbol_mode = static_cast<std::uint8_t>(IconSet::Lei28);
  ASSERT_EQ(store.push_waypoint(0), 0);
  const std::string written = write(write_ozi_waypoints);
  EXPECT_THAT(written, HasSubstr(",32873.0000000, 6, 1,"));
  EXPECT_THAT(written, HasSubstr(",32873.0000000, 4, 1,"));
  store.clear_all();
  ASSERT_EQ(read(read_ozi_waypoints, written), 2);
  EXPECT_EQ(write(write_ozi_waypoints), written);
}

}  // namespace
}  // namespace formats
