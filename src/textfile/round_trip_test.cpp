// Reading what was written, and writing what was read.
#include <random>
#include <tuple>

#include "tests/support/text_file_fixture.h"
#include "textfile/text_layout.h"
#include "textfile/text_writer.h"

namespace textfile {
namespace {

using store::ItemRecord;
using support::kNoonSeconds;
using support::TextFileTest;

class RoundTrip : public TextFileTest {
 protected:
  RoundTrip() { settings.HandleReadDups = store::Duplicates::Ignore; }

  // Everything of a record that a version 2 file keeps.
  static auto kept(const ItemRecord& item) {
    return std::tuple(item.kind, item.segment_flag, item.detail_kind, item.record_type, item.symbol_mode,
                      item.time.seconds, item.altitude, item.depth, item.symbol, item.display_mode, item.waypoint_class,
                      item.subclass, item.state.view(), item.country.view(), item.name.view(), item.ident.view(),
                      item.comment.view(), item.facility.view(), item.city.view(), item.address.view(),
                      item.cross_road.view(), item.link_ident.view(), item.has_route_link, item.link_class,
                      item.link_subclass, item.route_link_ident.view());
  }
};

// Deliberate : unknown heights are 1e25 on track lines and 1e24 on detail lines.
TEST_F(RoundTrip, ASampleOfEverythingIsWrittenAgainByteForByte) {
  const std::string version2 = sample("everything_v2.txt");
  EXPECT_EQ(read(version2), 22);
  options.now_unix = 1024128000;  // 2002-06-15 08:00:00 UTC
  options.offset_hours = -5;
  options.offset_seconds = -5 * 3600;
  EXPECT_EQ(write(), version2);

  store.clear_all();
  const std::string version1 = sample("everything_v1.txt");
  EXPECT_EQ(read(version1), 13);
  options.version = 1;
  options.notation = geodesy::Notation::Dms;
  options.offset_hours = 5.5;
  options.offset_seconds = 19800;
  EXPECT_EQ(write(), version1);
}

// A record with every field set or not, as receivers and files may combine them.
ItemRecord random_item(std::mt19937& random) {
  const auto one_of = [&random](auto choices) {
    return *(choices.begin() + static_cast<std::ptrdiff_t>(random() % choices.size()));
  };
  const auto text = [&](std::initializer_list<std::size_t> sizes, std::string_view letters) {
    std::string result(one_of(sizes), 'a');
    for (std::size_t i = 1; i + 1 < result.size(); ++i) result[i] = letters[random() % letters.size()];
    return result;
  };
  constexpr std::string_view kPlain = "ABC xyz,.#";
  constexpr std::string_view kWithSemicolon = "ABC ;xyz,";
  ItemRecord item = store::blank_item();
  item.position = {-12.5, -100.25};
  item.symbol = one_of(std::array<std::int16_t, 3>{0, 18, 16387});
  item.symbol_mode = one_of(std::array<std::uint8_t, 3>{0, 3, 5});
  item.display_mode = one_of(std::array<std::int16_t, 3>{1, 3, 5});
  item.time = {one_of(std::array{0U, kNoonSeconds})};
  item.has_route_link = static_cast<std::uint8_t>(random() % 2);
  if (item.has_route_link != 0) {
    item.link_class = one_of(std::array<std::uint16_t, 3>{0, 3, 0xFFFF});
    item.link_subclass[random() % 18] = static_cast<std::uint8_t>(random());
    item.route_link_ident = text({0, 1, 51}, kPlain);
  }
  item.waypoint_class = one_of(std::array<std::uint8_t, 4>{0, 64, 254, store::kClassNotSet});
  item.record_type = one_of(std::array<std::uint16_t, 10>{0, 0, 105, 106, 107, 108, 110, 151, 155, 65535});
  item.detail_kind = static_cast<std::uint8_t>(random() % 3);
  // A class of 0 has no details, and a link alone makes the third kind.
  if (item.detail_kind == store::kFullDetails && item.waypoint_class == 0) item.detail_kind = 0;
  if (item.detail_kind == store::kNoDetails && item.has_route_link != 0) item.detail_kind = store::kRouteLinkDetails;
  if (random() % 2 == 0) item.subclass[random() % 13] = 7;
  if (random() % 4 == 0) item.subclass[13 + random() % 5] = 9;
  item.altitude = one_of(std::array{store::kNotKnown, store::kNotKnown, 0.0F, -7.5F, 1e23F});
  item.depth = one_of(std::array{store::kNotKnown, store::kNotKnown, 0.0F, 12.5F});
  item.ident = text({0, 1, 15, 16, 40, 41, 50}, kWithSemicolon);
  item.comment = item.detail_kind == store::kLongIdentDetails ? "SP WAYPOINT" : text({0, 1, 20, 21, 40}, kPlain);
  item.name = text({0, 0, 0, 1, 30}, kWithSemicolon);
  item.state = text({0, 0, 0, 1, 2}, kPlain);
  item.country = text({0, 0, 0, 2}, kPlain);
  item.city = text({0, 0, 0, 24}, kPlain);
  item.facility = text({0, 0, 0, 30}, kPlain);
  item.address = text({0, 0, 0, 50}, kPlain);
  item.cross_road = text({0, 0, 0, 50}, kPlain);
  item.link_ident = text({0, 0, 1, 4, 5, 40}, kPlain);
  return item;
}

TEST_F(RoundTrip, WhateverAWaypointHoldsComesBackAndIsWrittenAgainByteForByte) {
  settings.HandleReadDups = store::Duplicates::Merge;
  std::mt19937 random(20020615);
  constexpr int kRecords = 5000;
  for (int i = 0; i < kRecords; ++i) {
    store.CurrentItem = random_item(random);
    push_waypoint();
  }
  const store::ItemStore::Contents before = store.contents();
  const std::string text = write();
  store.clear_all();
  ASSERT_EQ(read(text), kRecords + 1);
  EXPECT_TRUE(write() == text);
  for (std::size_t i = 0; i < kRecords; ++i) {
    ItemRecord expected = before.waypoints[i];
    const ItemRecord& found = store.waypoint(static_cast<int>(i) + 1);
    // A class of 0 says as little as none, and asks for no line of its own.
    if (expected.waypoint_class == 0 && found.waypoint_class == store::kClassNotSet)
      expected.waypoint_class = store::kClassNotSet;
    store.CurrentItem = expected;
    ASSERT_EQ(kept(found), kept(expected))
        << TextWriter(store, shift, front_end).item_line(expected, options) << " record " << i;
  }
}

TEST_F(RoundTrip, AnAltitudeAloneGivesAWaypointNeitherClassNorTypeNorDetails) {
  start_waypoint("HILL");
  item().display_mode = 5;
  item().altitude = 164;
  push_waypoint();
  const ItemRecord before = store.waypoint(1);
  const std::string text = write();
  store.clear_all();
  ASSERT_EQ(read(text), 2);
  EXPECT_EQ(kept(store.waypoint(1)), kept(before));
  EXPECT_EQ(store.waypoint(1).record_type, 0);
}

TEST_F(RoundTrip, TextsAtTheEdgeOfADegreeMinuteZoneOrBandComeBackAsTheyWere) {
  struct Case {
    geodesy::Notation notation;
    std::string_view head, position;
  };
  for (const Case& c : {Case{geodesy::Notation::Dms, "M DMS\n", "N12 34 00.00 W100 59 60.00"},
                        Case{geodesy::Notation::Dms, "M DMS\n", "S00 00 00.00 W000 00 00.00"},
                        Case{geodesy::Notation::Dms, "M DMS\n", "N89 59 60.00 E179 59 60.00"},
                        Case{geodesy::Notation::Dmm, "M DMM\n", "N12 60.0000 E007 00.0000"},
                        Case{geodesy::Notation::Dmm, "M DMM\n", "N90 00.0000 W180 00.0000"},
                        Case{geodesy::Notation::Ddd, "M DDD\n", "S00.0000000 E180.0000000"},
                        Case{geodesy::Notation::Utm, "M UTM\n", "32N  166021.4        0.0"},
                        Case{geodesy::Notation::Utm, "M UTM\n", "31M  500000.0 10000000.0"},
                        Case{geodesy::Notation::Utm, "M UTM\n", "32U  285015.8  5542944.0"},
                        Case{geodesy::Notation::Utm, "M UTM\n", "30V  658630.9  6844503.8"},
                        Case{geodesy::Notation::Utm, "M UTM\n", "00Z 2123387.1  1344789.0"},
                        Case{geodesy::Notation::Utm, "M UTM\n", "00A  887048.9  2000323.7"},
                        Case{geodesy::Notation::Utm, "M UTM\n", "00Y 2000000.0  1500000.0"},
                        Case{geodesy::Notation::Utm, "M UTM\n", "00Y 2000000.0  2500000.0"},
                        Case{geodesy::Notation::Utm, "M UTM\n", "00A 2000000.0  2000000.0"},
                        Case{geodesy::Notation::Utm, "M UTM\n", "00Z 2000000.0  2000000.0"}}) {
    const std::string line = "W  EDGE            " + std::string(c.position) + " ";
    store.clear_all();
    ASSERT_EQ(read(std::string(c.head) + line), 1) << c.position;
    options.notation = c.notation;
    EXPECT_EQ(written_lines()[0].substr(0, line.size()), line);
  }
}

TEST_F(RoundTrip, APoleKeepsItsPlaceInAnyDatum) {
  start_waypoint("POLE");
  item().position = {90, 12};
  push_waypoint();
  options.datum = "European_1950";
  const std::string text = write();
  store.clear_all();
  EXPECT_EQ(read(text), 2);
  EXPECT_NEAR(store.waypoint(1).position.latitude, 90, 1e-3);
}

}  // namespace
}  // namespace textfile
