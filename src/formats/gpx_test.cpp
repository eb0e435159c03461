#include "formats/gpx.h"

#include <limits>

#include "formats/iso_time.h"
#include "store/symbols.h"
#include "tests/support/described_store.h"
#include "tests/support/format_fixture.h"

namespace formats {
namespace {

using testing::HasSubstr;

constexpr std::uint32_t kNoon = 391867200;  // 2002-06-01 12:00:00 UTC

class Gpx : public support::FormatTest {
 protected:
  int read(std::string_view text) { return read_with(read_gpx, text); }
  // Of a GPX document of these elements.
  int read_elements(const std::string& elements) {
    return read("<gpx xmlns=\"http://www.topografix.com/GPX/1/1\">\n" + elements + "</gpx>");
  }
  int read_sample(const std::string& name) { return read(sample("gpx/" + name)); }
  std::string write() { return write_with(write_gpx); }
  store::ItemRecord& start_item(std::string_view ident, double latitude, double longitude) {
    start(latitude, longitude).ident = ident;
    item().symbol = store::kDotSymbol;
    item().display_mode = 3;
    return item();
  }
};

TEST_F(Gpx, AFileOfVersion10IsRead) {
  EXPECT_EQ(read_sample("version_1_0.gpx"), 8);
  const store::ItemRecord first = store.waypoint(1);
  EXPECT_EQ(first.ident, "K\xDCHE");
  EXPECT_EQ(first.comment, "Cows & <boats>");
  EXPECT_EQ(first.position, (geodesy::Position{54.325, 10.145}));
  EXPECT_EQ(first.altitude, 12.4F);
  EXPECT_EQ(first.time.seconds, kNoon);
  EXPECT_EQ(first.symbol, 150);
  EXPECT_EQ(store.waypoint(2).comment, "Only a description");
  EXPECT_EQ(store.waypoint(2).symbol, store::kDotSymbol);
  EXPECT_FALSE(store::is_known(store.waypoint(2).altitude));
  EXPECT_EQ(store.waypoint_count(), 4);  // with the route's points
  EXPECT_EQ(store.route(7).header->comment, "Round the bay");
  EXPECT_EQ(store.route(7).header->ident, "07");
  EXPECT_EQ(store.route(7).points.at(1).altitude, -1.5F);
  ASSERT_EQ(store.track_point_count(), 3);
  EXPECT_EQ(store.track_point(1).time.seconds, kNoon);
  EXPECT_EQ(store.track_point(2).segment_flag, store::kContinues);
  EXPECT_EQ(store.track_point(3).segment_flag, store::kStartsSegment);
  EXPECT_EQ(front_end.lines[2], "1 symbols are not known and became dots, the first 'Opera House'");
}

TEST_F(Gpx, TheMakersTermsAreKnownByTheirNamespaceAndInAnyOrder) {
  EXPECT_EQ(read_sample("maker_extensions.gpx"), 7);
  const store::ItemRecord harbour = store.waypoint(2);
  EXPECT_EQ(harbour.ident, "HARBOUR MASTER");
  EXPECT_EQ(harbour.comment, "Harbour master");
  EXPECT_EQ(harbour.symbol, 0);
  EXPECT_EQ(harbour.altitude, 12.4F);
  EXPECT_EQ(harbour.depth, 3.5F);
  EXPECT_EQ(harbour.display_mode, 5);
  EXPECT_EQ(harbour.address, "Quay 1");
  EXPECT_EQ(harbour.city, "Sydney");
  EXPECT_EQ(harbour.state, "");  // "Ne" would be another one
  EXPECT_EQ(harbour.country, "AU");
  // An alarm distance makes a proximity waypoint as well.
  EXPECT_EQ(store.proximity(1).ident, "HARBOUR MASTER");
  EXPECT_EQ(store.proximity(1).proximity_distance, 250);
  const store::ItemRecord first = store.track_point(1);
  EXPECT_EQ(first.segment_flag, store::kStartsNamedTrack);
  EXPECT_EQ(first.ident, "OUT AND BACK");
  EXPECT_EQ(first.colour, 1);
  EXPECT_EQ(first.depth, 3.25F);
  EXPECT_EQ(store.track_point(2).depth, 4.5F);
  EXPECT_FALSE(store::is_known(store.track_point(3).depth));  // another maker's
  EXPECT_EQ(store.route(1).header->comment, "HARBOURS");
  EXPECT_EQ(store.route(1).points.at(0).subclass[5], 0xAB);
  EXPECT_EQ(front_end.lines[2], "1 texts are longer than records hold and were cut");
}

TEST_F(Gpx, TimesOfAnyZonePlacesAtTheDateLineAndForeignLettersAreRead) {
  EXPECT_EQ(read_sample("cdata_and_times.gpx"), 6);
  EXPECT_EQ(store.track_point(1).ident, "\334ber L\363dz - i obratno");
  EXPECT_EQ(store.track_point(1).altitude, 12.5F);
  for (int i = 1; i <= 4; ++i) EXPECT_EQ(store.track_point(i).time.seconds, kNoon) << i;
  for (int i = 2; i <= 6; ++i) EXPECT_EQ(store.track_point(i).altitude, store::kNotKnown) << i;
  EXPECT_EQ(store.track_point(3).position.longitude, 180);
  for (int i = 5; i <= 6; ++i) EXPECT_EQ(store.track_point(i).time.seconds, 0U) << i;
  EXPECT_EQ(
      front_end.lines[2],
      "4 points have no valid position and were passed over, the first in line 12; 1 times could not be read; "
      "2 altitudes, depths or distances could not be read; 11 characters that receivers do not have were replaced");
}

TEST_F(Gpx, TextsThatAreNoTimesAreRefused) {
  for (const char* text :
       {"", "2002-06-01", "2002-06-01T12:00", "2002-02-30T12:00:00Z", "2002-06-01T24:00:01Z", "2002-06-01T12:60:00Z",
        "2002-06-01T12:00:00.Z", "2002-06-01T12:00:00+", "2002-6-1T12:00:00Z", "2002-06-01T12:00:00+02:60",
        "2002-06-01T12:00:00Zulu", "12002-06-01T12:00:00Z"})
    EXPECT_FALSE(parse_iso_time(text)) << text;
  EXPECT_EQ(parse_iso_time("2002-05-31T24:00:00Z")->seconds, kNoon - 43200);
  EXPECT_EQ(parse_iso_time("2126-02-06T06:28:15Z")->seconds, 0xFFFFFFFFU);
  EXPECT_EQ(parse_iso_time("2126-02-06T06:28:16Z")->seconds, 0U);
  EXPECT_EQ(parse_iso_time("1989-12-30T23:59:59Z")->seconds, 0U);
}

TEST_F(Gpx, WhatIsNoGpxIsRefusedInOneBoxAndLeavesTheStoreAlone) {
  struct Case {
    std::string_view text, reason;
  };
  for (const Case& c : {Case{"<gpx>\n<wpt lat=\"1\" lon=\"2\"/>\n<wpt lat=\"1\" lon=\"2></gpx>",
                             "a file is no whole XML document: line 3: "},
                        Case{"<kml xmlns=\"http://www.opengis.net/kml/2.2\"></kml>",
                             "a file holds no GPX data but an XML document 'kml'"},
                        Case{"", "a file is no whole XML document: "},
                        Case{"<gpx></gpx>\n<?xml version=\"1.0\"?>\n<gpx></gpx>", "line 3: more than one document"},
                        Case{"<gpx><wpt lat=\"1\" lon=\"2\"/></gpx>\nrest", "text outside the document"},
                        Case{"rest<gpx><wpt lat=\"1\" lon=\"2\"/></gpx>", "text outside the document"},
                        Case{std::string_view("<gpx></gpx>\0\0<gpx></gpx>", 24), "text outside the document"},
                        Case{"<?xml version=\"1.0\"?>", "a file is no whole XML document: "}}) {
    front_end.boxes.clear();
    EXPECT_EQ(read(c.text), -1);
    ASSERT_EQ(front_end.boxes.size(), 1U) << c.text;
    EXPECT_EQ(front_end.boxes[0].first, "do_input");
    EXPECT_THAT(front_end.boxes[0].second, HasSubstr(c.reason));
  }
  for (const char* name : {"version_1_0.gpx", "maker_extensions.gpx", "cdata_and_times.gpx"}) {
    const std::string text = sample(std::string("gpx/") + name);
    for (std::size_t size = 0; size < text.rfind('>'); ++size)
      ASSERT_EQ(read(text.substr(0, size)), -1) << name << size;
  }
  EXPECT_TRUE(store.empty());
}

TEST_F(Gpx, FilesInUtf16AreReadAsWell) {
  std::string utf16 = "\xFF\xFE";
  for (const char c :
       std::string_view("<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<gpx><wpt lat=\"1\" lon=\"2\"/></gpx>"))
    utf16 += {c, '\0'};
  EXPECT_TRUE(recognises_gpx(utf16));
  EXPECT_EQ(read(utf16), 1);
  EXPECT_FALSE(recognises_gpx("W  KIEL"));
}

TEST_F(Gpx, TheDeclaredEncodingIsReadOrSaidToBeUnread) {
  struct Case {
    std::string_view encoding, name, read;
    bool is_unread;
  };
  for (const Case& c :
       {Case{"windows-1252", "K\xFCste \x80", "K\xFCste EUR", false}, Case{"Latin1", "K\xFCste", "K\xFCste", false},
        // What would be one letter of UTF-8.
        Case{"ISO-8859-1", "\xC3\xBC", "\xC3\xBC", false}, Case{"UTF-8", "K\xC3\xBCste", "K\xFCste", false},
        Case{"utf-16", "K\xC3\xBCste", "K\xFCste", false}, Case{"windows-1251", "\xC3\xBCste", "\xC3\xBCste", true}}) {
    store.clear_all();
    front_end.lines.clear();
    EXPECT_EQ(read("<?xml version='1.0' encoding='" + std::string(c.encoding) +
                   "'?>\n<gpx><wpt lat=\"1\" lon=\"2\"><name>" + std::string(c.name) + "</name></wpt></gpx>"),
              1);
    EXPECT_EQ(store.waypoint(1).ident, c.read) << c.encoding;
    EXPECT_EQ(front_end.lines[1], c.is_unread ? "The file is in the encoding windows-1251, of which only plain letters "
                                                "are read: other letters may be wrong."
                                              : "");
  }
}

// Characters that are none would end a text, or be bytes of no letter.
TEST_F(Gpx, TextsHoldCharactersOnly) {
  EXPECT_EQ(read_elements("<wpt lat=\"1\" lon=\"2\"><name>A&#0;B&#xD83D;C&#x110000;&#1;\x02&#233;&#x20AC;</name>"
                          "<cmt>&lt;b&gt; &amp;amp; &ouml; &; AT&T &quot;<![CDATA[&lt;]]></cmt></wpt>"),
            1);
  EXPECT_EQ(store.waypoint(1).ident, "A?B?C??\x2D\351EUR");
  EXPECT_EQ(store.waypoint(1).comment, "<b> &amp; &ouml; &; AT&T \"&lt;");
  EXPECT_EQ(front_end.lines[2], "6 characters that receivers do not have were replaced");
  // A reference that the text ends in is none.
  EXPECT_EQ(read_elements("<wpt lat=\"1\" lon=\"2\"><name>A&amp</name></wpt><wpt lat=\"&#x33\" lon=\"2\"/>"), 1);
  EXPECT_EQ(store.waypoint(2).ident, "A&amp");
}

TEST_F(Gpx, WhiteSpaceAroundValuesIsNoPartOfThem) {
  EXPECT_EQ(read_elements("<wpt lat=\"1\n\" lon=\"\t2\"><name>\tA  B</name><sym> Residence </sym><ele>\r\n 7\t</ele>"
                          "<time> 2002-06-01T12:00:00Z </time></wpt>"
                          "<wpt lat=\"1\" lon=\"3\"><ele>12 m</ele><type> event </type></wpt>"
                          "<wpt lat=\"1\" lon=\"3\"><ele>1,5</ele></wpt><wpt lat=\"1\" lon=\"4\"><ele/></wpt>"),
            4);
  const store::ItemRecord first = store.waypoint(1);
  EXPECT_EQ(first.ident, "A B");
  EXPECT_EQ(first.symbol, 10);
  EXPECT_EQ(first.altitude, 7);
  EXPECT_EQ(first.time.seconds, kNoon);
  EXPECT_FALSE(store::is_known(store.event(1).altitude));
  EXPECT_FALSE(store::is_known(store.waypoint(2).altitude));
  EXPECT_EQ(front_end.lines[2], "2 altitudes, depths or distances could not be read");
}

TEST_F(Gpx, ElementsOfBothVersionsAreReadHoweverManyNamespacesThereAre) {
  std::string declarations;
  for (int i = 0; i < 20; ++i) declarations += " xmlns:n" + std::to_string(i) + "=\"http://example.org\"";
  EXPECT_EQ(read("<gpx xmlns=\"http://www.topografix.com/GPX/1/1\"" + declarations +
                 " xmlns:old=\"http://www.topografix.com/GPX/1/0\""
                 " xmlns:x=\"http://www.garmin.com/xmlschemas/GpxExtensions/v3\">"
                 "<old:wpt lat=\"1\" lon=\"2\"><n3:name>NO</n3:name><name>YES</name><old:ele>5</old:ele>"
                 "<extensions><x:Depth>6</x:Depth><n19:Depth>7</n19:Depth></extensions></old:wpt></gpx>"),
            1);
  EXPECT_EQ(store.waypoint(1).ident, "YES");
  EXPECT_EQ(store.waypoint(1).altitude, 5);
  EXPECT_EQ(store.waypoint(1).depth, 6);
}

TEST_F(Gpx, DocumentsOfAnyDepthAreRead) {
  std::string deep;
  constexpr int kDepth = 100000;
  for (int i = 0; i < kDepth; ++i) deep += "<a>";
  for (int i = 0; i < kDepth; ++i) deep += "</a>";
  EXPECT_EQ(read_elements("<wpt lat=\"1\" lon=\"2\"><name>A</name><extensions>" + deep + "</extensions></wpt>"), 1);
  EXPECT_EQ(store.waypoint(1).ident, "A");
}

TEST_F(Gpx, AnEmptyTrackGivesItsNameToNoOther) {
  const std::string point = "<trkseg><trkpt lat=\"1\" lon=\"2\"/></trkseg>";
  EXPECT_EQ(read_elements("<trk>" + point + "</trk><trk><name>A</name><trkseg/></trk><trk>" + point + "</trk>"), 2);
  EXPECT_EQ(store.track_point(2).segment_flag, store::kStartsSegment);
  EXPECT_EQ(store.track_point(2).ident, "");
}

TEST_F(Gpx, ATrackWithoutANameIsNoPartOfTheLogBefore) {
  const std::string point = "<trkseg><trkpt lat=\"1\" lon=\"2\"/></trkseg></trk>";
  EXPECT_EQ(read("<gpx xmlns:x=\"http://www.garmin.com/xmlschemas/GpxExtensions/v3\"><trk>" + point +
                 "<trk><extensions><x:TrackExtension><x:DisplayColor>Red</x:DisplayColor></x:TrackExtension>"
                 "</extensions>" +
                 point + "<trk>" + point + "</gpx>"),
            3);
  EXPECT_EQ(store.track_point(1).segment_flag, store::kStartsSegment);
  for (const int i : {2, 3}) {
    EXPECT_EQ(store.track_point(i).segment_flag, store::kStartsNamedTrack);
    EXPECT_EQ(store.track_point(i).ident, "");
    EXPECT_EQ(store::kColourNames[store.track_point(i).colour], i == 2 ? "Red" : "Default Color");
  }
}

TEST_F(Gpx, RoutesWithoutRoomLetTheRestBeRead) {
  std::string elements;
  for (int i = 0; i < 102; ++i) elements += "<rte><rtept lat=\"1\" lon=\"2\"/></rte>";
  EXPECT_EQ(read_elements(elements + "<trk><trkseg><trkpt lat=\"1\" lon=\"2\"/></trkseg></trk>"), 201);
  EXPECT_EQ(store.track_point_count(), 1);
  EXPECT_EQ(front_end.boxes.size(), 1U);
  EXPECT_EQ(front_end.lines[2], "2 routes found no room");
}

TEST_F(Gpx, RoutesWithoutAFreeNumberOfTheirOwnTakeAnother) {
  EXPECT_EQ(read_elements("<rte><number>99</number></rte><rte><number>99</number></rte><rte><number>4711</number></rte>"
                          "<rte/>"),
            4);
  for (const int number : {0, 1, 2, 99}) EXPECT_TRUE(store.route(number).header) << number;
}

// A number of the set of 16 would be another symbol.
TEST_F(Gpx, SymbolsByNameAreOfASetThatHasThem) {
  settings.IconSelector = store::IconSet::G12xl;
  EXPECT_EQ(read_elements("<wpt lat=\"1\" lon=\"2\"><sym>Residence</sym></wpt>"), 1);
  EXPECT_EQ(store.waypoint(1).symbol, 10);
  EXPECT_EQ(store.waypoint(1).symbol_mode, static_cast<int>(store::IconSet::Giii));
  start_item("CAR OF 16", 1, 2).symbol = 3;
  item().symbol_mode = static_cast<std::uint8_t>(store::IconSet::G12xl);
  (void)store.push_waypoint(0);
  EXPECT_THAT(write(), HasSubstr("<sym>Car</sym><extensions><pelorix:item symbol=\"3\" set=\"2\"/></extensions>"));
}

TEST_F(Gpx, AWaypointWithEverythingIsWrittenSo) {
  settings.IconSelector = store::IconSet::Giii;
  store::ItemRecord& item = start_item("M\xDCLLER & <S\xD6HNE>", -33.857, 180);
  item.comment = "Tab\tand \"quotes\"";
  item.altitude = 12.4F;
  item.depth = 3.5F;
  item.proximity_distance = 250;
  item.time = {kNoon};
  item.symbol = 150;
  item.display_mode = 1;
  item.colour = 12;
  item.waypoint_class = 64;
  item.subclass = {0, 0xAB};
  item.city = "Kiel";
  item.country = "DE";
  item.cross_road = "A & B";
  (void)store.push_waypoint(0);
  start_item("NOWHERE", std::numeric_limits<double>::quiet_NaN(), 0);
  (void)store.push_waypoint(0);
  options.now_unix = 1024128000;
  EXPECT_EQ(write(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<gpx version=\"1.1\" creator=\"Pelorix\" xmlns=\"http://www.topografix.com/GPX/1/1\" "
            "xmlns:gpxx=\"http://www.garmin.com/xmlschemas/GpxExtensions/v3\" xmlns:pelorix=\"urn:pelorix:gpx:1\">\n"
            "<metadata><time>2002-06-15T08:00:00Z</time></metadata>\n"
            "<wpt lat=\"-33.857\" lon=\"-180\"><ele>12.4</ele><time>2002-06-01T12:00:00Z</time>"
            "<name>M\xC3\x9CLLER &amp; &lt;S\xC3\x96HNE&gt;</name><cmt>Tab-and &quot;quotes&quot;</cmt>"
            "<sym>Boat Ramp</sym><extensions><gpxx:WaypointExtension><gpxx:Proximity>250</gpxx:Proximity>"
            "<gpxx:Depth>3.5</gpxx:Depth><gpxx:DisplayMode>SymbolOnly</gpxx:DisplayMode>"
            "<gpxx:Address><gpxx:City>Kiel</gpxx:City><gpxx:Country>DE</gpxx:Country></gpxx:Address>"
            "</gpxx:WaypointExtension><pelorix:item kind=\"W\" colour=\"12\" class=\"64\" "
            "subclass=\"00AB00000000000000000000000000000000\" crossroad=\"A &amp; B\"/></extensions></wpt>\n"
            "</gpx>\n");
  EXPECT_EQ(front_end.lines[2],
            "1 texts hold characters that separate fields or lines: written with '-'; 1 items without a position are "
            "not written");
}

// Items of all kinds with each field in turn as it is not in other files.
void fill_store(store::ItemStore& store) {
  const auto item = [&store](int variant) {
    store.start_item();
    store::ItemRecord& next = store.CurrentItem;
    next.ident = "ITEM " + std::to_string(variant);
    next.position = {-90 + variant / 3.0, -180 + variant / 7.0};
    next.symbol_mode = static_cast<std::uint8_t>(variant % 6);
    next.symbol = static_cast<std::int16_t>(variant % 5 == 0 ? 20 : variant);
    next.display_mode = static_cast<std::int16_t>(variant % 7);
    next.colour = static_cast<std::uint8_t>(variant % 17);
    if (variant % 2 == 0) next.altitude = static_cast<float>(variant) / 3;
    if (variant % 3 == 0) next.depth = static_cast<float>(variant) / 7;
    if (variant % 4 == 0) next.time = {kNoon + static_cast<std::uint32_t>(variant)};
    if (variant % 5 == 0) next.proximity_distance = static_cast<float>(variant) + 0.1F;
    next.waypoint_class = static_cast<std::uint8_t>(variant % 3 == 0 ? store::kClassNotSet : variant);
    next.record_type = static_cast<std::uint16_t>(variant % 2 == 0 ? 0 : 108);
    next.detail_kind = static_cast<std::uint8_t>(variant % 4);
    next.subclass[static_cast<std::size_t>(variant) % 18] = static_cast<std::uint8_t>(variant % 3);
    next.comment = variant % 2 == 0 ? " \"C\" & <c>  \xFC" : "";
    if (variant % 3 == 0) next.name = "N " + std::to_string(variant);
    if (variant % 4 == 0) next.facility = "F'\xDF";
    if (variant % 5 == 0) next.city = "Stra\337e";
    if (variant % 2 == 0) next.state = "SH";
    if (variant % 7 == 0) next.country = "DE";
    if (variant % 6 == 0) next.address = std::string(50, 'x');
    if (variant % 3 == 1) next.cross_road = "<&>";
    if (variant % 3 == 2) next.link_ident = "L";
  };
  for (int i = 1; i <= 60; ++i) {
    item(i);
    ASSERT_EQ(store.push_waypoint(0), 0);
  }
  for (const store::SymbolRow& row : store::kSymbols) {
    item(3);
    store.CurrentItem.symbol = row.code;
    ASSERT_EQ(store.push_waypoint(0), 0);
  }
  for (int i = 1; i <= 5; ++i) {
    item(i);
    store.CurrentItem.proximity_distance = i == 2 ? store::kNotKnown : static_cast<float>(i - 1) / 3;
    ASSERT_EQ(store.push_proximity(), 0);
    item(i + 10);
    ASSERT_EQ(store.push_event(), 0);
  }
  for (const std::uint32_t number : {0U, 7U, 99U}) {
    store.start_route(number, number == 7 ? "" : number == 0 ? "00" : "odd", number == 7 ? "Seven & up" : "");
    ASSERT_EQ(store.push_route(true), 0);
    for (int i = 1; i <= (number == 99 ? 0 : 5); ++i) {
      item(i * 7);
      if (i != 3) store.CurrentItem.detail_kind = store::kNoDetails;
      ASSERT_EQ(store.push_route(true), 0);
      const auto link_class = static_cast<std::uint16_t>(i * 300);
      if (i % 2 == 0) (void)store.set_route_link(link_class, {7, 8, 9}, i == 2 ? "" : "via \"here\"");
    }
  }
  for (int i = 0; i < 12; ++i) {
    if (i % 3 == 1) store.start_segment();
    if (i % 5 == 2)
      store.start_track_log(i == 2 ? "" : "Log <" + std::to_string(i), i == 7 ? "Red" : "Default Color", i);
    store.start_item();
    store.CurrentItem.position = {i * 1.1, -i * 0.7};
    if (i % 2 == 0) store.CurrentItem.altitude = static_cast<float>(i) / 7;
    if (i % 3 == 0) store.CurrentItem.depth = static_cast<float>(i) / 3;
    if (i % 4 != 0) store.CurrentItem.time = {kNoon + static_cast<std::uint32_t>(i)};
    ASSERT_EQ(store.push_track(), 0);
  }
}

TEST_F(Gpx, WhateverIsWrittenComesBackAsItWas) {
  settings.HandleReadDups = store::Duplicates::Ignore;  // route points come a second time
  for (const store::IconSet set : {store::IconSet::Lei15, store::IconSet::G12xl, store::IconSet::Giii}) {
    settings.IconSelector = set;
    settings.GPS = set == store::IconSet::Giii ? store::Family::Lowrance : store::Family::Garmin;
    store.clear_all();
    fill_store(store);
    std::vector<store::ItemRecord> before = support::all_records(store);
    const std::string text = write();
    store.clear_all();
    EXPECT_GT(read(text), 0);
    std::vector<store::ItemRecord> after = support::all_records(store);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
      before[i].number = after[i].number = 0;  // serial numbers
      ASSERT_EQ(support::described(after[i]), support::described(before[i]));
      ASSERT_EQ(after[i].position, before[i].position);
    }
    EXPECT_EQ(write(), text);
    EXPECT_EQ(front_end.lines[2], "");
  }
}

}  // namespace
}  // namespace formats
