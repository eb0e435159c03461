#include "ui/map/lines.h"

#include <gtest/gtest.h>

namespace ui::map {
namespace {

class LinesTest : public testing::Test {
 protected:
  LinesTest() {
    viewport.resize(360, 300);
    viewport.show({0.25, 0.4, 0.5, 0.2}, 0);  // 90 W to 90 E, two pixels a degree
  }
  [[nodiscard]] std::vector<Polyline> lines(const std::vector<geodesy::Position>& positions) const {
    std::vector<Vertex> path;
    for (const geodesy::Position& position : positions) path.push_back({project(position), {}, false});
    return visible_lines(path, viewport, 1);
  }
  Viewport viewport;
};

TEST_F(LinesTest, PointsOnOnePixelAreLeftOutButNeverTheEnds) {
  std::vector<geodesy::Position> positions;
  for (int i = 0; i <= 1003; ++i) positions.push_back({0, i * 0.01});
  const auto drawn = lines(positions);
  ASSERT_EQ(drawn.size(), 1u);
  EXPECT_LT(drawn[0].size(), 30u);
  EXPECT_EQ(drawn[0].front(), viewport.to_pixel(project(positions.front())));
  EXPECT_EQ(drawn[0].back(), viewport.to_pixel(project(positions.back())));
}

TEST_F(LinesTest, WhatIsOutOfSightIsCutOut) {
  const auto drawn = lines({{0, 0}, {0, 10}, {80, 10}, {80, 20}, {80, 30}, {0, 30}, {0, 40}});
  ASSERT_EQ(drawn.size(), 2u);
  EXPECT_EQ(drawn[0].size(), 3u) << "as far as the first point out of sight";
  EXPECT_EQ(drawn[1].size(), 3u);
  EXPECT_TRUE(lines({{80, 0}, {80, 50}}).empty());
}

TEST_F(LinesTest, ALineRoundTheFarSideLeavesHereAndComesBackThere) {
  viewport.show(world_bounds(), 0);
  const auto drawn = lines({{0, 170}, {0, -170}});
  ASSERT_EQ(drawn.size(), 2u);
  for (const Polyline& line : drawn) EXPECT_NEAR(line[1].x - line[0].x, viewport.scale() * 20 / 360, 1e-6);
}

TEST_F(LinesTest, AcrossTheDateLineInTheMiddleItIsOneLine) {
  viewport.show({0.95, 0.4, 0.1, 0.1}, 0);
  EXPECT_EQ(lines({{0, 179}, {0, -179}, {0, -178}}).size(), 1u);
}

TEST_F(LinesTest, ASinglePointIsALineOfOne) {
  EXPECT_EQ(lines({{0, 0}}).size(), 1u);
  EXPECT_TRUE(lines({}).empty());
}

TEST(LabelSpace, RefusesWhatOverlapsButNotWhatTouches) {
  LabelSpace space;
  EXPECT_TRUE(space.take(10, 10, 50, 12));
  EXPECT_FALSE(space.take(55, 15, 50, 12));
  EXPECT_TRUE(space.take(60, 10, 50, 12));
}

}  // namespace
}  // namespace ui::map
