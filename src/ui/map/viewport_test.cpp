#include "ui/map/viewport.h"

#include <gtest/gtest.h>

#include <limits>

namespace ui::map {
namespace {

TEST(Projection, ComesBackToThePosition) {
  for (const geodesy::Position position : {geodesy::Position{0, 0}, {51.5, 7.25}, {-88.9, -179.999}, {88.9, 179.999}}) {
    const geodesy::Position back = unproject(project(position));
    EXPECT_NEAR(back.latitude, position.latitude, 1e-9);
    EXPECT_NEAR(back.longitude, position.longitude, 1e-9);
  }
  EXPECT_EQ(project({10, 180}), project({10, -180})) << "one meridian";
  EXPECT_EQ(project({90, 0}), project({89, 0})) << "the pole is drawn at the edge";
}

TEST(Bounds, GoOverTheDateLineWhereThatIsShorter) {
  const std::vector<Point> places{project({-17, 178}), project({-18, -179}), project({-16, 179.5})};
  const Bounds bounds = bounds_of(places).value();
  EXPECT_NEAR(bounds.left, project({0, 178}).x, 1e-12);
  EXPECT_NEAR(bounds.width, 3.0 / 360, 1e-12);
  EXPECT_FALSE(bounds_of({}));
}

class ViewportTest : public testing::Test {
 protected:
  ViewportTest() { viewport.resize(800, 600); }
  Viewport viewport;
};

TEST_F(ViewportTest, ShowsBothSidesOfTheDateLineTightly) {
  const std::vector<Point> places{project({-17, 178}), project({-18, -179})};
  viewport.show(*bounds_of(places), 50);
  EXPECT_NEAR(viewport.to_pixel(places[0]).x, 50, 1e-6);
  EXPECT_NEAR(viewport.to_pixel(places[1]).x, 750, 1e-6);
  const geodesy::Position east = unproject(viewport.to_place(viewport.to_pixel(places[1])));
  EXPECT_NEAR(east.longitude, -179, 1e-9);
}

TEST_F(ViewportTest, WhatIsUnderThePointerStaysWhileZooming) {
  viewport.show(*bounds_of(std::vector{project({51, 7}), project({52, 8})}), 0);
  const Pixel pointer{123, 456};
  const Point before = viewport.to_place(pointer);
  const double scale = viewport.scale();
  viewport.zoom(3, pointer);
  EXPECT_DOUBLE_EQ(viewport.scale(), 3 * scale);
  EXPECT_NEAR(viewport.to_place(pointer).x, before.x, 1e-12);
  EXPECT_NEAR(viewport.to_place(pointer).y, before.y, 1e-12);
}

TEST_F(ViewportTest, NeitherPansBeyondThePolesNorZoomsWithoutEnd) {
  viewport.pan(0, 1e9);
  EXPECT_NEAR(unproject(viewport.centre()).latitude, 89, 1e-6);
  for (int i = 0; i < 200; ++i) viewport.zoom(2, {0, 0});
  EXPECT_DOUBLE_EQ(viewport.scale(), Viewport::kClosest);
  for (int i = 0; i < 200; ++i) viewport.zoom(0.5, {0, 0});
  EXPECT_GT(viewport.scale(), 100);
}

TEST_F(ViewportTest, OnePlaceIsShownNoCloserThanAsked) {
  viewport.show(*bounds_of(std::vector{project({51, 7})}), 50, 1e6);
  EXPECT_DOUBLE_EQ(viewport.scale(), 1e6);
  EXPECT_NEAR(viewport.to_pixel(project({51, 7})).x, 400, 1e-6);
}

TEST_F(ViewportTest, APictureOfAnotherSizeShowsNoLess) {
  viewport.show(world_bounds(), 0);
  const Viewport small = viewport.fitted_to(300, 300);
  EXPECT_GE(small.to_pixel(viewport.to_place({0, 0})).x, -1e-9);
  EXPECT_GE(small.to_pixel(viewport.to_place({0, 0})).y, -1e-9);
}

TEST_F(ViewportTest, MetresShrinkTowardsThePoles) {
  EXPECT_NEAR(viewport.metres_per_pixel(project({60, 0})) / viewport.metres_per_pixel(project({0, 0})), 0.5, 1e-9);
}

}  // namespace
}  // namespace ui::map
