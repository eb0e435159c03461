// What a Lowrance/Eagle unit holds comes back into an empty unit as it was, directly and by way of a text file.
#include <cmath>
#include <cstdlib>
#include <map>

#include "simulators/lowrance_screen.h"
#include "tests/support/lowrance_scenario.h"

namespace {

using base::ByteReader;
using simulators::LowranceMemory;
using simulators::LowranceUnit;
using support::ObservedUnit;

// One thing that a unit holds: what must be equal, and places, which a text file may move by a metre.
struct Held {
  std::string text;
  std::vector<std::int32_t> places;
};

// A big-endian number in the memory of an old unit.
std::int32_t big_endian(const base::Bytes& bytes, std::size_t at, std::size_t size) {
  std::uint32_t value = size == 2 && (bytes[at] & 0x80) != 0 ? 0xFFFF : 0;
  for (std::size_t i = 0; i < size; ++i) value = value << 8 | bytes[at + i];
  return static_cast<std::int32_t>(value);
}

Held trail_of_area(const base::Bytes& area, std::uint32_t address) {
  Held trail{"trail", {}};
  std::size_t at = static_cast<std::uint32_t>(big_endian(area, 8, 4)) - address;
  const std::size_t end = static_cast<std::uint32_t>(big_endian(area, 12, 4)) - address;
  if (big_endian(area, 8, 4) == 0) return trail;
  std::int32_t y = big_endian(area, 0, 4), x = big_endian(area, 4, 4);
  trail.places = {y, x};
  for (int i = 0; i < 10'000 && at != end; ++i) {
    y += big_endian(area, at, 2), x += big_endian(area, at + 2, 2);
    trail.places.insert(trail.places.end(), {y, x});
    at += 4;
    if (at == area.size() - 4 && at != end) at = 16;
  }
  return trail;
}

// Waypoints without their slots, which closes the gaps between them; routes by the names of their points.
std::vector<Held> held_by(const LowranceMemory& memory) {
  std::vector<Held> all;
  std::map<int, std::string> names;
  for (const base::Bytes& record : memory.waypoints) {
    ByteReader in(record);
    const int slot = in.u16(), status = in.u8(), symbol = in.u8();
    const std::int32_t y = in.i32(), x = in.i32();
    names[slot] = in.text(13);
    if (status != 0)
      all.push_back({base::format_text("waypoint %s %d %u", names[slot].c_str(), symbol, in.u32()), {y, x}});
  }
  for (const base::Bytes& record : memory.routes) {
    ByteReader in(record);
    const int slot = in.u16(), count = in.u8();
    std::string text = base::format_text("route %d %s:", slot, in.text(13).c_str());
    for (int i = 0; i < count; ++i) text += " " + names[in.u16()];
    if (count > 0) all.push_back({text, {}});
  }
  for (const base::Bytes& record : memory.icons) {
    ByteReader in(record);
    const int number = in.u16();
    const std::int32_t y = in.i32(), x = in.i32();
    all.push_back({base::format_text("event %d %d", number, in.u8()), {y, x}});
  }
  for (const simulators::LowranceTrail& trail : memory.trails) {
    std::int32_t y = trail.y, x = trail.x;
    all.push_back({"trail", {y, x}});
    for (const auto& [dy, dx] : trail.deltas) all.back().places.insert(all.back().places.end(), {y += dy, x += dx});
  }
  std::uint32_t address = simulators::kTrailAreas;
  for (const base::Bytes& area : memory.areas) {
    all.push_back(trail_of_area(area, address));
    address += static_cast<std::uint32_t>(area.size());
  }
  return all;
}

class LowranceRoundTrip : public support::LowranceScenario {
 protected:
  // The points of routes come a second time.
  LowranceRoundTrip() { removes_exact_duplicates = true; }

  void expect_equal(const LowranceMemory& now, const LowranceMemory& before, int metres) {
    const std::vector<Held> after = held_by(now), original = held_by(before);
    ASSERT_EQ(after.size(), original.size());
    for (std::size_t i = 0; i < original.size(); ++i) {
      ASSERT_EQ(after[i].text, original[i].text);
      ASSERT_EQ(after[i].places.size(), original[i].places.size()) << original[i].text;
      for (std::size_t j = 0; j < original[i].places.size(); ++j)
        ASSERT_LE(std::abs(after[i].places[j] - original[i].places[j]), metres) << original[i].text;
    }
  }
};

TEST_F(LowranceRoundTrip, EveryUnitGetsBackWhatItHeld) {
  for (const LowranceUnit& row : simulators::lowrance_units()) {
    SCOPED_TRACE(row.name);
    const LowranceMemory before = unit(named(row.name)).memory();
    ASSERT_TRUE(download(kDownloadAll));
    EXPECT_EQ(front_end.lines[1], "Waypoint download completed");
    EXPECT_EQ(items().waypoint_count(), static_cast<int>(simulators::believable_season().waypoints.size()));
    EXPECT_EQ(items().track_count(), std::min<int>(row.trails, 2));
    const store::ItemStore::Contents downloaded = items().contents();
    expect_closed();

    ObservedUnit& empty = unit(named(row.name), {});
    items().restore(downloaded);
    EXPECT_TRUE(upload(kUploadAll)) << front_end.lines[9];
    EXPECT_EQ(empty.memory().waypoints.size(), before.waypoints.size());
    expect_equal(empty.memory(), before, 0);
    for (std::size_t i = 0; i < before.areas.size() && i < 1; ++i) EXPECT_EQ(empty.memory().areas[i], before.areas[i]);
    expect_closed();
  }
}

TEST_F(LowranceRoundTrip, ByWayOfATextFilePlacesMoveByAMetreAtMost) {
  for (const LowranceUnit& row : simulators::lowrance_units()) {
    SCOPED_TRACE(row.name);
    const LowranceMemory before = unit(named(row.name)).memory();
    session->settings.SA_SortBeforeOutput = 0;
    session->settings.DMSMode = geodesy::Notation::Ddd;
    ASSERT_TRUE(download(kDownloadAll));
    ASSERT_TRUE(save("unit.txt"));

    ObservedUnit& empty = unit(named(row.name), {});
    session->settings.SA_SortAfterInput = 0;
    ASSERT_TRUE(reread("unit.txt"));
    EXPECT_TRUE(upload(kUploadAll)) << front_end.lines[9];
    expect_equal(empty.memory(), before, 1);
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
    EXPECT_TRUE(download(40035) || row.icons == 0);  // the unit is not frozen any more
  }
}

}  // namespace
