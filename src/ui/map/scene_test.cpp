#include "ui/map/scene.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/recording_front_end.h"
#include "tests/support/stepping_clock.h"

namespace ui::map {
namespace {

class SceneTest : public testing::Test {
 protected:
  SceneTest() {
    viewport.resize(800, 600);
    viewport.show({project({0, 0}).x, project({1, 0}).y, 1.0 / 360, project({0, 0}).y - project({1, 0}).y}, 0);
  }

  void add_waypoint(const std::string& ident, double latitude, double longitude) {
    start({latitude, longitude});
    items.CurrentItem.ident = ident;
    (void)items.push_waypoint(0);
  }
  void add_track_point(double latitude, double longitude) {
    start({latitude, longitude});
    (void)items.push_track();
  }
  void add_route(int number, const std::vector<geodesy::Position>& positions) {
    store::Route route;
    route.header = store::blank_item();
    route.header->comment = "TOUR";
    route.header->in_use = 1;
    for (const geodesy::Position& position : positions) {
      route.points.push_back(store::blank_item());
      route.points.back().position = position;
      route.points.back().ident = "STOP";
      route.points.back().in_use = 1;
    }
    items.replace_route(number, std::move(route));
  }
  [[nodiscard]] Pixel pixel(double latitude, double longitude) const {
    return viewport.to_pixel(project({latitude, longitude}));
  }
  [[nodiscard]] std::optional<ItemRef> hit(double latitude, double longitude, const Layers& layers = {}) const {
    return Scene(session).item_at(viewport, layers, pixel(latitude, longitude), 9);
  }

  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  session::Session session{clock, front_end, {}};
  store::ItemStore& items = session.items;
  Viewport viewport;

 private:
  void start(const geodesy::Position& position) {
    items.start_item();
    items.CurrentItem.position = position;
  }
};

TEST_F(SceneTest, ThePointerFindsTheNearestItemAndWaypointsBeforeTheTracksBelow) {
  add_track_point(0.5, 0.5);
  add_waypoint("FAR", 0.508, 0.5);
  add_waypoint("NEAR", 0.501, 0.5);
  EXPECT_EQ(hit(0.5, 0.5), (ItemRef{'W', 2}));
  EXPECT_EQ(hit(0.5, 0.5, {.waypoints = false}), (ItemRef{'T', 1}));
  EXPECT_EQ(hit(0.9, 0.9), std::nullopt);
}

TEST_F(SceneTest, DeletedItemsAreNotThere) {
  add_waypoint("GONE", 0.5, 0.5);
  add_route(3, {{0.2, 0.2}, {0.3, 0.3}});
  EXPECT_EQ(hit(0.3, 0.3), (ItemRef{'R', 3, 2}));
  items.set_in_use('W', 1, false);
  items.set_in_use('R', 3, false);
  EXPECT_TRUE(Scene(session).empty());
}

TEST_F(SceneTest, WhatHasNoPlaceOnEarthIsLeftOut) {
  add_waypoint("NOWHERE", std::numeric_limits<double>::quiet_NaN(), 5);
  EXPECT_TRUE(Scene(session).empty());
}

TEST_F(SceneTest, SegmentsHaveTheColourOfTheirLogAndBeginBehindADeletedPoint) {
  items.start_track_log("LOG", "Blue");
  add_track_point(0.1, 0.1);
  add_track_point(0.1, 0.2);
  items.start_segment();
  add_track_point(0.1, 0.3);
  add_track_point(0.1, 0.4);
  add_track_point(0.1, 0.5);
  items.set_in_use('T', 3, false);
  const Scene scene(session);
  ASSERT_EQ(scene.tracks().size(), 2u);
  EXPECT_EQ(scene.tracks()[1].end - scene.tracks()[1].first, 2u);
  EXPECT_EQ(store::kColourNames.at(scene.tracks()[1].colour), "Blue");
}

TEST_F(SceneTest, ARectangleTakesRoutesOnlyWhole) {
  add_waypoint("IN", 0.5, 0.5);
  add_waypoint("OUT", 0.9, 0.5);
  add_route(0, {{0.45, 0.45}, {0.55, 0.55}});
  add_route(1, {{0.5, 0.5}, {0.95, 0.95}});
  // The corners may be dragged in any order.
  const auto found = Scene(session).items_within(viewport, {}, pixel(0.6, 0.6), pixel(0.4, 0.4));
  EXPECT_EQ(found, (std::vector{ItemRef{'W', 1}, ItemRef{'R', 0}}));
}

TEST_F(SceneTest, ARouteIsAllOfItsPoints) {
  add_route(2, {{0.2, 0.2}, {0.3, 0.3}});
  const Scene scene(session);
  EXPECT_EQ(scene.places_of({{'R', 2}}).size(), 2u);
  EXPECT_EQ(scene.places_of({{'R', 2, 1}}).size(), 1u);
  EXPECT_EQ(item_title(session, {'R', 2, 1}), "Route 2 TOUR, point 1: STOP");
}

TEST_F(SceneTest, SelectionIsReadAgainWithoutTheRest) {
  add_waypoint("A", 0.5, 0.5);
  items.select_all('W', false);
  Scene scene(session);
  EXPECT_FALSE(scene.marks()[0].selected);
  items.select('W', 1, true);
  scene.read_selection(items);
  EXPECT_TRUE(scene.marks()[0].selected);
}

}  // namespace
}  // namespace ui::map
