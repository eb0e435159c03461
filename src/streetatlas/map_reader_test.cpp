#include "streetatlas/map_reader.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/format_fixture.h"
#include "tests/support/street_atlas_builder.h"

namespace streetatlas {
namespace {

using support::map_place;
using support::MapPlace;
using support::StreetAtlasBuilder;

constexpr std::uint32_t kOneDegree = 8388607;
constexpr double kCodeStep = 1.3e-7;  // degrees
const MapPlace kPortland = map_place(43.66, -70.25);
const MapPlace kAugusta = map_place(44.31, -69.78);
// Latitude code 0: 256 degrees north.
constexpr MapPlace kOffTheEarth{0, 0x80000000U};

class MapReaderTest : public support::FormatTest {
 protected:
  int read_3(const std::string& file) { return read_with(read_street_atlas_3, file); }
  int read_5(const std::string& file) { return read_with(read_street_atlas, file); }
  int read_5(const StreetAtlasBuilder& map) { return read_5(map.file()); }
  int read_3(const StreetAtlasBuilder& map) { return read_3(map.file()); }
  // Every record's letter and ident, routes as "3<name>:point,point".
  [[nodiscard]] std::string contents() const {
    std::string all;
    for (int i = 1; i <= store.waypoint_count(); ++i) all += 'W' + text(store.waypoint(i).ident);
    for (int i = 1; i <= store.event_count(); ++i) all += 'I' + text(store.event(i).ident);
    for (int i = 1; i <= store.proximity_count(); ++i) all += 'P' + text(store.proximity(i).ident);
    for (int i = 1; i <= store.track_point_count(); ++i) all += "T" + std::to_string(store.track_point(i).segment_flag);
    return all + routes();
  }
  [[nodiscard]] std::string routes() const {
    std::string all;
    for (int number = 0; number < store::kRouteCapacity; ++number) {
      const store::Route& route = store.route(number);
      if (!route.header) continue;
      all += std::to_string(number) + "<" + text(route.header->comment) + ">";
      for (const store::ItemRecord& point : route.points) all += text(point.ident) + ",";
    }
    return all;
  }
  static std::string text(std::string_view view) { return std::string(view); }
};

TEST_F(MapReaderTest, CodesCountStepsBackFromTheMiddleAndLongitudesWestward) {
  struct Case {
    std::uint32_t code;
    double latitude, longitude;
  };
  for (const Case& c :
       {Case{0x80000000U, 0, 0}, Case{0x80000000U - kOneDegree, 1, -1}, Case{0x80000000U + 90 * kOneDegree, -90, 90}}) {
    ASSERT_EQ(read_3(StreetAtlasBuilder().text({c.code, c.code}, "", "Here")), 1);
    const store::ItemRecord waypoint = store.waypoint(store.waypoint_count());
    EXPECT_EQ(waypoint.position.latitude, c.latitude);
    EXPECT_EQ(waypoint.position.longitude, c.longitude);
    EXPECT_FALSE(std::signbit(waypoint.position.longitude) && c.longitude == 0) << "a negative zero";
  }
}

TEST_F(MapReaderTest, SymbolsBecomeWhatTheirTextSays) {
  EXPECT_EQ(read_3(StreetAtlasBuilder(258)
                       .symbol(kPortland, "(01:01)Not this", "Mill")
                       .symbol(kPortland, "Icon", "")
                       .symbol(kPortland, "", "icon")
                       .symbol(kPortland, "(03:12)Not this", "(3:12)Dam")
                       .text(kAugusta, "Label", "Text")
                       .text(kAugusta, "Only a label", "")),
            6);
  EXPECT_EQ(contents(), "WMillWiconW(3:12)DamWTextWOnly a labelIIcon");
  const store::ItemRecord icon = store.event(1);
  EXPECT_NEAR(icon.position.latitude, 43.66, kCodeStep);
  EXPECT_NEAR(icon.position.longitude, -70.25, kCodeStep);
  EXPECT_EQ(icon.kind, 'I');
  constexpr std::uint32_t kClockNow = 1000000000 - 631065600;  // the clock's time since 1989-12-31
  EXPECT_EQ(icon.time.seconds, kClockNow);
  EXPECT_EQ(store.waypoint(1).time.seconds, kClockNow);
}

TEST_F(MapReaderTest, ARouteHeaderIsMadeWhenTheRouteChangesOrIsMissing) {
  EXPECT_EQ(read_3(StreetAtlasBuilder()
                       .symbol(kPortland, "", "(03:12)Bridge")
                       .symbol(kPortland, "", "between")
                       .symbol(kAugusta, "(03:01)Ferry", "")
                       .symbol(kAugusta, "", "(07:01)Pier")
                       .symbol(kAugusta, "", "(03:13)Inn")),
            5 + 3);
  // Row 3 is taken when route 3 comes back, so it goes into the next free one.
  EXPECT_EQ(routes(), "3<>Bridge,Ferry,4<>Inn,7<>Pier,");
  EXPECT_EQ(text(store.route(3).header->ident), "03");
  EXPECT_EQ(store.waypoint_count(), 5);
}

TEST_F(MapReaderTest, APointWhoseRouteFindsNoRoomIsKeptAsAWaypoint) {
  StreetAtlasBuilder map;
  map.symbol(kPortland, "", "(99:01)A").symbol(kPortland, "", "(98:01)B").symbol(kPortland, "", "(99:02)C");
  EXPECT_EQ(read_3(map.symbol(kPortland, "", "D")), 6);
  EXPECT_EQ(contents(), "WAWBWCWD98<>B,99<>A,");
  EXPECT_EQ(front_end.lines[2], "1 points of routes that found no room are waypoints only");
  EXPECT_EQ(front_end.boxes.size(), 1U);
}

TEST_F(MapReaderTest, EveryLineAndAreaIsASegmentOfItsOwn) {
  const std::vector<MapPlace> five{kPortland, kAugusta, kPortland, kAugusta, kPortland};
  EXPECT_EQ(read_3(StreetAtlasBuilder()
                       .line(five)
                       .line({})
                       .area({kAugusta, kPortland, kAugusta})
                       .line({kOffTheEarth, kPortland, kAugusta})),
            10);
  EXPECT_EQ(contents(), "T1T0T0T0T0T1T0T0T1T0");
  EXPECT_NEAR(store.track_point(2).position.longitude, -69.78, kCodeStep);
  EXPECT_TRUE(store.track_point(2).ident.empty());
}

TEST_F(MapReaderTest, ACirclesRimGivesItsDistance) {
  const MapPlace equator;
  const MapPlace one_north{0x80000000U - kOneDegree, 0x80000000U};
  const MapPlace no_latitude{0, 0x80000000U - kOneDegree};  // one degree west of the centre
  EXPECT_EQ(read_3(StreetAtlasBuilder().circle(equator, one_north).circle(equator, no_latitude)), 2);
  EXPECT_EQ(contents(), "PPROX01PPROX02");
  // A degree of a sphere of 3438.1749460043193 nautical miles is 60.0074731 of them.
  EXPECT_NEAR(store.proximity(1).proximity_distance, 60.0074731 * 1855.322236, 0.02);
  EXPECT_NEAR(store.proximity(2).proximity_distance, 60.0074731 * 1855.322236, 0.02);
}

TEST_F(MapReaderTest, PositionsOffTheEarthAreCountedAndLeftOut) {
  EXPECT_EQ(read_3(StreetAtlasBuilder()
                       .text(kPortland, "", "Good")
                       .symbol(kOffTheEarth, "", "Bad")
                       .symbol(kOffTheEarth, "", "(05:01)Bad")
                       .circle(kOffTheEarth, kPortland)
                       .text({0x80000000U, 0x80000000U + 181 * kOneDegree}, "", "Bad")
                       .text(kPortland, "", "Also good")),
            2);
  EXPECT_EQ(contents(), "WGoodWAlso good");
  EXPECT_EQ(front_end.lines[2], "4 positions are not on the earth and were passed over, the first in item 2");
}

TEST_F(MapReaderTest, WhatIsNoMapIsRefused) {
  std::string other_version = StreetAtlasBuilder(257).text(kPortland, "", "Text").file();
  const std::string map = StreetAtlasBuilder().file();
  for (const std::string& file : {other_version, std::string(), map.substr(0, map.size() - 1)}) {
    front_end.lines.clear();
    EXPECT_EQ(read_5(file), -1);
    EXPECT_EQ(front_end.lines[1], "File a file is not a valid DeLorme .SA file");
  }
  EXPECT_TRUE(store.empty());
}

TEST_F(MapReaderTest, AnUnknownItemEndsTheReading) {
  for (const auto& [type, message] :
       {std::pair{std::string("\x04\0", 2), "New SA Item found 0x0004"}, {"\x34\x12", "New SA Item found 0x1234"}}) {
    store.clear_all();
    EXPECT_EQ(read_3(StreetAtlasBuilder()
                         .symbol(kPortland, "", "First")
                         .text(kPortland, "", "Second")
                         .raw_item(type)
                         .text(kPortland, "", "Behind")),
              2);
    EXPECT_EQ(contents(), "WFirstWSecond");
    EXPECT_EQ(front_end.lines[1], message);
    EXPECT_EQ(front_end.lines[3], "Only the first 2 of 4 items were understood; the rest of the file was not read");
  }
}

TEST_F(MapReaderTest, SymbolsAreReadWithBodiesOf12And13Bytes) {
  using Body = StreetAtlasBuilder::SymbolBody;
  for (const Body body : {Body::Long, Body::Short}) {
    store.clear_all();
    EXPECT_EQ(read_3(StreetAtlasBuilder(256, body)
                         .symbol(kPortland, "", "Bridge")
                         .text(kPortland, "", "Town")
                         .symbol(kAugusta, "Label", "")
                         .symbol(kAugusta, "", "Dam")),
              4);
    EXPECT_EQ(contents(), "WBridgeWTownWLabelWDam");
    // With one symbol only the file's end tells, or an item behind it that nobody knows.
    for (const bool with_more : {false, true}) {
      store.clear_all();
      StreetAtlasBuilder map(256, body);
      map.symbol(kPortland, "", "Bridge");
      if (with_more) map.raw_item(std::string("\x04\0", 2) + std::string(90, 'x'));
      EXPECT_EQ(read_3(map), 1);
      EXPECT_EQ(contents(), "WBridge");
    }
  }
}

TEST_F(MapReaderTest, ItemsBehindANoteAreNotTrustedWhenTheFileDoesNotComeOut) {
  StreetAtlasBuilder map;
  map.text(kPortland, "", "Before").note(kPortland, "a remark").text(kPortland, "", "Behind");
  EXPECT_EQ(read_3(map), 2);
  EXPECT_EQ(contents(), "WBeforeWBehind");

  store.clear_all();
  EXPECT_EQ(read_3(map.raw_item("\x77\x77")), 1);
  EXPECT_EQ(contents(), "WBefore");
  EXPECT_EQ(front_end.lines[3], "Only the first 1 of 4 items were understood; the rest of the file was not read");
}

StreetAtlasBuilder map_with_routes() {
  StreetAtlasBuilder map;
  map.symbol(kPortland, "", "(03:01)Bridge").routes(2);
  map.route(3, "Over the river", 1).route_point(kPortland, 0, "Bridge");
  map.route(12, "Up north", 5).route_point(kPortland, 1, "").route_point(kPortland, 0, "Freeport");
  map.route_point(kPortland, 0, "").route_point(kPortland, 2, "").route_point(kAugusta, 3, "");
  return map;
}

TEST_F(MapReaderTest, TheRouteSectionGivesRoutesAndTheNamesOfThoseOfSymbols) {
  EXPECT_EQ(read_5(map_with_routes()), 2 + 6);
  EXPECT_EQ(routes(), "3<Over the river>Bridge,12<Up north>START,Freeport,S00004,STOP,FINISH,");
  EXPECT_EQ(text(store.route(12).header->ident), "12");
  EXPECT_EQ(store.waypoint_count(), 6);
}

TEST_F(MapReaderTest, ARouteSectionThatIsNotUnderstoodIsPassedOverInSilence) {
  const std::string map = map_with_routes().file();
  StreetAtlasBuilder empty_route, high_number, off_the_earth, unknown_kind;
  empty_route.text(kPortland, "", "Text").routes(1).route(3, "", 0);
  high_number.text(kPortland, "", "Text").routes(1).route(100, "", 1).route_point(kPortland, 0, "A");
  off_the_earth.text(kPortland, "", "Text").routes(1).route(3, "", 1).route_point(kOffTheEarth, 0, "A");
  unknown_kind.text(kPortland, "", "Text").routes(1).route(3, "", 1).route_point(kPortland, 5, "A");
  for (const std::string& file : {map + '\0', map.substr(0, map.size() - 1), empty_route.file(), high_number.file(),
                                  off_the_earth.file(), unknown_kind.file()}) {
    store.clear_all();
    EXPECT_GT(read_5(file), 0);
    EXPECT_EQ(store.waypoint_count(), 1);
    EXPECT_TRUE(routes().empty() || routes() == "3<>Bridge,") << routes();
  }
  store.clear_all();
  EXPECT_EQ(read_3(map), 2) << "version 3 has no routes behind its items";
  EXPECT_TRUE(front_end.line_writes.empty());
}

}  // namespace
}  // namespace streetatlas
