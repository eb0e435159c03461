#include "lowrance/records.h"

#include <gtest/gtest.h>

#include <limits>

#include "lowrance/trail_image.h"

namespace lowrance {
namespace {

using base::Bytes;

TEST(Mercator, KnownPlaces) {
  EXPECT_EQ(latitude_to_y(0), 0);
  EXPECT_EQ(latitude_to_y(-33.5), -3948576);
  EXPECT_EQ(latitude_to_y(47.2057612), 5955688);
  EXPECT_EQ(latitude_to_y(60), 8371575);
  EXPECT_EQ(longitude_to_x(151.25), 16780621);
  EXPECT_EQ(longitude_to_x(-149.9), -16630844);
  EXPECT_EQ(longitude_to_x(180), 19970326);
  EXPECT_NEAR(y_to_latitude(4976902), 40.87311917, 5e-9);
  EXPECT_NEAR(x_to_longitude(-8077507), -72.80558329, 5e-9);
}

TEST(Mercator, MetresAreCutUnlessTheyAreAlmostWholeSoThatWhatAUnitSentGoesBackAsItWas) {
  const auto x_of = [](double metres) { return longitude_to_x(metres / 110946.25761655909); };
  EXPECT_EQ(x_of(5.00001), 5);
  EXPECT_EQ(x_of(4.9999999), 5);
  EXPECT_EQ(x_of(4.9999), 4);
  EXPECT_EQ(x_of(-4.9999), -4);
  for (std::int32_t y = -25000000; y <= 25000000; y += 997) ASSERT_EQ(latitude_to_y(y_to_latitude(y)), y);
  for (std::int32_t x = -19970326; x <= 19970326; x += 991) ASSERT_EQ(longitude_to_x(x_to_longitude(x)), x);
}

TEST(Mercator, TheEdgesOfTheWorld) {
  using Limits = std::numeric_limits<std::int32_t>;
  EXPECT_EQ(latitude_to_y(90), Limits::max());
  EXPECT_EQ(latitude_to_y(-90), Limits::min());
  EXPECT_EQ(latitude_to_y(std::numeric_limits<double>::quiet_NaN()), 0);
  EXPECT_EQ(longitude_to_x(1e300), Limits::max());
  EXPECT_TRUE(from_grid({Limits::max(), 19970326}));
  EXPECT_FALSE(from_grid({0, 19970327}));
  EXPECT_FALSE(from_grid({0, Limits::min()}));
  EXPECT_TRUE(is_on_grid({-89.99, -180}));
  EXPECT_FALSE(is_on_grid({89.995, 0}) || is_on_grid({0, 180.1}));
}

// How many bytes of it a record takes.
template <typename Read>
std::size_t shortest(Read read, Bytes answer) {
  while (read(answer)) answer.pop_back();
  return answer.size() + 1;
}

TEST(Records, ThatAreCutShortAreNone) {
  EXPECT_EQ(shortest(read_waypoint, Bytes(40)), 30U);
  EXPECT_EQ(shortest(read_icon, Bytes(40)), 12U);
  EXPECT_EQ(shortest(read_icon_count, Bytes(40)), 3U);
  EXPECT_EQ(shortest(read_trail_origin, Bytes(40)), 12U);
  EXPECT_EQ(shortest(read_trail_area, Bytes(40, 0x10)), 8U);
  Bytes two_deltas(40), route(500);
  two_deltas[2] = 2;
  EXPECT_EQ(shortest(read_delta_block, two_deltas), 12U);
  two_deltas[3] = 1;
  EXPECT_FALSE(read_delta_block(two_deltas));
  route[3] = 200;
  EXPECT_EQ(shortest(read_route, route), 417U);
  EXPECT_EQ(read_route(route)->waypoints.size(), 200U);
  route[3] = 201;
  EXPECT_TRUE(read_route(route)->waypoints.empty());
}

TEST(Records, NamesEndAtAZeroOrWithTheFieldAndLoseTheirPadding) {
  const auto name_of = [](std::string_view field) {
    Bytes answer(30);
    std::copy(field.begin(), field.end(), answer.begin() + 13);
    return read_waypoint(answer)->name;
  };
  EXPECT_EQ(name_of("THIRTEEN LONG"), "THIRTEEN LONG");
  EXPECT_EQ(name_of("BLANKS       "), "BLANKS");
  EXPECT_EQ(name_of({"ZERO\0GARBAGE.", 13}), "ZERO");
}

TEST(Records, Times) {
  EXPECT_EQ(from_unit_time(0).seconds, 63158400U);
  EXPECT_EQ(from_unit_time(0xFFFFFFFF).seconds, 0U);
  EXPECT_EQ(to_unit_time({63158500}, 7200), 7300U);
  EXPECT_EQ(to_unit_time({63158500}, -7200), 0U);
  EXPECT_EQ(to_unit_time({0}, 7200), 0U);
  EXPECT_EQ(to_unit_time({63158399}, 7200), 0U);
  EXPECT_EQ(to_unit_time({0xFFFFFFFF}, 7200), 0xFFFFFFFFU - 63158400 + 7200);
}

}  // namespace
}  // namespace lowrance
