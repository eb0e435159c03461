// Records of a receiver into the store, by way of a text file, and back into the format that they came in. They are
// made by the simulated receiver, whose encoder knows nothing of ours.
#include <cmath>
#include <random>

#include "garmin/route_records.h"
#include "garmin/track_records.h"
#include "garmin/waypoint_records.h"
#include "simulators/garmin_records.h"
#include "tests/support/text_file_fixture.h"

namespace {

using base::Bytes;
using garmin::RecordFormat;
using simulators::SimWaypoint;
using store::ItemRecord;

struct Layout {
  int format;
  std::size_t latitude;            // where it stands; the longitude follows
  std::size_t waypoint_class = 0;  // where that of an aviation format stands ...
  int classes = 0;                 // ... and how many there are
};
constexpr std::array kLayouts{
    Layout{100, 6},         Layout{101, 6},         Layout{102, 6},          Layout{103, 6},
    Layout{104, 6},         Layout{105, 0},         Layout{106, 14},         Layout{107, 6},
    Layout{108, 24},        Layout{109, 24},        Layout{110, 24},         Layout{150, 9, 8, 8},
    Layout{151, 6, 123, 4}, Layout{152, 6, 123, 6}, Layout{154, 6, 123, 10}, Layout{155, 6, 123, 6},
    Layout{400, 6},         Layout{403, 6},         Layout{450, 11, 10, 8}};
bool is_aviation(const Layout& layout) { return layout.classes > 0; }

constexpr std::string_view kCapitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 -";
constexpr std::string_view kAscii =
    " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~";

// Waypoints as receivers send them, with something in every field of any format.
class Waypoints {
 public:
  SimWaypoint make(const Layout& layout) {
    const bool is_fixed = layout.format != 105 && layout.format != 106 && (layout.format < 108 || layout.format > 110);
    const std::string_view letters = is_fixed ? kCapitals : kAscii;
    SimWaypoint made;
    made.ident = is_fixed ? text(6, letters) : text(50, letters);
    made.comment = text(40, letters);
    made.facility = text(30, kAscii);
    made.city = text(24, kAscii);
    made.address = text(20, kAscii);  // all texts together must not become too long
    made.cross_road = text(14, kAscii);
    made.state = text(2, kAscii);
    made.country = text(2, kAscii);
    made.link_ident = text(40, kAscii);
    made.latitude = std::uniform_real_distribution(-90.0, 90.0)(random_);
    made.longitude = std::uniform_real_distribution(-180.0, 180.0)(random_);
    made.altitude = metres();
    made.depth = metres();
    made.proximity = metres();
    if (made.proximity == 0.0F) made.proximity.reset();
    made.symbol = one_of<std::uint16_t>({0, 8, 18, 150, 177, 8196, 8210, 16402});
    made.display_mode = one_of({1, 3, 5});
    made.colour = one_of<std::uint8_t>({0, 1, 5, 9, 10, 11, 12, 15, 255});
    made.waypoint_class = one_of<std::uint8_t>({0, 0, 0x40, 0x43, 0x46, 0x80, 0x83, 0x85});
    if (below(3) == 0)
      for (std::uint8_t& byte : made.subclass) byte = static_cast<std::uint8_t>(below(256));
    if (below(3) == 0) made.time = 300000000 + static_cast<std::uint32_t>(below(900000000));
    return made;
  }
  // Not ending with a blank.
  std::string text(int longest, std::string_view letters) {
    const int size = std::min(below(longest + longest / 2), longest);
    std::string made;
    while (static_cast<int>(made.size()) < size)
      made += letters[static_cast<std::size_t>(below(static_cast<int>(letters.size())))];
    return std::string(base::trim_trailing_blanks(made));
  }
  int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random_); }

 private:
  template <typename Value>
  Value one_of(std::initializer_list<Value> values) {
    return values.begin()[below(static_cast<int>(values.size()))];
  }
  std::optional<float> metres() {
    if (below(4) == 0) return std::nullopt;
    return below(8) == 0 ? 0.0F : std::uniform_real_distribution(-500.0F, 9000.0F)(random_);
  }

  std::mt19937 random_;
};

void replace(std::string& text, char replaced) { std::replace(text.begin(), text.end(), replaced, '-'); }

// What becomes of it in the store ...
SimWaypoint as_stored(SimWaypoint waypoint) {
  replace(waypoint.ident, '|');
  replace(waypoint.comment, '|');
  return waypoint;
}

std::optional<float> to_decimetres(std::optional<float> metres) {
  if (metres) metres = static_cast<float>(std::stod(base::format_text("%.1f", static_cast<double>(*metres))));
  return metres;
}

// ... and in a W line with its detail lines, but for the position ...
SimWaypoint as_written(const Layout& layout, SimWaypoint waypoint) {
  waypoint = as_stored(waypoint);
  replace(waypoint.ident, '^');
  replace(waypoint.comment, '^');
  if (!is_aviation(layout)) replace(waypoint.facility, ';');
  for (std::string* const text :
       {&waypoint.city, &waypoint.address, &waypoint.cross_road, &waypoint.state, &waypoint.country})
    replace(*text, ';');
  waypoint.proximity.reset();
  if (!is_aviation(layout)) waypoint.altitude = to_decimetres(waypoint.altitude);
  waypoint.depth = to_decimetres(waypoint.depth);
  // Red, green, yellow and blue have words; the others come back as nobody's choice.
  const bool has_word = waypoint.colour >= 9 && waypoint.colour <= 12;
  if (!has_word && layout.format != 107) waypoint.colour = 255;
  return waypoint;
}

// ... and in a P line, which has no detail lines.
SimWaypoint as_written_in_p_line(const Layout& layout, const SimWaypoint& waypoint) {
  const SimWaypoint written = as_written(layout, waypoint);
  SimWaypoint kept;
  kept.ident = base::trim_trailing_blanks(written.ident.substr(0, 15));
  kept.comment = written.comment;
  kept.latitude = written.latitude;
  kept.longitude = written.longitude;
  kept.symbol = written.symbol;
  kept.display_mode = written.display_mode;
  kept.colour = written.colour;
  kept.time = written.time;
  kept.proximity = to_decimetres(waypoint.proximity);
  if (kept.proximity == 0.0F) kept.proximity.reset();
  return kept;
}

Bytes bytes_of(const Layout& layout, const SimWaypoint& waypoint, int index) {
  return simulators::encode_waypoint(layout.format, waypoint, index).value();
}
// The simulated receiver does not know all classes of the aviation formats.
Bytes with_class(const Layout& layout, Bytes data, int index) {
  if (is_aviation(layout)) data[layout.waypoint_class] = static_cast<std::uint8_t>(index % layout.classes);
  return data;
}

class GarminRoundTrip : public support::TextFileTest {
 protected:
  GarminRoundTrip() {
    options.notation = geodesy::Notation::Ddd;
    options.offset_hours = 5.5;
    options.offset_seconds = 19800;
    settings.HandleReadDups = store::Duplicates::Merge;
  }

  // Reads the file that is written now into an empty store.
  void pass_through_a_file() {
    const std::string text = write();
    store.clear_all();
    EXPECT_GT(read(text), 0);
    front_end.line_writes.clear();
  }

  template <typename Record>
  static Record decoded(std::span<const garmin::FormatOf<Record>> formats, int number, const Bytes& data,
                        Record record) {
    const auto result = garmin::decode_record(formats, static_cast<std::uint16_t>(number), "record", data, record);
    EXPECT_TRUE(result) << result.refusal;
    return record;
  }
  template <typename Record>
  Bytes encoded(std::span<const garmin::FormatOf<Record>> formats, int number, const Record& record) const {
    return garmin::encode_record(formats, static_cast<std::uint16_t>(number), record, settings).value_or(Bytes());
  }

  // The text has seven decimals, which is a little more than a semicircle.
  static void expect_same_but_one_semicircle(Bytes found, const Bytes& expected, std::size_t latitude) {
    ASSERT_EQ(found.size(), expected.size());
    for (const std::size_t offset : {latitude, latitude + 4}) {
      const auto angle = [offset](const Bytes& data) {
        return base::ByteReader(std::span(data).subspan(offset)).u32();
      };
      EXPECT_LE(angle(found) - angle(expected) + 1, 2U);  // around 180 degrees too
      std::copy_n(expected.begin() + static_cast<std::ptrdiff_t>(offset), 4,
                  found.begin() + static_cast<std::ptrdiff_t>(offset));
    }
    EXPECT_EQ(found, expected);
  }

  Waypoints waypoints;
};

TEST_F(GarminRoundTrip, AWaypointOfAnyFormatComesBackAndAFileLosesNoMoreThanIsSaid) {
  for (const Layout& layout : kLayouts) {
    if (!simulators::is_waypoint_format(layout.format)) continue;
    SCOPED_TRACE(layout.format);
    store.clear_all();
    std::vector<Bytes> written;
    for (int i = 0; i < 150 && !HasFailure(); ++i) {
      const SimWaypoint waypoint = waypoints.make(layout);
      const Bytes received = with_class(layout, bytes_of(layout, waypoint, i), i);
      item() = decoded(garmin::kWaypointFormats, layout.format, received, store::blank_item());
      ASSERT_EQ(store.push_waypoint(0), 0);
      EXPECT_EQ(encoded(garmin::kWaypointFormats, layout.format, store.waypoint(i + 1)),
                with_class(layout, bytes_of(layout, as_stored(waypoint), i), i));
      written.push_back(with_class(layout, bytes_of(layout, as_written(layout, waypoint), i), i));
    }
    pass_through_a_file();
    ASSERT_EQ(store.waypoint_count(), static_cast<int>(written.size()));
    for (std::size_t i = 0; i < written.size() && !HasFailure(); ++i)
      expect_same_but_one_semicircle(
          encoded(garmin::kWaypointFormats, layout.format, store.waypoint(static_cast<int>(i) + 1)), written[i],
          layout.latitude);
  }
}

TEST_F(GarminRoundTrip, AProximityWaypointKeepsInAFileWhatItsLineHasColumnsFor) {
  for (const Layout& layout : kLayouts) {
    if (!simulators::is_proximity_format(layout.format)) continue;
    for (int batch = 0; batch < 10 && !HasFailure(); ++batch) {
      SCOPED_TRACE(layout.format);
      store.clear_all();
      std::vector<Bytes> written;
      for (int i = 0; i < store::kProximityCapacity; ++i) {
        const SimWaypoint waypoint = waypoints.make(layout);
        const Bytes received = with_class(layout, bytes_of(layout, waypoint, i), i);
        ItemRecord item = decoded(garmin::kProximityFormats, layout.format, received, store::blank_item());
        store.CurrentItem = item;
        ASSERT_EQ(store.push_proximity(), 0);
        item = store.proximity(i + 1);
        item.number = static_cast<std::uint32_t>(i);
        EXPECT_EQ(encoded(garmin::kProximityFormats, layout.format, item),
                  with_class(layout, bytes_of(layout, as_stored(waypoint), i), i));
        written.push_back(bytes_of(layout, as_written_in_p_line(layout, waypoint), i));
      }
      pass_through_a_file();
      ASSERT_EQ(store.proximity_count(), store::kProximityCapacity);
      for (int i = 0; i < store::kProximityCapacity; ++i) {
        ItemRecord item = store.proximity(i + 1);
        item.number = static_cast<std::uint32_t>(i);
        expect_same_but_one_semicircle(encoded(garmin::kProximityFormats, layout.format, item),
                                       written[static_cast<std::size_t>(i)], layout.latitude);
      }
    }
  }
}

TEST_F(GarminRoundTrip, RoutesAndTheirLinksComeBackFromAFile) {
  simulators::SimRoute route;
  route.number = 19;
  route.name = "ROUND-THE BAY 2";
  const Bytes header = simulators::encode_route_header(201, route).value();
  const auto received = decoded(garmin::kRouteHeaderFormats, 201, header, garmin::RouteHeader{});
  store.start_route(19, "19", received.name);
  ASSERT_EQ(store.push_route(true), 0);
  std::vector<Bytes> links;
  for (int i = 0; i < 90; ++i) {
    start_waypoint("POINT");
    ASSERT_EQ(store.push_route(true), 0);
    simulators::SimRouteLink link;
    link.link_class = static_cast<std::uint16_t>(i % 4 == 0 ? 0xFF : i % 4);
    if (i % 3 == 0) link.subclass.fill(static_cast<std::uint8_t>(i + 1));
    link.ident = waypoints.text(50, kAscii);
    links.push_back(simulators::encode_route_link(link));
    const ItemRecord leg = decoded(garmin::kRouteLinkFormats, 210, links.back(), store::blank_item());
    ASSERT_TRUE(store.set_route_link(leg.link_class, leg.link_subclass, leg.route_link_ident));
  }
  pass_through_a_file();
  const store::Route& read_back = store.route(19);
  ASSERT_TRUE(read_back.header);
  const garmin::RouteHeader sent{static_cast<int>(read_back.header->route_number),
                                 std::string(read_back.header->comment)};
  EXPECT_EQ(encoded(garmin::kRouteHeaderFormats, 201, sent), header);
  ASSERT_EQ(read_back.points.size(), links.size());
  for (std::size_t i = 0; i < links.size(); ++i)
    EXPECT_EQ(encoded(garmin::kRouteLinkFormats, 210, read_back.points[i]), links[i]) << i;
}

TEST_F(GarminRoundTrip, TracksComeBackFromAFile) {
  std::vector<Bytes> headers, points;
  for (int i = 0; i < 17; ++i) {
    simulators::SimTrack track;
    track.name = "OUT, BACK " + std::to_string(i);
    track.colour = static_cast<std::uint8_t>(i == 16 ? 255 : i);
    headers.push_back(simulators::encode_track_header(310, track, i).value());
    const ItemRecord log = decoded(garmin::kTrackHeaderFormats, 310, headers.back(), store::blank_item());
    store.start_track_log(log.ident, store::kColourNames.at(log.colour));
    for (const bool starts : {true, false, false, true}) {
      const SimWaypoint place = waypoints.make(kLayouts[0]);
      simulators::SimTrackPoint point{place.latitude, place.longitude, place.time, place.altitude, place.depth};
      Bytes data = simulators::encode_track_point(301, point, starts).value();
      item() = decoded(garmin::kTrackPointFormats, 301, data, store::blank_item());
      ASSERT_EQ(store.push_track(), 0);
      // "None" goes out as 0, and a file has centimetres.
      const auto centimetres = [](const std::optional<float>& metres) {
        return metres ? std::optional(static_cast<float>(std::round(static_cast<double>(*metres) * 100) / 100))
                      : std::nullopt;
      };
      point.altitude = centimetres(point.altitude);
      point.depth = centimetres(point.depth);
      data = simulators::encode_track_point(301, point, starts).value();
      if (point.time == 0) std::fill_n(data.begin() + 8, 4, std::uint8_t{0});
      points.push_back(data);
    }
  }
  pass_through_a_file();
  ASSERT_EQ(store.track_point_count(), static_cast<int>(points.size()));
  for (std::size_t i = 0; i < points.size(); ++i) {
    const ItemRecord point = store.track_point(static_cast<int>(i) + 1);
    expect_same_but_one_semicircle(encoded(garmin::kTrackPointFormats, 301, point), points[i], 0);
    if (point.segment_flag == store::kStartsNamedTrack) {
      EXPECT_EQ(i % 4, 0U);
      EXPECT_EQ(encoded(garmin::kTrackHeaderFormats, 310, point), headers[i / 4]);
    }
  }
}

}  // namespace
