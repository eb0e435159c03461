#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <numeric>
#include <set>

#include "lowrance/downloads.h"
#include "lowrance/route_upload.h"
#include "lowrance/uploads.h"
#include "tests/support/recording_front_end.h"
#include "tests/support/scripted_device.h"

namespace lowrance {
namespace {

using base::Bytes;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using Records = std::map<int, Bytes>;  // as they stand in requests, by number

// A unit that keeps records, and the program connected to it.
class UnitTransfers : public testing::Test {
 protected:
  UnitTransfers() {
    port.set_port_name("COM1");
    device.on_sent = [this](const Bytes& sent) {
      const bool is_header = header.empty();
      if (is_header) header = sent;
      const bool has_data = header[4] + header[5] != 0;
      if (is_header && has_data) return;
      const int code = header[2] | header[3] << 8;
      header.clear();
      take(code, has_data ? Bytes(sent.begin(), sent.end() - 1) : Bytes{});
    };
  }

  void take(int code, const Bytes& data) {
    const int number = data.size() < 2 ? 0 : data[0] | data[1] << 8;
    requests.emplace_back(code, number);
    if (silent_on.contains({code, number})) return;
    const auto kept = [number](const Records& records, Bytes none) {
      const auto found = records.find(number);
      return found == records.end() ? none : found->second;
    };
    const auto n = static_cast<std::uint8_t>(number & 0xFF);
    switch (code) {
      case 0x030E:
        return answer(code, info());
      case 0x0303:
        return answer(code, kept(waypoints, write_waypoint({n, 0, 0, {}, "", 0})));
      case 0x0305:
        return answer(code, kept(routes, write_route({n, 0, "", {}})));
      case 0x0308:
        return answer(code, {static_cast<std::uint8_t>(icons.size()), 0});
      case 0x0309:
        return answer(code, kept(icons, {}));
      case 0x0312:
        return answer(code, Bytes{data[0], 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
      case 0x0304:
        waypoints[number] = data;
        break;
      case 0x0306:
        routes[number] = data;
        break;
      case 0x030A:
        icons.clear();
        break;
      case 0x030B:
        icons[number] = data;
        break;
    }
    answer(code, {});
  }

  void answer(int code, const Bytes& fields) {
    const auto u8 = [](std::size_t value) { return static_cast<std::uint8_t>(value & 0xFF); };
    const auto closing = [&u8](const Bytes& bytes) { return u8(0U - std::accumulate(bytes.begin(), bytes.end(), 0U)); };
    Bytes message{0x55,
                  0x81,
                  u8(static_cast<std::size_t>(code) | 0x80),
                  u8(static_cast<std::size_t>(code) >> 8),
                  u8(fields.size() + 1),
                  u8((fields.size() + 1) >> 8),
                  0};
    message.push_back(closing(message));
    message.push_back(0);
    message.insert(message.end(), fields.begin(), fields.end());
    message.push_back(closing(fields));
    device.queue(message, answers_after);
  }

  [[nodiscard]] Bytes info() const {
    base::ByteWriter out;
    for (const int value : {14, 1, 1, 159, 99, unit.NumOfWaypoints + 0, unit.NumOfIcons + 0, unit.NumOfRoutes + 0, 99})
      out.u16(static_cast<std::uint16_t>(value));
    return out.u8(unit.NumOfPlotTrails).u8(unit.NumOfIconSym).u8(0).u32(0).result();
  }

  void put_waypoint(int number, const std::string& name, GridPoint place = {1000, -2000}, std::uint8_t symbol = 4) {
    const auto n = static_cast<std::uint16_t>(number);
    waypoints[number] = write_waypoint({n, 1, symbol, place, name, 100});
  }
  void put_route(int number, const std::string& name, const std::vector<std::uint16_t>& points) {
    routes[number] =
        write_route({static_cast<std::uint16_t>(number), static_cast<std::uint8_t>(points.size()), name, points});
  }
  void put_icon(int number, std::uint8_t symbol) {
    icons[number] = write_icon({static_cast<std::uint16_t>(number), {5, number}, symbol});
  }
  // Three waypoints, in the slots 0, 1 and 2, a route of them and two events.
  void fill_unit() {
    put_waypoint(0, "ONE");
    put_waypoint(1, "TWO", {-77, 88}, 27);
    put_waypoint(2, "THREE", {5955688, 897614}, 0);
    put_route(0, "WAY HOME", {2, 0, 1});
    put_icon(0, 3);
    put_icon(1, 27);
  }
  void load_waypoint(const std::string& name, geodesy::Position position = {47, 8}) {
    items.start_item();
    items.CurrentItem.ident = name;
    items.CurrentItem.position = position;
    items.CurrentItem.symbol = 10;  // a house
    ASSERT_EQ(items.push_waypoint(0), 0);
    items.select_all('W', true);
  }
  void load_route(std::uint32_t number, const std::string& name, const std::vector<std::string>& idents) {
    items.start_route(number, "", name);
    ASSERT_EQ(items.push_route(true), 0);
    for (const std::string& ident : idents) {
      items.start_item();
      items.CurrentItem.ident = ident;
      ASSERT_EQ(items.push_route(true), 0);
    }
    items.select_all('W', true);
    items.select_all('R', true);
  }

  bool download(int command_id) {
    begin();
    return LowranceDownloads(connection, clock, items, settings).download(command_id);
  }
  bool upload(int command_id) {
    begin();
    return LowranceUploads(connection, items, settings, [this] { return offset; }).upload(command_id);
  }
  void begin() {
    flags.LowranceIdentified = false;
    front_end.lines.clear();
    requests.clear();
    header.clear();
  }
  // The numbers that these requests named, in their order.
  [[nodiscard]] std::vector<int> numbers_of(int code) const {
    std::vector<int> numbers;
    for (const auto& [request, number] : requests)
      if (request == code) numbers.push_back(number);
    return numbers;
  }

  LowrUnitInfo unit{.NumOfWaypoints = 5, .NumOfIcons = 10, .NumOfRoutes = 3, .NumOfPlotTrails = 2, .NumOfIconSym = 28};
  Records waypoints, routes, icons;
  std::set<std::pair<int, int>> silent_on;  // code and number of requests
  std::vector<std::pair<int, int>> requests;
  Bytes header;  // of the request that is being sent
  std::chrono::milliseconds answers_after{0};
  std::int64_t offset = 0;

  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  serial::DeviceFlags flags;
  serial::DebugLog debug_log{front_end};
  std::unique_ptr<support::ScriptedDevice> made = std::make_unique<support::ScriptedDevice>(clock);
  support::ScriptedDevice& device = *made;
  serial::ComPort port{[this](const std::string&) { return std::move(made); }, clock, front_end, flags};
  LowranceLink link{port, clock, front_end, flags, debug_log};
  UnitIdentification identification{link, front_end, flags};
  Connection connection{link, port, identification, front_end, flags};
  store::Settings settings;
  store::ItemStore items{settings, front_end};
};

class Downloads : public UnitTransfers {};

TEST_F(Downloads, ActiveWaypointsAreStored) {
  put_waypoint(0, "HOME", {5955688, 897614});
  put_waypoint(4, "");
  EXPECT_TRUE(download(40029));
  EXPECT_THAT(numbers_of(0x0303), ElementsAre(0, 1, 2, 3, 4));
  ASSERT_EQ(items.waypoint_count(), 2);
  const store::ItemRecord home = items.waypoint(1);
  EXPECT_EQ(home.ident, "HOME");
  EXPECT_NEAR(home.position.latitude, 47.20576, 1e-5);
  EXPECT_NEAR(home.position.longitude, 8.09053, 1e-5);
  EXPECT_EQ(home.symbol, 10);
  EXPECT_EQ(home.display_mode, 3);
  EXPECT_EQ(home.time.seconds, 63158500u);
  EXPECT_EQ(front_end.lines[1], "Waypoint download completed");
  EXPECT_EQ(front_end.lines[4], "W0005 of 0005 Active:0002");
  EXPECT_EQ(front_end.status[1], " ");
  EXPECT_FALSE(device.is_open);
}

TEST_F(Downloads, TheRangeIsCutToTheUnit) {
  settings.SA_LwrRangeLo = 4;
  settings.SA_LwrRangeHi = -1;
  EXPECT_TRUE(download(40117));
  EXPECT_THAT(numbers_of(0x0303), ElementsAre(3, 4));
  settings.SA_LwrRangeLo = -7;
  settings.SA_LwrRangeHi = 2;
  EXPECT_TRUE(download(40117));
  EXPECT_THAT(numbers_of(0x0303), ElementsAre(0, 1));
  settings.SA_LwrRangeLo = 6;
  settings.SA_LwrRangeHi = 9;
  EXPECT_FALSE(download(40117));
  EXPECT_TRUE(numbers_of(0x0303).empty());
  EXPECT_EQ(front_end.lines[1], "There are no waypoints from 6 to 9: this unit has 5");
}

TEST_F(Downloads, WhatDidNotComeIsCountedAndTheRestGoesOn) {
  for (int i = 0; i < 5; ++i) put_waypoint(i, "W");
  silent_on = {{0x0303, 0}};
  waypoints[1].resize(28);
  waypoints[2][0] = 3;  // another number
  put_waypoint(3, "NOWHERE", {0, 30000000});
  put_waypoint(4, "STRANGE", {}, 28);
  EXPECT_FALSE(download(40029));
  ASSERT_EQ(items.waypoint_count(), 1);
  EXPECT_EQ(items.waypoint(1).symbol, 18);
  EXPECT_EQ(front_end.lines[6],
            "2 waypoints did not come; 2 waypoints came damaged; "
            "1 waypoints have a symbol outside the unit's set and got the dot");
}

TEST_F(Downloads, RoutesAskForTheirWaypoints) {
  fill_unit();
  put_route(2, "NO POINTS", {});
  EXPECT_TRUE(download(40034));
  EXPECT_THAT(numbers_of(0x0305), ElementsAre(0, 1, 2));
  EXPECT_THAT(numbers_of(0x0303), ElementsAre(2, 0, 1));
  EXPECT_EQ(items.route_count(), 2);  // an empty slot is none
  EXPECT_EQ(items.route(0).header->comment, "R  00 WAY HOME");
  EXPECT_EQ(items.route(0).header->ident, "00");
  ASSERT_EQ(items.route(0).points.size(), 3u);
  EXPECT_EQ(items.route(0).points[0].ident, "THREE");
  EXPECT_EQ(items.route(2).header->comment, "R  02 NO POINTS");
  EXPECT_EQ(front_end.lines[1], "Route download completed");
  EXPECT_EQ(front_end.times_written(4, "R00000 of 3  W00003 of     3"), 1);
}

TEST_F(Downloads, RoutesThatAreTooLongOrIncompleteAreTold) {
  fill_unit();
  put_route(0, "LONG", std::vector<std::uint16_t>(201, 0));
  put_route(1, "HUNDRED", std::vector<std::uint16_t>(101, 1));
  put_route(2, "GAP", {0, 4, 2});
  silent_on = {{0x0303, 4}};
  EXPECT_FALSE(download(40034));
  EXPECT_FALSE(items.route(0).header);
  EXPECT_EQ(items.route(1).points.size(), 99u);
  EXPECT_EQ(items.route(2).points.size(), 2u);
  EXPECT_EQ(front_end.times_written(4, "Too Many Route Points, 200 is the maximum supported"), 1);
  EXPECT_EQ(front_end.times_written(1, "Too many route points"), 1);
  EXPECT_EQ(front_end.lines[6],
            "route 0 has too many points and was left out; route 1 ends at point 99: the store takes no more; "
            "1 route points did not come");
}

TEST_F(Downloads, AFullStoreEndsTheRoutes) {
  fill_unit();
  for (std::uint32_t i = 0; i < 100; ++i) load_route(i, "MINE", {});
  EXPECT_FALSE(download(40034));
  EXPECT_THAT(numbers_of(0x0305), ElementsAre(0));
  EXPECT_EQ(front_end.lines[6], "the store has no room for route 0 and those behind it");
}

TEST_F(Downloads, Events) {
  fill_unit();
  EXPECT_TRUE(download(40035));
  ASSERT_EQ(items.event_count(), 2);
  EXPECT_EQ(items.event(2).symbol, 178);
  EXPECT_EQ(front_end.lines[1], "Event (Icon) download completed");
  EXPECT_EQ(front_end.lines[4], "I00002");
  unit.NumOfIcons = 1;
  EXPECT_FALSE(download(40159));
  EXPECT_THAT(numbers_of(0x0309), ElementsAre(0));
  icons.clear();
  EXPECT_TRUE(download(40159));
  EXPECT_EQ(front_end.lines[4], "No Icons to send");
}

TEST_F(Downloads, AKindThatTheUnitLacksFailsOnlyByName) {
  unit = {.NumOfWaypoints = -1, .NumOfIcons = 0, .NumOfRoutes = -5, .NumOfPlotTrails = 0};
  EXPECT_TRUE(download(40028));
  EXPECT_EQ(front_end.times_written(4, "Icons not supported on this Lowrance/Eagle unit"), 1);
  EXPECT_EQ(front_end.lines[5], "Download(s) Finished");
  for (const int command : {40029, 40035, 40030, 40034}) EXPECT_FALSE(download(command)) << command;
}

TEST_F(Downloads, ATrailBeyondTheLastIsTheLast) {
  EXPECT_FALSE(download(40186));
  EXPECT_EQ(front_end.lines[1], "Cannot download trail 4--this unit only supports 2 trails.");
  EXPECT_EQ(front_end.lines[2], "Downloading trail 2.");
  EXPECT_EQ(front_end.lines[3], "Plot Trail download completed");
  EXPECT_EQ(front_end.lines[8], "No points in trail 2");
}

TEST_F(Downloads, AllKindsInTheirOrder) {
  fill_unit();
  EXPECT_TRUE(download(40028));
  const std::vector<std::string> completions{front_end.lines[1], front_end.lines[2], front_end.lines[3],
                                             front_end.lines[4], front_end.lines[5]};
  EXPECT_THAT(completions,
              ElementsAre("Waypoint download completed", "Event (Icon) download completed",
                          "Plot Trail download completed", "Route download completed", "Download(s) Finished"));
}

// Whenever it comes: the transfer ends soon, says so, and the next one works.
TEST_F(UnitTransfers, EscEndsEveryTransfer) {
  fill_unit();
  ASSERT_TRUE(download(40028));
  for (const char kind : {'W', 'R', 'I'}) items.select_all(kind, true);
  settings.SA_SendLowrInactives = 1;
  settings.SA_LwrRteStartPt = 2;
  const store::ItemStore::Contents contents = items.contents();
  const auto run = [&](bool downloads) {
    items.restore(contents);
    return downloads ? download(40028) : upload(40038);
  };
  for (const auto& [downloads, delay] : {std::pair(true, 0), {true, 30}, {false, 0}, {false, 30}}) {
    answers_after = std::chrono::milliseconds(delay);  // then ESC comes between two requests, or during the wait
    front_end.esc = nullptr;
    (void)run(downloads);
    const std::size_t all = requests.size();
    for (std::size_t i = 3; i <= all; ++i) {  // behind the identification
      front_end.esc = [this, i, pressed = false]() mutable {
        return requests.size() >= i && !std::exchange(pressed, true);
      };
      EXPECT_FALSE(run(downloads));
      EXPECT_LE(requests.size(), i + 1);
      EXPECT_THAT(front_end.lines[4], HasSubstr("Operator Abort in ")) << i;
      EXPECT_THAT(front_end.lines[6], Not(HasSubstr("s did not come"))) << i;
      EXPECT_THAT(front_end.lines[9], Not(HasSubstr("not answered"))) << i;
      EXPECT_FALSE(flags.UserAbort || device.is_open);
    }
  }
}

TEST_F(UnitTransfers, AUnitThatFallsSilentIsGivenUp) {
  unit.NumOfWaypoints = 1000;
  for (int i = 0; i < 1000; ++i) silent_on.insert({0x0303, i});
  EXPECT_FALSE(download(40028));
  EXPECT_EQ(front_end.lines[1], "Receiver does not answer");
  EXPECT_EQ(front_end.lines[6], "10 waypoints did not come; the download broke off: what has arrived is kept");
  EXPECT_FALSE(flags.LowranceIdentified || device.is_open);
}

class Uploads : public UnitTransfers {};

TEST_F(Uploads, WaypointsFillTheSlotsFromTheStart) {
  settings.SA_LwrStartPt = 2;
  offset = 3600;
  load_waypoint("Thirteen letters");
  load_waypoint("not wanted");
  load_waypoint("POLE", {90, 0});
  load_waypoint("LAST", {-33.5, 151.25});
  items.select('W', 2, false);
  EXPECT_FALSE(upload(40039));
  EXPECT_THAT(numbers_of(0x0304), ElementsAre(1, 3));
  const Bytes last{3,   0, 1, 4, 0xE0, 0xBF, 0xC3, 0xFF, 0x4D, 0x0D, 0x00, 0x01, 'L', 'A', 'S',
                   'T', 0, 0, 0, 0,    0,    0,    0,    0,    0,    0,    0,    0,   0};
  EXPECT_EQ(waypoints[3], last);
  EXPECT_EQ(std::string(waypoints[1].begin() + 12, waypoints[1].begin() + 25), "Thirteen lett");
  EXPECT_EQ(front_end.lines[3], "Waypoint upload completed");
  EXPECT_EQ(front_end.lines[4], "Upload(s) completed");
  EXPECT_EQ(front_end.lines[9], "1 waypoints are where the unit has no places and were not sent");
  EXPECT_EQ(front_end.lines[10], "1 names were cut to 13 letters");
}

TEST_F(Uploads, InactivesBeginOneSlotBehindTheFirstFreeOne) {
  unit.NumOfWaypoints = 7;
  settings.SA_SendLowrInactives = 1;
  for (const char* name : {"A", "B", "C"}) load_waypoint(name);
  EXPECT_TRUE(upload(40116));
  EXPECT_THAT(numbers_of(0x0304), ElementsAre(0, 1, 2, 4, 5, 6));
  EXPECT_EQ(waypoints[6][2], 0);  // status
  EXPECT_EQ(waypoints[6][3], 0);  // symbol
  EXPECT_EQ(waypoints[6][12], 'C');
  // Nothing selected must not empty the unit.
  items.select_all('W', false);
  EXPECT_FALSE(upload(40116));
  EXPECT_TRUE(numbers_of(0x0304).empty());
  EXPECT_EQ(front_end.lines[9], "Nothing to upload: there are no selected waypoints");
}

TEST_F(Uploads, LimitsAreAdviceButTold) {
  unit.NumOfWaypoints = 2;
  for (const char* name : {"A", "B", "C"}) load_waypoint(name);
  settings.SA_LwrStartPt = 2;
  EXPECT_FALSE(upload(40039));
  EXPECT_THAT(numbers_of(0x0304), ElementsAre(1, 2, 3));
  EXPECT_EQ(front_end.times_written(1, "This GPS only supports 2 waypoints."), 1);
  EXPECT_EQ(front_end.times_written(2, "Sending 2 of 3 waypoints."), 1);
  EXPECT_EQ(front_end.lines[1], "Sending too many waypoints to start at #2");
  EXPECT_EQ(front_end.lines[2], "Sending only the first 0 waypoints");
  EXPECT_EQ(front_end.lines[9], "2 waypoints have no slot in this unit when they start at #2");
  settings.SA_LwrStartPt = 2000000000;
  EXPECT_FALSE(upload(40039));
  EXPECT_THAT(numbers_of(0x0304), ElementsAre(65535));
}

TEST_F(Uploads, RoutesNameTheSlotsOfTheirWaypoints) {
  load_waypoint("FIRST");
  load_route(1, "R  07 Harbour and back", {"A", "B"});  // whose points are waypoints 2 and 3
  load_route(5, "NO SLOT", {"C"});
  EXPECT_FALSE(upload(40044));
  EXPECT_THAT(numbers_of(0x0304), ElementsAre(0, 1, 2, 3));
  const Bytes harbour{1, 0, 2, 'H', 'A', 'R', 'B', 'O', 'U', 'R', ' ', 'A', 'N', 'D', ' ', 'B', 1, 0, 2, 0};
  EXPECT_EQ(routes[1], harbour);
  EXPECT_EQ(front_end.lines[3], "Sending Lowrance Routes");
  EXPECT_EQ(front_end.lines[4], "Route upload completed");
  EXPECT_EQ(front_end.lines[9], "1 routes have a number above those of this unit and were not sent");

  settings.SA_LwrRteStartPt = 11;
  unit.NumOfWaypoints = 100;
  EXPECT_FALSE(upload(40044));
  EXPECT_THAT(numbers_of(0x0304), ElementsAre(0, 1, 2, 3, 10, 11, 12, 13));
  EXPECT_EQ(routes[1][16], 11);
}

TEST_F(Uploads, ARouteWithAMissingWaypointIsSkipped) {
  load_route(0, "BROKEN", {"A"});
  load_route(1, "WHOLE", {"B"});
  const store::ItemRecord other = items.waypoint(2);
  items.CurrentItem = other;
  ASSERT_EQ(items.push_waypoint(1), 0);  // the waypoint of the first route is gone
  items.select_all('W', true);
  EXPECT_FALSE(upload(40118));
  EXPECT_THAT(numbers_of(0x0306), ElementsAre(1));
  EXPECT_EQ(front_end.lines[1], "Waypoint 'A' missing in route. Route 1 skipped.");
  EXPECT_EQ(front_end.lines[9], "1 routes with a missing waypoint were not sent");
  // From a start of 3 on the missing waypoint has a number that looks right.
  settings.SA_LwrRteStartPt = settings.SA_LwrStartPt = 3;
  EXPECT_FALSE(upload(40118));
  EXPECT_THAT(numbers_of(0x0306), ElementsAre(0, 1));
  EXPECT_EQ(routes[0][16], 0);
  EXPECT_THAT(front_end.lines[9], HasSubstr("1 route points are no waypoint of the store"));
}

TEST_F(Uploads, EventsAreAnnouncedAndCutToTheUnit) {
  for (int i = 0; i < 3; ++i) {
    items.start_item();
    items.CurrentItem.symbol = 178;
    ASSERT_EQ(items.push_event(), 0);
  }
  EXPECT_TRUE(upload(40059));
  EXPECT_THAT(numbers_of(0x030A), ElementsAre(3));
  EXPECT_EQ(icons[2], (Bytes{2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 27}));
  EXPECT_EQ(front_end.lines[3], "Event (Icon) upload completed");
  unit.NumOfIcons = 2;
  EXPECT_FALSE(upload(40160));
  EXPECT_EQ(icons.size(), 2u);
  EXPECT_EQ(front_end.lines[1], "This unit supports 2 Icons.");
  EXPECT_EQ(front_end.lines[2], "Sending 2 of 3 Icons.");
  silent_on = {{0x030B, 1}};
  EXPECT_FALSE(upload(40160));
  EXPECT_THAT(front_end.lines[9], HasSubstr("1 events were not answered"));
  unit.NumOfIcons = -1;
  EXPECT_FALSE(upload(40160));
  EXPECT_TRUE(numbers_of(0x030A).empty());
}

TEST_F(Uploads, NothingAndUnknownCommands) {
  EXPECT_FALSE(upload(40038));
  EXPECT_EQ(front_end.lines[3], "Upload(s) completed");
  EXPECT_EQ(front_end.lines[9], "Nothing to upload: there are no selected waypoints, routes, tracks or events");
  EXPECT_FALSE(upload(40045));
  EXPECT_THAT(front_end.boxes, ElementsAre(std::pair<std::string, std::string>(
                                   "Program Error", "Program error A144; which=40045. Please report to author")));
  EXPECT_TRUE(requests.empty());
}

TEST_F(UnitTransfers, WhatIsDownloadedGoesBackAsItWas) {
  fill_unit();
  const Records all_waypoints = waypoints, all_routes = routes, all_icons = icons;
  EXPECT_TRUE(download(40035));
  EXPECT_TRUE(download(40029));
  settings.HandleReadDups = store::Duplicates::Ignore;  // the points of the route are waypoints already
  EXPECT_TRUE(download(40034));
  for (const char kind : {'W', 'R', 'I'}) items.select_all(kind, true);
  waypoints.clear();
  routes.clear();
  icons.clear();
  EXPECT_TRUE(upload(40038)) << front_end.lines[9];
  EXPECT_EQ(waypoints, all_waypoints);
  EXPECT_EQ(routes, all_routes);
  EXPECT_EQ(icons, all_icons);
}

TEST(UnitRouteName, LosesOnlyWhatADownloadPutInFront) {
  EXPECT_EQ(unit_route_name("R  00 Home"), "HOME");
  EXPECT_EQ(unit_route_name("R  123 HOME"), "HOME");
  EXPECT_EQ(unit_route_name("R  00"), "");
  EXPECT_EQ(unit_route_name("R  00 "), "");
  for (const char* name : {"R  0 HOME", "R 00 HOME", "R  00HOME", "R  ", "", "HOME"})
    EXPECT_EQ(unit_route_name(name), name);
}

}  // namespace
}  // namespace lowrance
