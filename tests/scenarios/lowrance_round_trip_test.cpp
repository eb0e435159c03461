// What a Lowrance/Eagle unit holds comes back into an empty unit as it was, directly and by way of a text file.
#include <map>

#include "simulators/lowrance_screen.h"
#include "tests/support/lowrance_scenario.h"

namespace {

using simulators::LowranceMemory;
using simulators::LowranceUnit;
using support::ObservedUnit;

// As uploads leave it: without gaps between the waypoints.
LowranceMemory closed_up(LowranceMemory memory) {
  std::vector<base::Bytes> waypoints;
  std::map<int, std::uint8_t> slots;  // the new by the old ones, all in small numbers
  for (const base::Bytes& record : memory.waypoints) {
    if (record[2] == 0) continue;
    const auto slot = slots[record[0]] = static_cast<std::uint8_t>(waypoints.size());
    waypoints.push_back(record);
    waypoints.back()[0] = slot;
  }
  memory.waypoints = waypoints;
  for (base::Bytes& route : memory.routes)
    for (std::size_t at = 16; at < route.size(); at += 2) route[at] = slots[route[at]];
  return memory;
}

class LowranceRoundTrip : public support::LowranceScenario {
 protected:
  // The points of routes come a second time.
  LowranceRoundTrip() { removes_exact_duplicates = true; }

  // All that is in the store; trail points have the time of their download.
  std::vector<store::ItemRecord> records() {
    std::vector<store::ItemRecord> records = support::all_records(items());
    for (store::ItemRecord& record : records)
      if (record.kind == 'T') record.time = {};
    return records;
  }
};

TEST_F(LowranceRoundTrip, EveryUnitGetsBackWhatItHeld) {
  for (const LowranceUnit& row : simulators::lowrance_units()) {
    SCOPED_TRACE(row.name);
    const LowranceMemory before = closed_up(unit(named(row.name)).memory());
    session->settings.SA_SortBeforeOutput = 0;
    session->settings.DMSMode = geodesy::Notation::Ddd;
    ASSERT_TRUE(download(kDownloadAll));
    EXPECT_EQ(device->refused(), 0);
    EXPECT_EQ(items().waypoint_count(), static_cast<int>(simulators::believable_season().waypoints.size()));
    EXPECT_EQ(items().track_count(), std::min<int>(row.trails, 2));
    ASSERT_TRUE(save("unit.txt"));
    const store::ItemStore::Contents downloaded = items().contents();
    const std::vector<store::ItemRecord> original = records();
    expect_closed();

    for (const bool by_way_of_a_file : {false, true}) {
      unit(named(row.name), {});
      items().restore(downloaded);
      session->settings.SA_SortAfterInput = 0;
      ASSERT_TRUE(!by_way_of_a_file || reread("unit.txt"));
      EXPECT_TRUE(upload(kUploadAll)) << front_end.lines[9];
      EXPECT_EQ(device->refused(), 0);
      expect_closed();
      const LowranceMemory after = closed_up(device->memory());
      if (!by_way_of_a_file) {
        EXPECT_EQ(after.waypoints, before.waypoints);
        EXPECT_EQ(after.routes, before.routes);
        EXPECT_EQ(after.icons, before.icons);
        EXPECT_EQ(after.trails, before.trails);
        for (std::size_t i = 0; i < before.areas.size() && i < 1; ++i) EXPECT_EQ(after.areas[i], before.areas[i]);
      }
      // Trails that stood in a ring are there, too. A text file moves places by a metre at most.
      unit(named(row.name), {}, device->memory());
      ASSERT_TRUE(download(kDownloadAll));
      const std::vector<store::ItemRecord> again = records();
      ASSERT_EQ(support::described(again), support::described(original));
      for (std::size_t i = 0; i < again.size(); ++i) {
        const double metre = by_way_of_a_file ? 1.01 / 110946 : 0;
        ASSERT_NEAR(again[i].position.latitude, original[i].position.latitude, metre);
        ASSERT_NEAR(again[i].position.longitude, original[i].position.longitude, metre);
      }
    }
  }
}

TEST_F(LowranceRoundTrip, TheScreenStandsUprightWhicheverWayTheUnitHoldsIt) {
  for (const LowranceUnit& row : simulators::lowrance_units()) {
    SCOPED_TRACE(row.name);
    unit(named(row.name));
    const std::optional<picture::Bitmap> picture = session->lowrance_screen.download();
    ASSERT_TRUE(picture) << front_end.lines[1];
    const simulators::LowranceScreenSize size = simulators::lowrance_screen_size(row);
    ASSERT_EQ(picture->width(), size.width);
    ASSERT_EQ(picture->height(), size.height);
    const int grey = row.screen_type > 0 ? 2 : 3;
    int wrong = 0;
    for (int y = 0; y < size.height; ++y) {
      for (int x = 0; x < size.width; ++x) {
        const int tone = simulators::lowrance_screen_tone(size.width, size.height, x, y);
        wrong += picture->pixel(x, y) != (tone == 2 ? 0 : tone == 1 ? grey : 3);
      }
    }
    EXPECT_EQ(wrong, 0);
    expect_closed();
    EXPECT_EQ(device->refused(), 0);
  }
}

}  // namespace
