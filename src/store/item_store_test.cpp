#include "store/item_store.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "base/text.h"
#include "tests/support/recording_front_end.h"

namespace store {
namespace {

class ItemStoreTest : public testing::Test {
 protected:
  int push_waypoint(std::string_view ident, double latitude = 1, double longitude = 2) {
    items.start_item();
    items.CurrentItem.ident = ident;
    items.CurrentItem.position = {latitude, longitude};
    return items.push_waypoint(0);
  }
  int push_route_point(std::string_view ident) {
    items.start_item();
    items.CurrentItem.ident = ident;
    return items.push_route(true);
  }
  int push_header(std::uint32_t number, std::string_view name) {
    items.start_route(number, std::to_string(number), name);
    return items.push_route(true);
  }
  int push_track_point() {
    items.start_item();
    return items.push_track();
  }

  Settings settings;
  support::RecordingFrontEnd front_end;
  ItemStore items{settings, front_end};
};

TEST_F(ItemStoreTest, WaypointNumber100001IsRefusedAndReadingGoesOn) {
  for (int i = 0; i < kWaypointCapacity; ++i) ASSERT_EQ(push_waypoint("A"), 0);
  EXPECT_EQ(push_waypoint("B"), 1);
  EXPECT_EQ(push_waypoint("C"), 1);
  EXPECT_EQ(items.waypoint_count(), 100000);
  EXPECT_EQ(front_end.times_written(1, "Too many waypoints"), 2);
}

TEST_F(ItemStoreTest, ReplaceLeavesTheSecondRecordAtTheFirstsIndexAndNumber) {
  settings.HandleReadDups = Duplicates::Replace;
  push_waypoint("ABC", 10, 20);
  push_waypoint("abc", 30, 40);
  ASSERT_EQ(items.waypoint_count(), 1);
  EXPECT_EQ(items.waypoint(1).ident, "abc");
  EXPECT_EQ(items.waypoint(1).position.latitude, 30);
  EXPECT_EQ(items.waypoint(1).number, 1u);
}

TEST_F(ItemStoreTest, IgnoreKeepsTheFirstRecord) {
  settings.HandleReadDups = Duplicates::Ignore;
  push_waypoint("ABC", 10, 20);
  push_waypoint("abc", 30, 40);
  ASSERT_EQ(items.waypoint_count(), 1);
  EXPECT_EQ(items.waypoint(1).position.latitude, 10);
}

TEST_F(ItemStoreTest, ExactDuplicatesGoButTheSameNameElsewhereStays) {
  settings.ForceExactDupeRemoval = 1;
  push_waypoint("HUT", 47.25, 11.5);
  push_waypoint("Hut", 47.25, 11.5);
  push_waypoint("HUT", 47.25, 11.500000001);
  push_waypoint("HUT2", 47.25, 11.5);
  EXPECT_EQ(items.waypoint_count(), 3);
}

TEST_F(ItemStoreTest, ZeroAndMinusZeroAreTheSamePlace) {
  settings.ForceExactDupeRemoval = 1;
  push_waypoint("NULL", 0.0, 0.0);
  push_waypoint("NULL", -0.0, 0.0);
  EXPECT_EQ(items.waypoint_count(), 1);
}

// The index must answer what a scan would, whatever happened to the store in between.
TEST_F(ItemStoreTest, LookUpsAgreeWithALinearScanUnderRandomWork) {
  std::mt19937 random(7);
  const auto scan = [&](std::string_view ident, const geodesy::Position* position) {
    if (items.waypoint_count() < 2) return 0;
    for (int i = 1; i < items.waypoint_count(); ++i) {
      const ItemRecord& item = items.waypoint(i);
      if (base::equal_ignoring_case(item.ident, ident) && (position == nullptr || item.position == *position)) return i;
    }
    return 0;
  };
  for (int turn = 0; turn < 3000; ++turn) {
    settings.HandleReadDups = static_cast<Duplicates>(random() % 3);
    settings.ForceExactDupeRemoval = static_cast<int>(random() % 2);
    const std::string ident(1 + random() % 2, static_cast<char>((random() % 2 ? 'a' : 'A') + random() % 12));
    const geodesy::Position place{static_cast<double>(random() % 3), random() % 50 == 0 ? std::nan("") : 1.0};
    switch (random() % 40) {
      case 0:
        items.sort_waypoints();
        break;
      case 1:
        if (turn % 5 == 0) items.clear_waypoints();
        break;
      case 2:
        items.start_item();
        items.CurrentItem.ident = ident;
        items.CurrentItem.position = place;
        EXPECT_EQ(items.push_waypoint(1), items.waypoint_count() == 0 ? 1 : 0);
        break;
      default:
        push_waypoint(ident, place.latitude, place.longitude);
    }
    ASSERT_EQ(items.find_waypoint(ident), scan(ident, nullptr)) << "turn " << turn;
    ASSERT_EQ(items.find_waypoint(ident, place), scan(ident, &place)) << "turn " << turn;
  }
}

TEST_F(ItemStoreTest, LocalNoonFiveHoursWestIsStoredAs17UtcOnceOnly) {
  settings.HandleReadDups = Duplicates::Replace;
  items.set_input_time_offset(-5 * 3600);
  for (int i = 0; i < 2; ++i) {
    items.start_item();
    items.CurrentItem.ident = "NOON";
    items.CurrentItem.time = {1000000};
    ASSERT_EQ(items.push_waypoint(0), 0);
    EXPECT_EQ(items.waypoint(1).time.seconds, 1018000u);
  }
}

TEST_F(ItemStoreTest, ARoutePointKeepsItsTimeAndItsWaypointGoesToUtc) {
  items.set_input_time_offset(3600);
  ASSERT_EQ(push_header(3, "HOME"), 0);
  items.start_item();
  items.CurrentItem.ident = "P|1";
  items.CurrentItem.time = {5000};
  ASSERT_EQ(items.push_route(true), 0);
  ASSERT_EQ(items.route(3).points.size(), 1u);
  EXPECT_EQ(items.route(3).points[0].time.seconds, 5000u);
  EXPECT_EQ(items.waypoint(1).time.seconds, 1400u);
  EXPECT_EQ(items.route(3).points[0].ident, "P-1");
  EXPECT_EQ(items.route(3).points[0].number, items.waypoint(1).number);
  EXPECT_EQ(items.route(3).points[0].in_use, 1);
}

TEST_F(ItemStoreTest, ARouteOf100PointsLosesTheLastButKeepsItsWaypoint) {
  ASSERT_EQ(push_header(0, "LONG"), 0);
  for (int i = 1; i <= 99; ++i) ASSERT_EQ(push_route_point("P" + std::to_string(i)), 0);
  EXPECT_EQ(push_route_point("P100"), 1);
  EXPECT_EQ(items.route(0).points.size(), 99u);
  EXPECT_EQ(items.waypoint_count(), 100);
  EXPECT_EQ(front_end.lines[1], "Too many route points");
}

TEST_F(ItemStoreTest, ATakenRouteNumberGoesToTheNextFreeRow) {
  push_header(5, "FIRST");
  push_route_point("A");
  push_header(5, "SECOND");
  push_route_point("B");
  EXPECT_EQ(items.route(5).header->comment, "FIRST");
  EXPECT_EQ(items.route(6).header->comment, "SECOND");
  EXPECT_EQ(items.route(6).header->ident, "5");
  EXPECT_EQ(items.route(6).points[0].route_number, 6u);
}

TEST_F(ItemStoreTest, The101stRouteAndANumberAbove99FindNoRow) {
  for (std::uint32_t i = 0; i < 100; ++i) ASSERT_EQ(push_header(i, "R"), 0);
  EXPECT_EQ(push_header(0, "R"), 1);
  EXPECT_TRUE(items.route_overflow());
  items.clear_routes();
  EXPECT_FALSE(items.route_overflow());
  EXPECT_EQ(push_header(4000000000U, "R"), 1);
  EXPECT_EQ(front_end.boxes,
            (std::vector<std::pair<std::string, std::string>>(2, {"RouteError", "Route Buffer Full"})));
}

TEST_F(ItemStoreTest, ANamedTrackLogStartsWithItsFirstPointOnly) {
  settings.SA_LineStyle = 4;
  push_track_point();
  items.start_track_log("RIVER", "dark green");
  push_track_point();
  push_track_point();
  items.start_segment();
  push_track_point();
  items.start_track_log("LAKE", "mauve", std::uint8_t{1});
  push_track_point();
  EXPECT_EQ(items.track_point(1).segment_flag, kStartsSegment);  // the first point of all
  EXPECT_EQ(items.track_point(2).segment_flag, kStartsNamedTrack);
  EXPECT_EQ(items.track_point(2).ident, "RIVER");
  EXPECT_EQ(items.track_point(2).colour, 2);
  EXPECT_EQ(items.track_point(2).track_style, 4);
  EXPECT_EQ(items.track_point(3).segment_flag, kContinues);
  EXPECT_EQ(items.track_point(4).segment_flag, kStartsSegment);
  EXPECT_EQ(items.track_point(5).colour, kDefaultColour);
  EXPECT_EQ(items.track_point(5).track_style, 1);
  EXPECT_EQ(items.track_count(), 4);
}

TEST_F(ItemStoreTest, TheSymbolSetOfTheInputIsKeptAndTheConfiguredOneFillsIn) {
  settings.IconSelector = IconSet::StreetPilot;
  push_waypoint("A");
  items.start_item();
  items.CurrentItem.symbol_mode = 2;
  ASSERT_EQ(items.push_waypoint(0), 0);
  EXPECT_EQ(items.waypoint(1).symbol_mode, 4);
  EXPECT_EQ(items.waypoint(2).symbol_mode, 2);
}

TEST_F(ItemStoreTest, UnsignedPositionsTakeTheirSignFromTheLetters) {
  items.start_item();
  items.CurrentItem.position = {33.5, 70.25};
  items.CurrentItem.latitude_hemisphere = 'S';
  items.CurrentItem.longitude_hemisphere = 'W';
  ASSERT_EQ(items.push_waypoint(0), 0);
  push_waypoint("SIGNED", -5, 7);
  EXPECT_EQ(items.waypoint(1).position, (geodesy::Position{-33.5, -70.25}));
  EXPECT_EQ(items.waypoint(2).position, (geodesy::Position{-5, 7}));
  EXPECT_EQ(items.waypoint(2).latitude_hemisphere, 'S');
}

TEST_F(ItemStoreTest, TheEleventhProximityPointAndTheEventAfter10001AreRefused) {
  for (int i = 0; i < 10; ++i) ASSERT_EQ(items.push_proximity(), 0);
  EXPECT_EQ(items.push_proximity(), 1);
  EXPECT_EQ(front_end.lines[1], "Too many Proximity points");
  for (int i = 0; i < 10001; ++i) ASSERT_EQ(items.push_event(), 0);
  EXPECT_EQ(items.push_event(), 1);
  EXPECT_EQ(front_end.lines[1], "Too many Events (LEI Icons)");
}

TEST_F(ItemStoreTest, SortingIgnoresCaseAndKeepsEqualNamesInOrder) {
  for (const char* ident : {"b", "A", "C", "a", "B"}) push_waypoint(ident);
  items.sort_waypoints();
  std::string order;
  for (int i = 1; i <= 5; ++i) order += items.waypoint(i).ident.view();
  EXPECT_EQ(order, "AabBC");
  EXPECT_EQ(items.waypoint(1).number, 2u);
}

TEST_F(ItemStoreTest, ClearingWaypointsEmptiesTheRoutesAndStartsNumbersAnew) {
  push_header(1, "R");
  push_route_point("A");
  items.clear_waypoints();
  EXPECT_TRUE(items.empty());
  push_waypoint("B");
  EXPECT_EQ(items.waypoint(1).number, 1u);
}

TEST_F(ItemStoreTest, ARestoredStoreForgetsWhatCameAfterTheCopy) {
  settings.HandleReadDups = Duplicates::Replace;
  push_waypoint("OLD", 1, 1);
  const ItemStore::Contents before = items.contents();
  push_waypoint("OLD", 2, 2);
  push_waypoint("NEW");
  items.restore(before);
  ASSERT_EQ(items.waypoint_count(), 1);
  EXPECT_EQ(items.waypoint(1).position.latitude, 1);
  push_waypoint("NEW");
  EXPECT_EQ(items.waypoint_count(), 2);
  EXPECT_EQ(items.waypoint(2).number, 2u);
}

TEST_F(ItemStoreTest, LinkedRoutePointsGetTheNumberOfTheWaypointAtTheirPlace) {
  push_waypoint("HUT", 5, 5);
  push_header(0, "R");
  items.start_item();
  items.CurrentItem.ident = "HUT";
  items.CurrentItem.position = {5, 5};
  ASSERT_EQ(items.push_route(true), 0);
  EXPECT_EQ(items.route(0).points[0].number, 2u);
  items.link_route_points();
  EXPECT_EQ(items.route(0).points[0].number, 1u);
}

TEST_F(ItemStoreTest, SelectingMarksEveryItemOfAKindOrOne) {
  push_waypoint("A");
  push_waypoint("B");
  push_header(7, "NORTH");
  push_route_point("C");  // a waypoint too
  push_track_point();
  items.start_item();
  ASSERT_EQ(items.push_event(), 0);
  items.start_item();
  ASSERT_EQ(items.push_proximity(), 0);

  for (const char kind : {'W', 'R', 'T', 'I', 'P'}) EXPECT_EQ(items.selected_count(kind), 0) << kind;
  items.select_all('W', true);
  items.select_all('R', true);
  EXPECT_EQ(items.selected_count('W'), 3);
  EXPECT_EQ(items.selected_count('R'), 1);
  EXPECT_EQ(items.route(7).points[0].selected, 1);
  for (const char kind : {'T', 'I', 'P'}) {
    EXPECT_EQ(items.selected_count(kind), 0) << kind;
    items.select(kind, 1, true);
    EXPECT_EQ(items.selected_count(kind), 1) << kind;
  }
  items.select('W', 2, false);
  items.select('R', 7, false);
  EXPECT_EQ(items.selected_count('W'), 2);
  EXPECT_EQ(items.waypoint(2).selected, 0);
  EXPECT_EQ(items.waypoint(3).selected, 1);
  EXPECT_EQ(items.selected_count('R'), 0);
  EXPECT_EQ(items.route(7).points[0].selected, 0);
  items.select_all('W', false);
  EXPECT_EQ(items.selected_count('W'), 0);
  items.select_all('?', true);  // no such kind
  EXPECT_EQ(items.find_waypoint("b"), 2);
}

TEST_F(ItemStoreTest, AnItemThatIsNoLongerInUseDoesNotCountAsSelected) {
  push_track_point();
  items.select_all('T', true);
  items.set_in_use('T', 1, false);
  EXPECT_EQ(items.selected_count('T'), 0);
}

TEST_F(ItemStoreTest, AChangedWaypointKeepsItsNumberAndIsTheSameInItsRoutes) {
  push_header(3, "HOME");
  push_route_point("A");
  push_route_point("B");
  items.set_route_link(7, {}, "LINK");
  push_waypoint("C");
  ItemRecord changed = items.waypoint(2);
  changed.ident = "B|NEW";
  changed.position = {-5, -6};
  changed.number = 99;
  const std::uint64_t before = items.revision();
  items.replace('W', 2, changed);
  EXPECT_NE(items.revision(), before);
  EXPECT_EQ(items.waypoint(2).ident, "B-NEW");
  EXPECT_EQ(items.waypoint(2).number, 2u);
  EXPECT_EQ(items.waypoint(2).latitude_hemisphere, 'S');
  const Route& route = items.route(3);
  EXPECT_EQ(route.points[0].ident, "A");
  EXPECT_EQ(route.points[1].ident, "B-NEW");
  EXPECT_EQ(route.points[1].position.longitude, -6);
  EXPECT_EQ(route.points[1].route_number, 3u);
  EXPECT_EQ(route.points[1].route_link_ident, "LINK");
  EXPECT_EQ(items.find_waypoint("b-new"), 2);
  EXPECT_EQ(items.find_waypoint("B"), 0);
}

TEST_F(ItemStoreTest, ARoutePointOfTheSameNameElsewhereStaysWhereItIsAndEveryPointKeepsItsTime) {
  settings.HandleReadDups = Duplicates::Ignore;
  items.set_input_time_offset(7200);
  push_header(1, "ONE");
  items.start_item();
  items.CurrentItem.ident = "WP1";
  items.CurrentItem.position = {10, 1};
  items.CurrentItem.time = {100000};
  ASSERT_EQ(items.push_route(true), 0);
  push_header(2, "TWO");
  items.start_item();
  items.CurrentItem.ident = "WP1";
  items.CurrentItem.position = {50, 1};
  ASSERT_EQ(items.push_route(true), 0);
  items.link_route_points();
  ItemRecord changed = items.waypoint(1);
  changed.comment = "new";
  items.replace('W', 1, changed);
  EXPECT_EQ(items.route(1).points[0].comment, "new");
  EXPECT_EQ(items.route(1).points[0].time.seconds, 100000u);
  EXPECT_EQ(items.route(2).points[0].position.latitude, 50);
}

TEST_F(ItemStoreTest, EveryWayOfChangingItemsIsAnotherRevision) {
  const auto changes = [this](auto action) {
    const std::uint64_t before = items.revision();
    action();
    return items.revision() != before;
  };
  EXPECT_TRUE(changes([this] { push_waypoint("A"); }));
  EXPECT_TRUE(changes([this] { items.set_in_use('W', 1, false); }));
  EXPECT_TRUE(changes([this] { items.sort_waypoints(); }));
  EXPECT_TRUE(changes([this] { items.clear_routes(); }));
  EXPECT_TRUE(changes([this] { items.clear_waypoints(); }));
  EXPECT_TRUE(changes([this] { push_track_point(); }));
  EXPECT_TRUE(changes([this] { items.clear_all(); }));
  EXPECT_FALSE(changes([this] { items.select_all('W', true); }));
}

TEST_F(ItemStoreTest, DuplicatesGoOutOfUseAndTheFirstStays) {
  push_waypoint("A", 1, 2);
  push_waypoint("a", 1, 2);
  push_waypoint("A", 3, 4);
  push_waypoint("B", 1, 2);
  items.set_in_use('W', 1, false);
  EXPECT_EQ(items.remove_duplicates(true), 0) << "a deleted waypoint is nobody's original";
  items.set_in_use('W', 1, true);
  EXPECT_EQ(items.remove_duplicates(true), 1);
  EXPECT_EQ(items.waypoint(2).in_use, 0);
  EXPECT_EQ(items.remove_duplicates(false), 1);
  EXPECT_EQ(items.waypoint(3).in_use, 0);
  EXPECT_EQ(items.waypoint(4).in_use, 1);
}

}  // namespace
}  // namespace store
