#include "base/text.h"
#include "lowrance/downloads.h"
#include "lowrance/route_upload.h"
#include "lowrance/uploads.h"
#include "tests/support/lowrance_conversation.h"

namespace lowrance {
namespace {

using base::Bytes;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Pair;

TEST(TransferKinds, OfEveryCommand) {
  const auto all_of = [](std::optional<TransferKinds> (*kinds_of)(int)) {
    std::string text;
    for (int id = 40000; id < 40200; ++id) {
      const std::optional<TransferKinds> kinds = kinds_of(id);
      if (kinds)
        text += std::to_string(id) + (kinds->waypoints ? "W" : "") + (kinds->routes ? "R" : "") +
                (kinds->events ? "I" : "") + (kinds->trails ? "T" + std::to_string(kinds->trail) : "") + " ";
    }
    return text;
  };
  EXPECT_EQ(all_of(download_kinds),
            "40028WRIT0 40029W 40030T0 40032T1 40033T2 40034R 40035I 40117W 40119R 40159I 40185T3 40186T4 ");
  EXPECT_EQ(all_of(upload_kinds),
            "40038WRIT0 40039W 40040T0 40042T1 40043T2 40044R 40059I 40116W 40118R 40150T0 40156T0 40160I 40187T3 "
            "40188T4 ");
}

// A unit of 5 waypoints, 10 icons, 3 routes of 99 points and 2 trails, in which there is nothing.
class UnitTransfers : public support::LowranceConversation {
 protected:
  UnitTransfers() {
    for (const auto& [at, value] : {std::pair(kWaypointsAt, 5), {kIconsAt, 10}, {kRoutesAt, 3}, {kRoutePointsAt, 99}})
      set_info(at, value);
    unit_info[kTrailsAt] = 2;
    answer = [this](const Request& request) {
      const auto found = held.find({request.code, number_of(request.data)});
      if (found != held.end()) return found->second;
      Bytes empty(30);
      std::copy_n(request.data.begin(), std::min<std::size_t>(request.data.size(), 2), empty.begin() + 1);
      return Answer(empty);
    };
  }

  // Records as the unit holds them, in small numbers: waypoints W0, W1...
  void hold_waypoint(int slot, int symbol = 4) {
    held[{kGetWaypoint, slot}] =
        hex(base::format_text("00 %02X00 01 %02X 68E05A00 4EB20D00 'W%d' 64000000", slot, symbol, slot));
  }
  void hold_route(int number, const std::vector<int>& slots) {
    std::string text = base::format_text("00 %02X00 %02X 'ROUTE'", number, static_cast<unsigned>(slots.size()));
    for (const int slot : slots) text += base::format_text("%02X00", slot);
    held[{kGetRoute, number}] = hex(text);
  }
  // A selected track point or event, or a point ('P') of the latest route, which is a waypoint, too.
  void add(char kind, std::string_view ident, geodesy::Position position = {47, 8}, std::int16_t symbol = 10,
           std::uint32_t time = 0) {
    items.start_item();
    items.CurrentItem.ident = ident;
    items.CurrentItem.position = position;
    items.CurrentItem.symbol = symbol;
    items.CurrentItem.time = {time};
    ASSERT_EQ(kind == 'T' ? items.push_track() : kind == 'I' ? items.push_event() : items.push_route(true), 0);
    for (const char all : {'W', 'T', 'I'}) items.select_all(all, true);
  }
  void add_route(std::uint32_t number, std::string_view name, std::string_view points = "") {
    items.start_route(number, "", name);
    ASSERT_EQ(items.push_route(true), 0);
    for (const char& point : points) add('P', {&point, 1});
    items.select_all('R', true);
  }

  bool download(int command_id) {
    begin();
    return LowranceDownloads(connection(), clock, items, settings).download(command_id);
  }
  bool upload(int command_id) {
    begin();
    return LowranceUploads(connection(), items, settings, [] { return 3600; }).upload(command_id);
  }

  std::map<std::pair<int, int>, Answer> held;  // answers by code and number of their requests
  store::Settings settings;
  store::ItemStore items{settings, front_end};
};

using Downloads = UnitTransfers;

TEST_F(Downloads, EveryKindInItsTurn) {
  set_info(kWaypointsAt, 259);
  settings.SA_LwrRangeLo = 258;
  settings.IconSelector = store::IconSet::G12xl;
  // Slot 258: active, symbol 4, y 5955688, x 897614, 1992-01-01 00:01:40. What is inactive is only good for routes.
  held = {{{kGetWaypoint, 258}, hex("00 0201 01 04 68E05A00 4EB20D00 'HOME' 64000000")},
          {{kGetWaypoint, 257}, hex("00 0101 00 05 01000000 02000000 'OLD' 64000000")},
          {{kGetIconCount, 0}, hex("00 0200")},
          {{kGetIcon, 1}, hex("00 0100 FEFFFFFF 03000000 1B")},
          {{kGetOrigin, 0}, hex("00 00 01000000 02000000 0100")},
          {{kGetDeltas, 0x100}, hex("00 00 0100 FFFF 0500")},
          {{kGetRoute, 1}, hex("00 0100 02 'WAY' 0201 0101")},
          {{kGetRoute, 2}, hex("00 0200 00 'NONE'")}};
  EXPECT_TRUE(download(40028));
  EXPECT_EQ(sent(), hex("0303 0101  0303 0201  0308  0309 0000  0309 0100  0312 00  0313 00 0100  0312 01  0305 0000 "
                        "0305 0100  0303 0201  0303 0101  0305 0200"));
  EXPECT_EQ(front_end.lines, (Lines{{1, "Waypoint download completed"},
                                    {2, "Event (Icon) download completed"},
                                    {3, "Plot Trail download completed"},
                                    {4, "Route download completed"},
                                    {5, "Download(s) Finished"},
                                    {8, "No points in trail 2"}}));
  EXPECT_THAT(front_end.line_writes, IsSupersetOf({Pair(4, "W0259 of 0259 Active:0001"), Pair(4, "I00002"),
                                                   Pair(4, "T00002"), Pair(4, "R00001 of 3  W00002 of     2")}));
  EXPECT_EQ(front_end.status[1], " ");
  EXPECT_FALSE(device->is_open);

  const store::ItemRecord home = items.waypoint(1);
  EXPECT_EQ(home.ident, "HOME");
  EXPECT_EQ(to_grid(home.position), (GridPoint{5955688, 897614}));
  EXPECT_EQ(home.symbol, 10);
  EXPECT_EQ(home.symbol_mode, static_cast<std::uint8_t>(store::IconSet::Giii));  // whose numbers are codes
  EXPECT_EQ(home.display_mode, 3);
  EXPECT_EQ(home.time.seconds, 63158500U);
  ASSERT_EQ(items.event_count(), 2);
  EXPECT_EQ(items.event(2).symbol, 178);
  EXPECT_EQ(to_grid(items.event(2).position), (GridPoint{-2, 3}));
  ASSERT_EQ(items.track_point_count(), 2);
  EXPECT_EQ(to_grid(items.track_point(2).position), (GridPoint{0, 7}));
  EXPECT_EQ(items.track_point(2).time.seconds, 1000000000U - 631065600U);  // now
  EXPECT_EQ(items.route_count(), 2);
  EXPECT_EQ(items.route(1).header->comment, "R  01 WAY");
  EXPECT_EQ(items.route(1).header->ident, "01");
  ASSERT_EQ(items.route(1).points.size(), 2U);
  EXPECT_EQ(items.route(1).points[0].number, home.number);
  EXPECT_EQ(items.route(1).points[1].ident, "OLD");
  EXPECT_EQ(items.route(2).header->comment, "R  02 NONE");

  ASSERT_TRUE(download(40032));  // another track
  EXPECT_EQ(items.track_count(), 2);
}

TEST_F(Downloads, TheRangeIsCutToTheUnit) {
  struct Row {
    int first, last;
    std::vector<int> slots;
  };
  for (const Row& row : {Row{4, -1, {3, 4}}, {-7, 2, {0, 1}}, {5, 65535, {4}}, {6, 9, {}}}) {
    settings.SA_LwrRangeLo = row.first;
    settings.SA_LwrRangeHi = row.last;
    EXPECT_EQ(download(40029), !row.slots.empty());
    EXPECT_EQ(numbers_of(kGetWaypoint), row.slots);
  }
  EXPECT_EQ(front_end.lines[1], "There are no waypoints from 6 to 9: this unit has 5");
}

TEST_F(Downloads, WaypointsThatDidNotComeRightAreCountedAndTheRestIsKept) {
  for (int slot = 0; slot < 5; ++slot) hold_waypoint(slot, slot == 4 ? 28 : 4);
  held[{kGetWaypoint, 0}] = {};
  held[{kGetWaypoint, 1}]->pop_back();
  (*held[{kGetWaypoint, 2}])[1] = 3;     // another slot
  (*held[{kGetWaypoint, 3}])[12] = 100;  // beyond the date line
  EXPECT_FALSE(download(40117));
  ASSERT_EQ(items.waypoint_count(), 1);
  EXPECT_EQ(items.waypoint(1).symbol, 18);
  EXPECT_EQ(front_end.lines[6],
            "2 waypoints did not come; 2 waypoints came damaged; "
            "1 waypoints have a symbol outside the unit's set and got the dot");

  late = std::chrono::milliseconds(3500);
  items.clear_all();
  for (int slot = 0; slot < 5; ++slot) hold_waypoint(slot);
  EXPECT_TRUE(download(40117));
  std::string idents;
  for (int i = 1; i <= items.waypoint_count(); ++i) idents += items.waypoint(i).ident.view();
  EXPECT_EQ(idents, "W0W1W2W3W4");
}

TEST_F(Downloads, RoutesThatAreTooLongOrIncompleteAreTold) {
  set_info(kRoutesAt, 4);
  for (int slot = 0; slot < 2; ++slot) hold_waypoint(slot);
  held[{kGetWaypoint, 4}] = {};
  hold_route(0, std::vector<int>(201));
  hold_route(1, std::vector<int>(200, 1));
  hold_route(2, {0, 4, 3, 1});
  held[{kGetRoute, 3}] = Bytes(16);
  EXPECT_FALSE(download(40034));
  EXPECT_FALSE(items.route(0).header);
  EXPECT_EQ(items.route(1).points.size(), 99U);
  EXPECT_EQ(items.route(2).points.size(), 2U);
  EXPECT_EQ(front_end.times_written(4, "Too Many Route Points, 200 is the maximum supported"), 1);
  EXPECT_EQ(front_end.times_written(1, "Too many route points"), 1);
  EXPECT_EQ(front_end.lines[6],
            "route 0 has too many points and was left out; route 1 ends at point 99: the store takes no more; "
            "1 routes came damaged; 1 route points did not come; 1 route points name empty slots and were left out");
}

TEST_F(Downloads, ARouteWhoseNumberIsTakenGetsAnotherAsLongAsThereIsOne) {
  for (std::uint32_t row = 1; row < 100; ++row) add_route(row, "MINE");
  for (const int number : {1, 2}) hold_route(number, {});
  EXPECT_FALSE(download(40034));
  EXPECT_EQ(items.route(0).header->comment, "R  01 ROUTE");
  EXPECT_EQ(front_end.lines[6],
            "the store has no room for route 2 and those behind it; "
            "1 routes have got another number, as theirs was taken or is above 99");
}

TEST_F(Downloads, EventsAreThoseThatTheUnitAndTheStoreCanHold) {
  while (items.event_count() < store::kEventCapacity - 1) ASSERT_EQ(items.push_event(), 0);
  set_info(kIconsAt, 2);
  struct Row {
    Answer count;
    std::size_t asked;
    std::string line_4, line_6;
  };
  for (const Row& row : {Row{hex("00 0000"), 0, "No Icons to send", ""},
                         {{}, 0, "", "the number of events did not come"},
                         {hex("00 0101"), 2, "I00001",
                          "255 events are more than the unit says it can hold and were not asked for; "
                          "the store has no room for the events from 2 on"}}) {
    held[{kGetIconCount, 0}] = row.count;
    EXPECT_EQ(download(40035), row.line_6.empty());
    EXPECT_EQ(requests_of(kGetIcon).size(), row.asked);
    EXPECT_EQ(front_end.lines[4], row.line_4);
    EXPECT_EQ(front_end.lines[6], row.line_6);
  }
}

TEST_F(Downloads, WhatTheUnitLacksIsAFailureOnlyForThoseWhoAskForIt) {
  EXPECT_FALSE(download(40186));
  EXPECT_EQ(front_end.lines, (Lines{{1, "Cannot download trail 4--this unit only supports 2 trails."},
                                    {2, "Downloading trail 2."},
                                    {3, "Plot Trail download completed"},
                                    {8, "No points in trail 2"}}));
  for (const std::size_t at : {kWaypointsAt, kIconsAt, kRoutesAt}) set_info(at, -1);
  unit_info[kTrailsAt] = 0;
  EXPECT_TRUE(download(40028));
  struct Row {
    int command, line;
    std::string text;
  };
  for (const Row& row : {Row{40029, 6, "this unit holds no waypoints"},
                         {40034, 6, "this unit holds no routes"},
                         {40030, 6, "this unit has no plot trails"},
                         {40035, 4, "Icons not supported on this Lowrance/Eagle unit"}}) {
    EXPECT_FALSE(download(row.command));
    EXPECT_EQ(front_end.lines[row.line], row.text);
  }
  EXPECT_TRUE(requests.empty());
}

using Uploads = UnitTransfers;

TEST_F(Uploads, EveryKindInItsTurn) {
  settings.SA_LwrStartPt = settings.SA_LwrRteStartPt = 2;
  unit_info[kTrailsAt] = 1;
  held[{kGetOrigin, 0}] = hex("00 00 00000000 00000000 0100");
  add_route(1, "R  07 Harbour and back");
  add('P', "Thirteen letters");
  add('P', "LAST", {-33.5, 151.25}, 6, 63158500);  // a bank, 1992-01-01 00:01:40
  for (const int metres : {0, 7}) add('T', "", {0, x_to_longitude(metres)});
  for (int i = 0; i < 2; ++i) add('I', "", {0, 0}, 178);
  store::ItemStore::Contents contents = items.contents();
  store::ItemRecord deleted = items.event(1);
  deleted.in_use = 0;
  contents.events.replace(0, deleted);
  items.restore(contents);

  EXPECT_TRUE(upload(40038));
  EXPECT_EQ(sent(), hex("0304 0100 01 04 675D5A00 128B0D00 'Thirteen lett' 00000000 "
                        "0304 0200 01 04 E0BFC3FF 4D0D0001 'LAST' 740E0000 "
                        "0306 0100 02 'HARBOUR AND B' 0100 0200 "
                        "0314 00 00000000 00000000 0100  0315 00 0100 0000 0700  0312 00 "
                        "030A 0100  030B 0000 00000000 00000000 1B"));
  EXPECT_EQ(front_end.lines, (Lines{{3, "Sending Lowrance Routes"},
                                    {4, "I00001"},
                                    {5, "Track upload completed"},
                                    {6, "Event (Icon) upload completed"},
                                    {7, "Upload(s) completed"},
                                    {10,
                                     "1 names were cut to 13 letters; 1 route names were cut to 13 letters; "
                                     "1 symbols are not in this unit's set and became others or the dot"}}));
  EXPECT_THAT(front_end.line_writes,
              IsSupersetOf({Pair(3, "Waypoint upload completed"), Pair(4, "Route upload completed"),
                            Pair(4, "W00002 of 2"), Pair(4, "R00001 Sent"), Pair(4, "T00002 Sent")}));
  EXPECT_FALSE(device->is_open);
}

TEST_F(Uploads, WaypointsFillTheSlotsFromTheStartAndInactivesThoseBehind) {
  add_route(0, "R", "ABCD");
  settings.SA_SendLowrInactives = 1;
  set_info(kWaypointsAt, 9);
  struct Row {
    int command, start, route_start;
    std::vector<int> slots;  // the first free one is left as it is
    std::string line_9, line_10;
  };
  const std::string no_slot = "waypoints have no slot in this unit when they start at #",
                    twice = "waypoints were sent twice, from slot ";
  for (const Row& row :
       {Row{40116, 1, 3, {0, 1, 2, 3, 5, 6, 7, 8}, "", ""},
        {40038, 2, 2, {1, 2, 3, 4, 6, 7, 8}, "", ""},
        {40044, 1, 4, {0, 1, 2, 3, 3, 4, 5, 6, 8}, "", twice + "1 and, for the routes, from slot 4 on"},
        {40044, 3, 1, {2, 3, 4, 5, 0, 1, 2, 3, 7, 8}, "", twice + "3 and, for the routes, from slot 1 on"},
        {40039, 8, 1, {7, 8, 9, 10}, "2 " + no_slot + "8", ""},
        {40039, 2000000000, 1, {65535}, "4 " + no_slot + "65536", ""}}) {
    settings.SA_LwrStartPt = row.start;
    settings.SA_LwrRteStartPt = row.route_start;
    EXPECT_EQ(upload(row.command), row.line_9.empty());
    EXPECT_EQ(numbers_of(kSendWaypoint), row.slots);
    EXPECT_EQ(front_end.lines[9], row.line_9);
    EXPECT_EQ(front_end.lines[10], row.line_10);
    if (row.start != 1) continue;
    EXPECT_EQ(requests_of(kSendWaypoint).back(), hex("0800 00 00 675D5A00 128B0D00 'D' 00000000"));
  }
  EXPECT_EQ(front_end.lines[1], "Sending too many waypoints to start at #65536");
  EXPECT_EQ(front_end.lines[2], "Sending only the first 0 waypoints");
  set_info(kWaypointsAt, 3);
  EXPECT_FALSE(upload(40116));
  EXPECT_EQ(front_end.times_written(1, "This GPS only supports 3 waypoints."), 1);
  EXPECT_EQ(front_end.times_written(2, "Sending 3 of 4 waypoints."), 1);
  // Nothing selected must not empty the unit.
  items.select_all('W', false);
  EXPECT_FALSE(upload(40116));
  EXPECT_TRUE(requests.empty());
  EXPECT_EQ(front_end.lines[9], "Nothing to upload: there are no selected waypoints");
}

TEST_F(Uploads, RoutesThatTheUnitCannotTakeAreLeftOut) {
  set_info(kRoutesAt, 5);
  set_info(kRoutePointsAt, 2);
  set_info(kWaypointsAt, 8);
  add_route(0, "GONE", "A");
  add_route(1, "WHOLE", "BC");
  add_route(2, "POLAR");
  add('P', "POLE", {90, 0});
  add_route(3, "LONG", "DEF");
  add_route(4, "EMPTY");
  add_route(5, "NO SLOT", "G");
  items.CurrentItem = items.waypoint(2);
  ASSERT_EQ(items.push_waypoint(1), 0);  // in the place of A
  items.select_all('W', true);
  items.select('W', 8, false);
  EXPECT_FALSE(upload(40118));
  EXPECT_EQ(numbers_of(kSendWaypoint), (std::vector{0, 1, 2, 4, 5, 6}));
  EXPECT_EQ(requests_of(kSendRoute), (std::vector<Bytes>{hex("0100 02 'WHOLE' 0100 0200")}));
  EXPECT_EQ(front_end.lines[1], "Waypoint 'A' missing in route. Route 1 skipped.");
  EXPECT_EQ(front_end.lines[9],
            "1 waypoints are where the unit has no places and were not sent; "
            "1 routes have a number above those of this unit and were not sent; "
            "1 routes have more points than this unit takes and were not sent; "
            "1 routes without points were not sent; 1 routes with a missing waypoint were not sent; "
            "1 routes with a waypoint that could not be sent were not sent; "
            "routes count all waypoints, but only 7 of 8 were sent");
  EXPECT_EQ(front_end.lines[10], "1 waypoints are exact copies of others and take slots of their own");
  // From a start of 3 on the missing waypoint has a number that looks right.
  settings.SA_LwrRteStartPt = settings.SA_LwrStartPt = 3;
  set_info(kWaypointsAt, 4);
  EXPECT_FALSE(upload(40044));
  EXPECT_EQ(requests_of(kSendRoute), (std::vector{hex("0000 01 'GONE' 0000"), hex("0100 02 'WHOLE' 0300 0400")}));
  EXPECT_THAT(front_end.lines[9], HasSubstr("1 route points name slots behind the last of this unit; 1 route points "
                                            "are no waypoint of the store and were sent with a wrong one; "));
}

TEST_F(Uploads, TrailsAndTracksWithoutACounterpartAreTold) {
  for (const int trail : {0, 1})
    held[{kGetOrigin, trail}] = hex(base::format_text("00 %02X 00000000 00000000 0100", trail));
  struct Row {
    int tracks, command;
    std::vector<int> trails;
    bool all_taken;
    std::string line_8, line_9;
  };
  for (const Row& row : {Row{1, 40040, {0}, true, "Active track 2 does not exist!", ""},
                         {1, 40043, {}, false, "Active track 2 does not exist!", ""},
                         {2, 40043, {1}, true, "", ""},
                         {3, 40040, {0, 1}, false, "", "1 tracks have no plot trail in this unit"},
                         {4, 40188, {}, false, "", "this unit has no plot trail 4, only 2"}}) {
    for (items.clear_tracks(); items.track_count() < row.tracks;) {
      items.start_segment();
      for (const double longitude : {8.0, 8.0001}) add('T', "", {47, longitude});
    }
    EXPECT_EQ(upload(row.command), row.all_taken);
    EXPECT_EQ(numbers_of(kGetOrigin), row.trails);
    EXPECT_EQ(front_end.lines[8], row.line_8);
    EXPECT_EQ(front_end.lines[9], row.line_9);
  }
}

TEST_F(Uploads, EventsAreAnnouncedAndCutToTheUnit) {
  for (int i = 0; i < 3; ++i) add('I', "");
  add('I', "POLE", {90, 0});
  struct Row {
    int slots;
    std::vector<int> announced, sent;
    std::string line_9;
  };
  for (const Row& row : {Row{10, {3}, {0, 1, 2}, ""},
                         {-1, {}, {}, "; 3 events have no slot in this unit and were not sent"},
                         {2, {2}, {0, 1}, "; 1 events have no slot in this unit and were not sent"}}) {
    set_info(kIconsAt, row.slots);
    EXPECT_FALSE(upload(40160));
    EXPECT_EQ(numbers_of(kSetIconCount), row.announced);
    EXPECT_EQ(numbers_of(kSendIcon), row.sent);
    EXPECT_EQ(front_end.lines[9], "1 events are where the unit has no places and were not sent" + row.line_9);
  }
  EXPECT_EQ(front_end.lines[1], "This unit supports 2 Icons.");
  EXPECT_EQ(front_end.lines[2], "Sending 2 of 3 Icons.");
}

TEST_F(Uploads, WhatIsNotAnsweredIsCounted) {
  settings.SA_SendLowrInactives = 1;
  add_route(0, "ROUTE", "AB");
  for (int i = 0; i < 2; ++i) add('I', "");
  for (const auto& silence : {std::pair(kSendWaypoint, 1),
                              {kSendWaypoint, 3},
                              {kSendWaypoint, 4},
                              {kSendRoute, 0},
                              {kSetIconCount, 2},
                              {kSendIcon, 1}})
    held[silence] = {};
  EXPECT_FALSE(upload(40038));
  EXPECT_EQ(front_end.lines[9],
            "1 waypoints were not answered; 2 emptied slots were not answered; 1 routes were not answered; "
            "the number of events was not answered; 1 events were not answered");
}

TEST_F(Uploads, NothingAndUnknownCommands) {
  EXPECT_FALSE(upload(40038));
  EXPECT_EQ(front_end.lines,
            (Lines{{3, "Upload(s) completed"},
                   {9, "Nothing to upload: there are no selected waypoints, routes, tracks or events"}}));
  EXPECT_FALSE(upload(40045));
  EXPECT_EQ(front_end.boxes.back().second, "Program error A144; which=40045. Please report to author");
  EXPECT_TRUE(requests.empty());
}

TEST(UnitRouteName, LosesOnlyWhatADownloadPutInFront) {
  EXPECT_EQ(unit_route_name("R  123 HOME"), "HOME");
  for (const char* name : {"R  00", "R  00 "}) EXPECT_EQ(unit_route_name(name), "");
  for (const char* name : {"R  0 HOME", "R 00 HOME", "R  00HOME", "R  ", "", "HOME"})
    EXPECT_EQ(unit_route_name(name), name);
}

}  // namespace
}  // namespace lowrance
