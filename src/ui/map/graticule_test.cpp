#include "ui/map/graticule.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace ui::map {
namespace {

using geodesy::Notation;

// Labels of the lines of a part of the earth, 800 pixels wide, meridians first.
std::vector<std::string> labels(geodesy::Position from, geodesy::Position to, Notation notation) {
  Viewport viewport;
  viewport.resize(800, 800);
  viewport.show(*bounds_of(std::vector{project(from), project(to)}), 0);
  std::vector<std::string> texts;
  for (const GraticuleLine& line : graticule(viewport, notation, 100)) texts.push_back(line.label);
  return texts;
}

bool has(const std::vector<std::string>& texts, const std::string& text) {
  return std::ranges::find(texts, text) != texts.end();
}

TEST(Graticule, LinesStandAtRoundDegreesOfTheNotation) {
  const auto minutes = labels({51, 7}, {51.3, 7.5}, Notation::Dmm);
  EXPECT_TRUE(has(minutes, "E007 05")) << testing::PrintToString(minutes);
  EXPECT_TRUE(has(minutes, "N51"));
  const auto decimals = labels({51, 7}, {51.3, 7.5}, Notation::Ddd);
  EXPECT_TRUE(has(decimals, "E007.1")) << testing::PrintToString(decimals);
  EXPECT_TRUE(has(decimals, "N51.2"));
  const auto seconds = labels({-0.005, -0.01}, {0.005, 0.01}, Notation::Dms);
  EXPECT_TRUE(has(seconds, "W000 00 20")) << testing::PrintToString(seconds);
  EXPECT_TRUE(has(labels({51, 7}, {51.3, 7.5}, Notation::Utm), "E007 05"));
}

TEST(Graticule, CountsOnOverTheDateLine) {
  const auto texts = labels({-18, 178}, {-16, -178}, Notation::Dmm);
  EXPECT_TRUE(has(texts, "E179"));
  EXPECT_TRUE(has(texts, "W180") || has(texts, "E180")) << testing::PrintToString(texts);
  EXPECT_TRUE(has(texts, "W179"));
}

TEST(Graticule, HasNoMeridianTwiceOnAMapOfTheWorld) {
  Viewport viewport;
  viewport.resize(2000, 500);
  viewport.show(world_bounds(), 0);
  auto lines = graticule(viewport, Notation::Dmm, 10);
  std::vector<std::string> meridians;
  for (const GraticuleLine& line : lines)
    if (line.is_meridian) meridians.push_back(line.label);
  std::ranges::sort(meridians);
  EXPECT_EQ(std::ranges::adjacent_find(meridians), meridians.end()) << testing::PrintToString(meridians);
}

TEST(ScaleBar, IsTheLongestRoundLengthThatFits) {
  Viewport viewport;
  viewport.resize(800, 600);
  for (double width = 1e-6; width < 1; width *= 1.7) {
    viewport.show({0.5, 0.5, width, 0}, 0);
    const ScaleBar bar = scale_bar(viewport, geodesy::DistanceUnit::Kilometres, 140);
    EXPECT_LE(bar.pixels, 140 * (1 + 1e-9)) << bar.label;
    EXPECT_GT(bar.pixels, 140 / 2.51) << bar.label;
  }
  // 10 m a pixel at the equator.
  viewport.show({0.5, 0.5, 8000 / 40008182.4, 0}, 0);
  EXPECT_EQ(scale_bar(viewport, geodesy::DistanceUnit::Kilometres, 140).label, "1 km");
  EXPECT_EQ(scale_bar(viewport, geodesy::DistanceUnit::StatuteMiles, 140).label, "0.5 sm");
  EXPECT_EQ(scale_bar(viewport, geodesy::DistanceUnit::Metres, 201).label, "2000 m");
}

TEST(RoundSteps, AreThoseThatPeopleCountIn) {
  EXPECT_DOUBLE_EQ(round_step(0.03), 0.05);
  EXPECT_DOUBLE_EQ(round_step(50), 50);
  EXPECT_DOUBLE_EQ(round_step(51), 100);
  EXPECT_DOUBLE_EQ(round_time_step(61), 120);
  EXPECT_DOUBLE_EQ(round_time_step(100000), 2 * 86400);
  EXPECT_EQ(clock_text(3661), "1:01:01");
}

}  // namespace
}  // namespace ui::map
