#include "ui/lists/item_list.h"

#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/recording_front_end.h"
#include "tests/support/stepping_clock.h"
#include "ui/lists/route_list.h"

namespace ui::lists {
namespace {

class ItemListTest : public testing::Test {
 protected:
  void add(const std::string& ident, float altitude = store::kNotKnown, double latitude = 50) {
    session.items.start_item();
    session.items.CurrentItem.ident = ident;
    session.items.CurrentItem.altitude = altitude;
    session.items.CurrentItem.position = {latitude, 7};
    (void)session.items.push_waypoint(0);
  }
  void add_track_point(double latitude) {
    session.items.start_item();
    session.items.CurrentItem.position = {latitude, 7};
    (void)session.items.push_track();
  }
  static int column_of(const ItemList& list, Field field) {
    int column = 0;
    while (list.columns()[static_cast<std::size_t>(column)].field != field) ++column;
    return column;
  }
  static std::vector<int> order(const ItemList& list) {
    std::vector<int> items;
    for (int row = 0; row < list.row_count(); ++row) items.push_back(list.item_of(row));
    return items;
  }

  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  session::Session session{clock, front_end, {}};
};

TEST_F(ItemListTest, NumbersSortAsNumbersAndUnknownOnesAreLastEitherWay) {
  add("a", 100);
  add("b");
  add("c", 9);
  add("d");
  add("e", 9);
  ItemList list(session, 'W');
  const int altitude = column_of(list, Field::Altitude);
  list.sort(altitude);
  EXPECT_EQ(order(list), (std::vector{3, 5, 1, 2, 4}));
  list.sort(altitude);
  EXPECT_EQ(order(list), (std::vector{1, 3, 5, 2, 4})) << "equal ones keep their order";
  EXPECT_EQ(list.text(4, altitude), "");
}

TEST_F(ItemListTest, NamesSortWithoutRegardToCaseAndNewItemsFallIntoPlace) {
  add("beta");
  add("Alpha");
  ItemList list(session, 'W');
  list.sort(0);
  add("azure");
  list.rebuild();
  EXPECT_EQ(order(list), (std::vector{2, 3, 1}));
  EXPECT_EQ(list.row_of(3), 1);
  EXPECT_EQ(list.row_of(4), -1);
}

TEST_F(ItemListTest, DistancesAreOfTheReferenceAndInTheUnitThatTheTitleNames) {
  add("north", 0, 51);
  ItemList list(session, 'W');
  const int distance = column_of(list, Field::Distance), bearing = column_of(list, Field::Bearing);
  EXPECT_EQ(list.text(0, distance) + list.text(0, bearing), "") << "no reference";
  session.settings.RefRecord = store::ReferenceRecord{50, 7, {}};
  session.settings.DistValues = geodesy::DistanceUnit::NauticalMiles;
  list.rebuild();
  EXPECT_EQ(list.title(distance), "Dist. (nm)");
  EXPECT_EQ(list.text(0, distance), "60.007");
  EXPECT_EQ(list.text(0, bearing), "0.0");
}

TEST_F(ItemListTest, LegsOfTracksBeginAnewWithEachSegment) {
  session.settings.DistValues = geodesy::DistanceUnit::NauticalMiles;
  add_track_point(50);
  add_track_point(51);
  session.items.start_segment();
  add_track_point(52);
  session.items.start_track_log("LOG", "Red");
  add_track_point(53);
  const ItemList list(session, 'T');
  const int leg = column_of(list, Field::Leg), track = column_of(list, Field::Track);
  EXPECT_EQ(list.text(1, leg), "60.007");
  EXPECT_EQ(list.text(0, leg) + list.text(2, leg) + list.text(3, leg), "");
  EXPECT_EQ(list.text(1, track) + list.text(2, track) + list.text(3, track), "(segment)LOG");
}

TEST_F(ItemListTest, RowsWhoseItemsHaveGoneAreEmpty) {
  add("gone");
  const ItemList list(session, 'W');
  session.items.clear_waypoints();
  EXPECT_EQ(list.text(0, 0), "");
  EXPECT_FALSE(list.is_selected(0));
  EXPECT_FALSE(list.symbol(0));
}

TEST_F(ItemListTest, AHundredThousandItemsSortAtOnce) {
  for (int i = 0; i < store::kWaypointCapacity; ++i) add("W" + std::to_string(i), static_cast<float>(i * 7 % 1000));
  const auto start = std::chrono::steady_clock::now();
  ItemList list(session, 'W');
  for (const Field field : {Field::Name, Field::SymbolName, Field::Latitude}) list.sort(column_of(list, field));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  list.sort(column_of(list, Field::Altitude));
  EXPECT_EQ(list.text(0, 0), "W0");
  EXPECT_EQ(list.text(1, 0), "W1000");
}

TEST_F(ItemListTest, ARouteTellsItsLengthAndItsPointsTheirLegs) {
  session.settings.DistValues = geodesy::DistanceUnit::NauticalMiles;
  session.items.start_route(3, "3", "TOUR");
  (void)session.items.push_route(false);
  for (const double latitude : {50.0, 51.0, 53.0}) {
    session.items.start_item();
    session.items.CurrentItem.position = {latitude, 7};
    (void)session.items.push_route(true);
  }
  const RouteList list(session);
  ASSERT_EQ(list.routes(), std::vector({ItemRef{'R', 3, 0}}));
  EXPECT_EQ(list.text({'R', 3, 0}, RouteField::Name), "3  TOUR");
  EXPECT_EQ(list.text({'R', 3, 0}, RouteField::Leg), "180.022");
  EXPECT_EQ(list.text({'R', 3, 1}, RouteField::Leg), "");
  EXPECT_EQ(list.text({'R', 3, 3}, RouteField::Leg), "120.015");
  EXPECT_FALSE(list.has({'R', 3, 4}));
}

}  // namespace
}  // namespace ui::lists
