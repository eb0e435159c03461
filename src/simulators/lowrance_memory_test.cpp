#include "simulators/lowrance_memory.h"

#include <gtest/gtest.h>

#include "simulators/lowrance_screen.h"

namespace simulators {
namespace {

using base::Bytes;

const LowranceUnit& unit(std::string_view name) { return *find_lowrance_unit(name); }

Bytes part(const Bytes& bytes, std::size_t at, std::size_t size) {
  const auto from = bytes.begin() + static_cast<std::ptrdiff_t>(at);
  return Bytes(from, from + static_cast<std::ptrdiff_t>(size));
}

TEST(LowranceUnits, AreFoundInAnyCaseAndWrongOptionsAreNamed) {
  EXPECT_EQ(unit("globalmap 100").product_id, 14);
  EXPECT_EQ(find_lowrance_unit("GlobalMap"), nullptr);
  EXPECT_EQ(lowrance_options_problem({}), "");
  EXPECT_EQ(lowrance_options_problem({.unit = "GPS 12", .faults = {}}),
            "There is no simulated unit \"GPS 12\"; there are GlobalMap 100, GlobalMap 12, AccuMap 12, GlobalNav 212, "
            "GlobalNav 310, Eagle Explorer, GlobalMap Sport");
  EXPECT_EQ(lowrance_options_problem({.baud = -1, .faults = {}}),
            "A wire of -1 bits per second cannot be simulated: 1 to 1000000, or 0 for no limit");
}

TEST(LowranceUnits, AllThatTheySayFitsTogether) {
  for (const LowranceUnit& each : lowrance_units()) {
    const int shown = each.screen_height + (each.screen_type < 2 ? 1 : 0);
    EXPECT_GE(each.row_length, shown) << each.name;
    EXPECT_EQ(each.row_length % 8, 0) << each.name;
    EXPECT_LE(lowrance_planes(each).black.size(), 0x7FFFu) << each.name;
    const LowranceMemory memory = fill_lowrance_memory(believable_season(), each);
    EXPECT_EQ(memory.areas.size() + memory.trails.size(), each.trails) << each.name;
    for (const Bytes& area : memory.areas) EXPECT_LE(area.size(), 0x7FFFu) << each.name;
  }
}

TEST(LowranceMemory, RecordsHoldThePlacesInMetresOfTheProjection) {
  LowranceData data;
  data.waypoints.push_back({.name = "DOCK 1", .place = {47.2057612, 8.090536}, .symbol = 27, .time = 0x01020304});
  data.waypoints.push_back({.name = "ABCDEFGHIJKLMN", .place = {-33.5, 151.25}, .symbol = 28, .time = 0});
  data.routes = {{.name = "OUT", .waypoints = {1, 0, 2, -1}}};  // the last two do not exist
  data.events = {{{60, -149.9}, 14}, {{60, -149.9}, 15}};
  const LowranceMemory memory = fill_lowrance_memory(data, unit("GlobalMap 100"));
  ASSERT_EQ(memory.waypoints.size(), 750u);
  EXPECT_EQ(memory.waypoints[0], (Bytes{0,   0,   1,   27, 0x69, 0xE0, 0x5A, 0, 0x4F, 0xB2, 0x0D, 0, 'D', 'O', 'C',
                                        'K', ' ', '1', 0,  0,    0,    0,    0, 0,    0,    4,    3, 2,   1}));
  EXPECT_EQ(memory.waypoints[1],
            (Bytes{1,   0,   1,   0,   0xDF, 0xBF, 0xC3, 0xFF, 0x4D, 0x0D, 0x00, 0x01, 'A', 'B', 'C',
                   'D', 'E', 'F', 'G', 'H',  'I',  'J',  'K',  'L',  'M',  0,    0,    0,   0}));
  Bytes empty(29);
  empty[0] = 2;
  EXPECT_EQ(memory.waypoints[2], empty);
  ASSERT_EQ(memory.routes.size(), 99u);
  EXPECT_EQ(memory.routes[0], (Bytes{0, 0, 2, 'O', 'U', 'T', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0}));
  EXPECT_EQ(memory.routes[98], (Bytes{98, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(memory.icons, (std::vector<Bytes>{{0, 0, 0x77, 0xBD, 0x7F, 0, 0xC4, 0x3B, 0x02, 0xFF, 14},
                                              {1, 0, 0x77, 0xBD, 0x7F, 0, 0xC4, 0x3B, 0x02, 0xFF, 15}}));
  EXPECT_EQ(fill_lowrance_memory(data, unit("GlobalMap Sport")).waypoints[0][3], 0);  // it has 15 symbols
}

TEST(LowranceMemory, TheBuiltInWaypointsLeaveTwoSlotsEmptyAndRoutesKnowIt) {
  const LowranceMemory memory = fill_lowrance_memory(believable_season(), unit("GlobalMap 100"));
  std::vector<std::size_t> empty;
  for (std::size_t slot = 0; slot < 42; ++slot) {
    if (memory.waypoints[slot][2] == 0) empty.push_back(slot);
  }
  EXPECT_EQ(empty, (std::vector<std::size_t>{10, 25}));
  EXPECT_EQ(memory.waypoints[42][2], 0);
  // SNAKECRK is the twelfth place of the data.
  EXPECT_EQ(part(memory.routes[1], 16, 2), (Bytes{12, 0}));
  EXPECT_EQ(part(memory.waypoints[12], 12, 9), (Bytes{'S', 'N', 'A', 'K', 'E', 'C', 'R', 'K', 0}));
}

TEST(LowranceMemory, MoreDataThanTheUnitHasRoomForAreCut) {
  LowranceData data = believable_season();
  data.waypoints.resize(300);
  data.routes[0].waypoints.assign(80, 249);
  data.routes[1].waypoints.assign(5, 250);  // past the last slot
  data.trails[0].resize(900, data.trails[0].back());
  data.trails[1][100].longitude += 1;  // 111 km: no delta reaches so far
  const LowranceMemory memory = fill_lowrance_memory(data, unit("GlobalNav 310"));
  EXPECT_EQ(memory.waypoints.size(), 250u);
  EXPECT_EQ(memory.routes[0].size(), 16 + 2 * 50u);
  EXPECT_EQ(part(memory.routes[0], 16, 2), (Bytes{249, 0}));
  EXPECT_EQ(memory.routes[1][2], 0);
  EXPECT_TRUE(memory.icons.empty());
  ASSERT_EQ(memory.trails.size(), 1u);
  EXPECT_EQ(memory.trails[0].deltas.size(), 499u);
  EXPECT_EQ(fill_lowrance_memory(data, unit("GlobalMap 100")).trails[1].deltas.size(), 99u);
}

TEST(LowranceMemory, OldUnitsKeepTrailsInARingTheSecondOneRunOverItsEnd) {
  // On the equator and on the meridian of Greenwich a thousandth of a degree is 110.946 m.
  const std::vector<LowrancePlace> points{{0, 0}, {0, 0.001}, {0.001, 0.001}, {0.001, 0}};
  LowranceData data;
  data.trails = {points, points};
  const LowranceMemory memory = fill_lowrance_memory(data, unit("GlobalMap Sport"));
  ASSERT_EQ(memory.areas.size(), 2u);
  ASSERT_EQ(memory.areas[0].size(), 2020u);
  EXPECT_EQ(part(memory.areas[0], 0, 32), (Bytes{0, 0, 0, 0,   0, 0,   0, 0, 0, 2, 0x10, 0x10, 0, 2, 0x10, 0x1C,
                                                 0, 0, 0, 111, 0, 111, 0, 0, 0, 0, 0xFF, 0x91, 0, 0, 0,    0}));
  // At 0x217E4; the first delta is the last of the ring, whose end 4 bytes stay free behind it.
  EXPECT_EQ(part(memory.areas[1], 0, 24),
            (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0x1F, 0xC0, 0, 2, 0x17, 0xFC, 0, 111, 0, 0, 0, 0, 0xFF, 0x91}));
  EXPECT_EQ(part(memory.areas[1], 2020 - 8, 8), (Bytes{0, 0, 0, 111, 0, 0, 0, 0}));
  EXPECT_EQ(fill_lowrance_memory({}, unit("GlobalMap Sport")).areas[0], Bytes(2020));
}

}  // namespace
}  // namespace simulators
