#include "lowrance/records.h"

#include <gtest/gtest.h>

#include <limits>

namespace lowrance {
namespace {

using base::Bytes;

TEST(Mercator, KnownPlaces) {
  EXPECT_EQ(latitude_to_y(0), 0);
  EXPECT_EQ(latitude_to_y(-33.5), -3948576);
  EXPECT_EQ(latitude_to_y(47.2057612), 5955688);
  EXPECT_EQ(latitude_to_y(60), 8371575);
  EXPECT_EQ(longitude_to_x(151.25), 16780621);
  EXPECT_EQ(longitude_to_x(8.090536), 897614);
  EXPECT_EQ(longitude_to_x(-149.9), -16630844);
  EXPECT_EQ(longitude_to_x(180), 19970326);
  EXPECT_NEAR(y_to_latitude(4976902), 40.87311917, 5e-9);
  EXPECT_NEAR(x_to_longitude(-8077507), -72.80558329, 5e-9);
}

TEST(Mercator, WhatAUnitSentGoesBackAsItWas) {
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
}

// Slot 258, active, symbol 5, y 5955688, x -1, "HOME", 1992-01-01 00:01:40.
const Bytes kWaypoint{0x02, 0x01, 1, 5, 0x68, 0xE0, 0x5A, 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 'H', 'O', 'M',
                      'E',  0,    0, 0, 0,    0,    0,    0,    0,    0,    100,  0,    0,   0};

Bytes answer_of(const Bytes& fields) { return base::ByteWriter().u8(0).bytes(fields).result(); }

Bytes without_last(Bytes bytes) {
  bytes.pop_back();
  return bytes;
}

TEST(Records, Waypoint) {
  const std::optional<WaypointRecord> waypoint = read_waypoint(answer_of(kWaypoint));
  ASSERT_TRUE(waypoint);
  EXPECT_EQ(waypoint->number, 258);
  EXPECT_EQ(waypoint->status, 1);
  EXPECT_EQ(waypoint->symbol, 5);
  EXPECT_EQ(waypoint->place, (GridPoint{5955688, -1}));
  EXPECT_EQ(waypoint->name, "HOME");
  EXPECT_EQ(waypoint->time, 100u);
  EXPECT_EQ(write_waypoint(*waypoint), kWaypoint);
  EXPECT_FALSE(read_waypoint(without_last(answer_of(kWaypoint))));
}

TEST(Records, NamesEndAtAZeroOrWithTheFieldAndLoseTheirPadding) {
  const auto name_of = [](std::string_view field) {
    Bytes answer = answer_of(kWaypoint);
    std::copy(field.begin(), field.end(), answer.begin() + 13);
    return read_waypoint(answer)->name;
  };
  EXPECT_EQ(name_of("THIRTEEN LONG"), "THIRTEEN LONG");
  EXPECT_EQ(name_of("BLANKS       "), "BLANKS");
  EXPECT_EQ(name_of({"ZERO\0GARBAGE.", 13}), "ZERO");
  WaypointRecord waypoint;
  waypoint.name = "FOURTEEN BYTES";
  const Bytes record = write_waypoint(waypoint);
  EXPECT_EQ(record.size(), 29u);
  EXPECT_EQ(std::string(record.begin() + 12, record.begin() + 25), "FOURTEEN BYTE");
}

TEST(Records, Route) {
  const Bytes record{3, 0, 2, 'N', 'O', 'R', 'T', 'H', 0, 0, 0, 0, 0, 0, 0, 0, 7, 0, 0x02, 0x01};
  const std::optional<RouteRecord> route = read_route(answer_of(record));
  ASSERT_TRUE(route);
  EXPECT_EQ(route->number, 3);
  EXPECT_EQ(route->count, 2);
  EXPECT_EQ(route->name, "NORTH");
  EXPECT_EQ(route->waypoints, (std::vector<std::uint16_t>{7, 258}));
  EXPECT_EQ(write_route(*route), record);
  EXPECT_FALSE(read_route(without_last(answer_of(record))));
  Bytes too_many = answer_of(record);
  too_many[3] = 201;
  ASSERT_TRUE(read_route(too_many));
  EXPECT_TRUE(read_route(too_many)->waypoints.empty());
}

TEST(Records, Icon) {
  const Bytes record{1, 0, 0xFE, 0xFF, 0xFF, 0xFF, 3, 0, 0, 0, 27};
  const std::optional<IconRecord> icon = read_icon(answer_of(record));
  ASSERT_TRUE(icon);
  EXPECT_EQ(icon->number, 1);
  EXPECT_EQ(icon->place, (GridPoint{-2, 3}));
  EXPECT_EQ(icon->symbol, 27);
  EXPECT_EQ(write_icon(*icon), record);
  EXPECT_FALSE(read_icon(without_last(answer_of(record))));
  EXPECT_EQ(read_icon_count(Bytes{0, 0x2C, 0x01, 9}), 300);
  EXPECT_FALSE(read_icon_count(Bytes{0, 1}));
}

TEST(Records, Trail) {
  const Bytes record{1, 4, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0x2B, 0x01};
  const std::optional<TrailOrigin> origin = read_trail_origin(answer_of(record));
  ASSERT_TRUE(origin);
  EXPECT_EQ(origin->trail, 1);
  EXPECT_EQ(origin->place, (GridPoint{4, -1}));
  EXPECT_EQ(origin->deltas, 299);
  EXPECT_EQ(write_trail_origin(*origin), record);
  EXPECT_FALSE(read_trail_origin(without_last(answer_of(record))));

  const Bytes block_bytes{1, 2, 0, 0xFF, 0xFF, 5, 0, 0, 0x80, 0xFF, 0x7F};
  const std::optional<DeltaBlock> block = read_delta_block(answer_of(block_bytes));
  ASSERT_TRUE(block);
  ASSERT_EQ(block->deltas.size(), 2u);
  EXPECT_EQ(block->deltas[0].dy, -1);
  EXPECT_EQ(block->deltas[0].dx, 5);
  EXPECT_EQ(block->deltas[1].dy, -32768);
  EXPECT_EQ(block->deltas[1].dx, 32767);
  EXPECT_EQ(write_delta_block(*block), block_bytes);
  EXPECT_FALSE(read_delta_block(without_last(answer_of(block_bytes))));
  EXPECT_FALSE(read_delta_block(Bytes{0, 1, 0xFF, 0xFF, 1, 2, 3, 4}));
}

TEST(Records, Times) {
  EXPECT_EQ(from_unit_time(0).seconds, 63158400u);
  EXPECT_EQ(from_unit_time(0xFFFFFFFF).seconds, 0u);
  EXPECT_EQ(to_unit_time({63158500}, 7200), 7300u);
  EXPECT_EQ(to_unit_time({63158500}, -7200), 0u);
  EXPECT_EQ(to_unit_time({0}, 7200), 0u);
  EXPECT_EQ(to_unit_time({63158399}, 7200), 0u);
  EXPECT_EQ(to_unit_time({0xFFFFFFFF}, 7200), 0xFFFFFFFFu - 63158400 + 7200);
}

}  // namespace
}  // namespace lowrance
