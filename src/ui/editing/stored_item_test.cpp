#include "ui/editing/stored_item.h"

#include <gtest/gtest.h>

#include "tests/support/recording_front_end.h"
#include "tests/support/stepping_clock.h"
#include "ui/editing/route_form.h"

namespace ui {
namespace {

class StoredItemTest : public testing::Test {
 protected:
  // Route 3 of A, B and C, whose waypoints are 1 to 3.
  StoredItemTest() {
    items.start_route(3, "3", "Bay");
    EXPECT_EQ(items.push_route(true), 0);
    for (const char* ident : {"A", "B", "C"}) {
      items.start_item();
      items.CurrentItem.ident = ident;
      items.CurrentItem.position = {10, static_cast<double>(ident[0])};
      EXPECT_EQ(items.push_route(true), 0);
      EXPECT_TRUE(items.set_route_link(1, {}, std::string("Road ") + ident));
    }
  }
  [[nodiscard]] std::string order(int number) const {
    std::string idents;
    for (const store::ItemRecord& point : items.route(number).points) {
      idents += point.ident.view();
      if (point.has_route_link != 0) idents += '+';
    }
    return idents;
  }

  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  session::Session session{clock, front_end, {}};
  store::ItemStore& items = session.items;
};

TEST_F(StoredItemTest, ARoutePointIsEditedAsItsWaypointAndFollowsIt) {
  EditedItem edited = edited_item(items, {'R', 3, 2}).value();
  EXPECT_EQ(edited.place, (ItemRef{'W', 2}));
  edited.item.ident = "Bravo";
  put_back(items, edited);
  EXPECT_EQ(items.waypoint(2).ident, "Bravo");
  EXPECT_EQ(items.route(3).points[1].ident, "Bravo");
  EXPECT_EQ(items.route(3).points[1].route_link_ident, "Road B");
}

TEST_F(StoredItemTest, ARoutePointThatForgotItsWaypointsNumberFollowsToo) {
  store::Route route = items.route(3);
  route.points[1].number = 4711;
  items.replace_route(3, route);
  EditedItem edited = edited_item(items, {'R', 3, 2}).value();
  edited.item.comment = "Fuel";
  put_back(items, edited);
  EXPECT_EQ(items.route(3).points[1].comment, "Fuel");
}

TEST_F(StoredItemTest, ARoutePointWithoutAWaypointIsEditedItself) {
  store::ItemRecord moved = items.waypoint(2);
  store::Route route = items.route(3);
  moved.ident = "Elsewhere";
  items.replace('W', 2, moved);
  items.replace_route(3, route);
  EditedItem edited = edited_item(items, {'R', 3, 2}).value();
  EXPECT_EQ(edited.place, (ItemRef{'R', 3, 2}));
  edited.item.comment = "Fuel";
  put_back(items, edited);
  EXPECT_EQ(items.route(3).points[1].comment, "Fuel");
  EXPECT_EQ(items.waypoint(2).ident, "Elsewhere");
}

TEST_F(StoredItemTest, WhatIsNotThereIsNotEdited) {
  for (const ItemRef& place : {ItemRef{'W', 0}, ItemRef{'W', 4}, ItemRef{'T', 1}, ItemRef{'R', 4}, ItemRef{'R', 3, 4},
                               ItemRef{'R', 100}, ItemRef{'X', 1}})
    EXPECT_FALSE(edited_item(items, place)) << place.kind << place.index;
}

TEST_F(StoredItemTest, RoutePointsMoveAndLinksToOtherPointsGo) {
  RouteForm form(session, 3);
  EXPECT_FALSE(form.put_back());
  EXPECT_FALSE(form.move_up(0));
  EXPECT_FALSE(form.move_down(2));
  EXPECT_TRUE(form.move_down(1));
  EXPECT_TRUE(form.add_waypoint(1));
  EXPECT_TRUE(form.put_back());
  EXPECT_EQ(order(3), "ACBA");
  RouteForm shorter(session, 3);
  EXPECT_TRUE(shorter.remove(3));
  EXPECT_TRUE(shorter.put_back());
  EXPECT_EQ(order(3), "ACB");
}

TEST_F(StoredItemTest, LinksBetweenNeighboursStay) {
  RouteForm form(session, 3);
  EXPECT_TRUE(form.remove(0));
  EXPECT_TRUE(form.put_back());
  EXPECT_EQ(order(3), "B+C+");
}

TEST_F(StoredItemTest, ARouteMovesToAFreeNumberOnly) {
  items.start_route(5, "5", "Other");
  ASSERT_EQ(items.push_route(true), 0);
  RouteForm form(session, 3);
  form.header().set_text(form.header().find("number"), "5");
  EXPECT_EQ(form.problems()[form.header().find("number")], "There is a route 5 already");
  form.header().set_text(form.header().find("number"), "6");
  EXPECT_TRUE(form.put_back());
  EXPECT_FALSE(items.route(3).header);
  EXPECT_EQ(items.route(6).header->comment, "Bay");
  EXPECT_EQ(items.route(6).header->ident, "6");
  EXPECT_EQ(order(6), "A+B+C+");
}

TEST_F(StoredItemTest, AFullRouteTakesNoMorePoints) {
  RouteForm form(session, 3);
  for (int i = 3; i < store::kRoutePointCapacity; ++i) EXPECT_TRUE(form.add_waypoint(1));
  EXPECT_FALSE(form.add_waypoint(1));
}

TEST_F(StoredItemTest, ANewItemHasTheDefaultSymbolOfTheChosenSet) {
  session.settings.IconSelector = store::IconSet::G12xl;
  session.settings.default_G12_icon = 3;
  EXPECT_EQ(new_item(session, 'W').symbol, session.settings.G12XL_II_Symbol_Mapping[3]);
  session.settings.IconSelector = store::IconSet::Giii;
  session.settings.default_GPSIII_icon = 8287;
  EXPECT_EQ(new_item(session, 'W').symbol, 8287);
  EXPECT_EQ(new_item(session, 'W').symbol_mode, 3);
}

TEST_F(StoredItemTest, ANewWaypointThatTheOptionsWouldDropOrPutInAnothersPlaceIsAProblemOfItsName) {
  store::ItemRecord item = new_item(session, 'W');
  item.ident = "A";
  item.position = {1, 2};
  ASSERT_TRUE(add_item(items, item));
  item.ident = "a";
  for (const auto duplicates : {store::Duplicates::Ignore, store::Duplicates::Replace}) {
    session.settings.HandleReadDups = duplicates;
    ItemForm form(session, item, true);
    form.set_text(form.find("position"), "N40 W005");
    EXPECT_NE(form.duplicate_problem(items), "");
    form.set_text(form.find("ident"), "SOMEWHERE ELSE");
    EXPECT_EQ(form.duplicate_problem(items), "");
  }
  session.settings.HandleReadDups = store::Duplicates::Merge;
  EXPECT_EQ(ItemForm(session, item, true).duplicate_problem(items), "");
}

TEST_F(StoredItemTest, ANewItemFindsNoRoomInAFullStore) {
  const store::ItemRecord item = new_item(session, 'P');
  for (int i = 0; i < store::kProximityCapacity; ++i) EXPECT_TRUE(add_item(items, item));
  EXPECT_FALSE(add_item(items, item));
}

}  // namespace
}  // namespace ui
