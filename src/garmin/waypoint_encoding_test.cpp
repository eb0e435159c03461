// What goes out when an item was not received in the format, or holds what no receiver can have. Offsets are those of
// the published layouts.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

#include "garmin/waypoint_records.h"

namespace garmin {
namespace {

using store::ItemRecord;

std::optional<base::Bytes> encode(std::uint16_t number, const ItemRecord& item, const store::Settings& settings = {}) {
  const bool is_waypoint = find_format(kWaypointFormats, number) != nullptr;
  return encode_record(is_waypoint ? kWaypointFormats : kProximityFormats, number, item, settings);
}
int byte(std::uint16_t number, std::size_t offset, const ItemRecord& item, const store::Settings& settings = {}) {
  const std::optional<base::Bytes> data = encode(number, item, settings);
  return data && offset < data->size() ? (*data)[offset] : -1;
}
std::string text(std::uint16_t number, std::size_t offset, std::size_t size, const ItemRecord& item) {
  const base::Bytes data = encode(number, item).value_or(base::Bytes());
  return std::string(data.begin(), data.end()).substr(std::min(offset, data.size()), size);
}
std::uint32_t u32(std::uint16_t number, std::size_t offset, const ItemRecord& item) {
  const base::Bytes data = encode(number, item).value_or(base::Bytes());
  return base::ByteReader(std::span(data).subspan(std::min(offset, data.size()))).u32();
}

ItemRecord symbol_item(int symbol, store::IconSet set) {
  ItemRecord item = store::blank_item();
  item.symbol = static_cast<std::int16_t>(symbol);
  item.symbol_mode = static_cast<std::uint8_t>(set);
  return item;
}
ItemRecord class_item(std::uint16_t record_type, int waypoint_class) {
  ItemRecord item = store::blank_item();
  item.record_type = record_type;
  item.waypoint_class = static_cast<std::uint8_t>(waypoint_class);
  return item;
}

TEST(WaypointEncoding, AClassGoesOutAsTheOneOfTheSameMeaning) {
  struct Row {
    std::uint16_t type;
    int waypoint_class;
    int as_106, as_108, as_150, as_151, as_152, as_154, as_155;
  };
  for (const Row& row : {
           Row{108, 0x43, 0, 0x43, 3, 1, 3, 3, 3},  // VOR
           Row{108, 0x41, 0, 0x41, 1, 2, 1, 1, 1},  // intersection, which D151 does not have
           Row{108, 0x46, 0, 0x46, 4, 2, 4, 7, 4},  // airport NDB
           Row{108, 0x83, 0, 0x83, 4, 2, 4, 4, 4},  // map address
           Row{110, 0x83, 0, 0x83, 4, 2, 4, 4, 4},  //
           Row{106, 0x83, 0x83, 0, 4, 2, 4, 4, 4},  //
           Row{151, 0, 0, 0x40, 0, 0, 0, 0, 0},     // airport
           Row{151, 3, 0, 0, 7, 3, 5, 9, 5},        // locked
           Row{152, 5, 0, 0, 7, 3, 5, 9, 5},        //
           Row{154, 5, 0, 0x44, 5, 2, 4, 5, 4},     // runway threshold, where others have "locked"
           Row{154, 8, 0, 0, 4, 2, 4, 8, 4},        // user, symbol only
           Row{155, 77, 0, 0, 4, 2, 4, 4, 77},      // no class of any meaning
           Row{105, 0x40, 0, 0, 4, 2, 4, 4, 4},     // a type without classes
           Row{0, 0x40, 0, 0, 4, 2, 4, 4, 4},       //
           Row{108, 255, 0, 0, 4, 2, 4, 4, 4},      // not set
           Row{65535, 200, 0, 0, 4, 2, 4, 4, 4},    //
       }) {
    const ItemRecord item = class_item(row.type, row.waypoint_class);
    SCOPED_TRACE(std::to_string(row.type) + "/" + std::to_string(row.waypoint_class));
    EXPECT_EQ(byte(106, 0, item), row.as_106);
    EXPECT_EQ(byte(108, 0, item), row.as_108);
    EXPECT_EQ(byte(109, 1, item), row.as_108);
    EXPECT_EQ(byte(110, 1, item), row.as_108);
    EXPECT_EQ(byte(150, 8, item), row.as_150);
    EXPECT_EQ(byte(151, 123, item), row.as_151);
    EXPECT_EQ(byte(152, 123, item), row.as_152);
    EXPECT_EQ(byte(154, 123, item), row.as_154);
    EXPECT_EQ(byte(155, 123, item), row.as_155);
    EXPECT_EQ(byte(450, 10, item), row.as_150);
  }
}

TEST(WaypointEncoding, ASubclassGoesOutOnlyInTheFormatThatItBelongsTo) {
  const std::string plain = std::string(6, '\0') + std::string(12, '\xFF');
  ItemRecord item = class_item(108, 0x80);
  EXPECT_EQ(text(108, 6, 18, item), std::string(18, '\0'));  // that of a map point, as received
  item.subclass.fill(7);
  EXPECT_EQ(text(109, 6, 18, item), std::string(18, '\7'));
  EXPECT_EQ(text(106, 1, 13, item), std::string(13, '\0'));
  item.record_type = 106;
  EXPECT_EQ(text(106, 1, 13, item), std::string(13, '\7'));
  EXPECT_EQ(text(108, 6, 18, item), plain);
  EXPECT_EQ(text(110, 6, 18, class_item(108, 0)), plain);
  EXPECT_EQ(text(108, 6, 18, store::blank_item()), plain);
}

TEST(WaypointEncoding, SymbolsAreConvertedBetweenTheTwoSets) {
  using store::IconSet;
  store::Settings settings;
  settings.default_G12_icon = 12;
  const auto of_16 = [&](int symbol, IconSet set) { return byte(103, 58, symbol_item(symbol, set), settings); };
  const auto of_type = [&](int symbol, IconSet set) {
    const ItemRecord item = symbol_item(symbol, set);
    return byte(102, 62, item, settings) + 256 * byte(102, 63, item, settings);
  };
  EXPECT_EQ(of_16(9, IconSet::G12xl), 9);
  EXPECT_EQ(of_16(170, IconSet::Giii), 3);  // car
  EXPECT_EQ(of_16(8196, IconSet::Lei15), 15);
  EXPECT_EQ(of_16(8, IconSet::StreetPilot), 2);
  EXPECT_EQ(of_16(8210, IconSet::Giii), 12);  // no equal: the configured one
  EXPECT_EQ(of_16(-1, IconSet::G12xl), 12);
  EXPECT_EQ(of_type(3, IconSet::G12xl), 170);
  EXPECT_EQ(of_type(15, IconSet::G12xl), 8196);
  EXPECT_EQ(of_type(3, IconSet::Giii), 3);
  EXPECT_EQ(of_type(-3, IconSet::Giii), 18);
  // No number of the 16: the user has that set chosen for a receiver with the other.
  EXPECT_EQ(of_type(8210, IconSet::G12xl), 8210);
  EXPECT_EQ(of_16(170, IconSet::G12xl), 3);
  EXPECT_EQ(byte(101, 62, symbol_item(255, IconSet::Giii)), 255);
  EXPECT_EQ(byte(101, 62, symbol_item(256, IconSet::Giii)), 18);

  settings.default_G12_icon = 16;
  settings.G12XL_II_Symbol_Mapping.fill(-70000);
  EXPECT_EQ(of_16(8210, IconSet::Giii), 0);
  EXPECT_EQ(of_type(3, IconSet::G12xl), 18);
}

TEST(WaypointEncoding, DisplayOptionsAndColoursHaveACodeInEveryFormat) {
  for (const auto& [mode, code, code_104] : {std::array{0, 0, 3}, std::array{1, 1, 1}, std::array{3, 0, 3},
                                             std::array{5, 2, 5}, std::array{-1, 2, 5}, std::array{4, 2, 5}}) {
    ItemRecord item = store::blank_item();
    item.display_mode = static_cast<std::int16_t>(mode);
    EXPECT_EQ(byte(103, 59, item), code) << mode;
    EXPECT_EQ(byte(108, 2, item), code) << mode;
    EXPECT_EQ(byte(109, 2, item) >> 5, code) << mode;
    EXPECT_EQ(byte(104, 64, item), code_104) << mode;
    EXPECT_EQ(byte(155, 126, item), code_104) << mode;
  }
  // Nobody's choice, a black that was one, blue, the dark red of the receiver, the default, none at all.
  for (const auto& [colour, of_107, of_108, packed] :
       {std::array{0, 0, 255, 31}, std::array{17, 0, 0, 0}, std::array{2, 3, 12, 12}, std::array{9, 0, 1, 1},
        std::array{16, 0, 255, 31}, std::array{99, 0, 255, 31}}) {
    ItemRecord item = store::blank_item();
    item.colour = static_cast<std::uint8_t>(colour);
    EXPECT_EQ(byte(107, 64, item), of_107) << colour;
    EXPECT_EQ(byte(108, 1, item), of_108) << colour;
    EXPECT_EQ(byte(109, 2, item), packed) << colour;
    EXPECT_EQ(byte(110, 2, item), packed) << colour;
  }
}

TEST(WaypointEncoding, PositionsGoToTheNearestSemicircleAndNoneBeyondThePoles) {
  const auto at = [](double latitude, double longitude) {
    ItemRecord item = store::blank_item();
    item.position = {latitude, longitude};
    return text(105, 0, 8, item);
  };
  const auto is = [](const char(&literal)[9]) { return std::string(literal, 8); };
  EXPECT_EQ(at(90, 180), is("\0\0\0\x40\0\0\0\x80"));
  EXPECT_EQ(at(-90, -180), is("\0\0\0\xC0\0\0\0\x80"));
  EXPECT_EQ(at(0.00000008, -0.00000008), is("\x01\0\0\0\xFF\xFF\xFF\xFF"));
  EXPECT_EQ(at(0.00000004, -0.00000004), is("\0\0\0\0\0\0\0\0"));
  EXPECT_EQ(at(90.00000001, 270), is("\0\0\0\x40\0\0\0\xC0"));
  EXPECT_EQ(at(0, 360.00000001), is("\0\0\0\0\0\0\0\0"));
  EXPECT_EQ(at(0, -181.40625), is("\0\0\0\0\0\0\0\x7F"));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  for (const double bad : {nan, infinite, -infinite, 1e300}) {
    EXPECT_EQ(at(bad, 0), "") << bad;
    EXPECT_EQ(at(0, bad), "") << bad;
  }
  EXPECT_EQ(at(90.001, 0), "");
  EXPECT_EQ(at(-91, 0), "");
}

TEST(WaypointEncoding, HeightsAndDistancesThatAreNoNumbersAreNotKnown) {
  constexpr std::uint32_t kNone = 0x69045951;  // 1.0e25
  const float infinite = std::numeric_limits<float>::infinity();
  for (const float metres : {store::kNotKnown, 1.0e25F, infinite, -infinite, std::nanf("")}) {
    ItemRecord item = store::blank_item();
    item.altitude = item.depth = item.proximity_distance = metres;
    for (const std::size_t offset : {32U, 36U, 40U}) EXPECT_EQ(u32(108, offset, item), kNone) << metres;
    for (const int number : {101, 104, 151, 155, 400})
      EXPECT_EQ(u32(static_cast<std::uint16_t>(number), 58, item), 0U) << number;
    EXPECT_EQ(u32(107, 60, item), 0U);
    EXPECT_EQ(u32(450, 117, item), 0U);
  }
  ItemRecord item = store::blank_item();
  EXPECT_EQ(u32(108, 40, item), kNone);  // a distance of 0 is none
  item.proximity_distance = item.altitude = -1.5F;
  EXPECT_EQ(u32(108, 40, item), 0xBFC00000);
  EXPECT_EQ(u32(101, 58, item), 0xBFC00000);
  const auto whole_metres = [&](float metres) {
    item.altitude = metres;
    return text(151, 118, 2, item);
  };
  EXPECT_EQ(whole_metres(-1.5F), "\xFE\xFF");
  EXPECT_EQ(whole_metres(1233.6F), "\xD2\x04");
  EXPECT_EQ(whole_metres(1e9F), "\xFF\x7F");
  EXPECT_EQ(whole_metres(-1e9F), std::string("\x00\x80", 2));
  for (const float metres : {store::kNotKnown, infinite, std::nanf("")})
    EXPECT_EQ(whole_metres(metres), std::string(2, '\0')) << metres;
}

TEST(WaypointEncoding, TextsGoOutInTheLettersOfTheFormat) {
  ItemRecord item = store::blank_item();
  item.ident = "MADE@1TOO LONG";
  item.comment = "Caf\xE9 \"Stra\337e\" 50%";
  item.city = "K\370benhavn [old]";
  item.state = "\xDF";
  EXPECT_EQ(text(100, 0, 6, item), "MADE@1");  // as given
  EXPECT_EQ(text(100, 18, 40, item), "CAFE \"STRASSE\" 50-                      ");
  EXPECT_EQ(text(151, 92, 26, item), "Kobenhavn [old]         ss");
  EXPECT_EQ(text(108, 48, 80, item), std::string("MADE@1TOO LONG\0Cafe \"Strasse\" 50%\0\0Kobenhavn [old]\0\0\0", 53));
}

TEST(WaypointEncoding, TheNameOfAnAirportIsTheFacilityOfOtherFormatsAndTheOtherWayRound) {
  ItemRecord item = class_item(154, 0);
  item.name = "Kiel Holtenau";
  EXPECT_EQ(text(108, 50, 13, item), "Kiel Holtenau");
  EXPECT_EQ(text(155, 62, 14, item), "Kiel Holtenau ");
  item.facility = "Hangar";  // only a file can have given it both
  EXPECT_EQ(text(108, 50, 7, item), std::string("Hangar\0", 7));
  item.name = "";
  EXPECT_EQ(text(155, 62, 6, item), "      ");
  item.record_type = 108;
  EXPECT_EQ(text(155, 62, 6, item), "Hangar");
  EXPECT_EQ(text(450, 47, 6, item), "Hangar");
}

// A packet of more than 254 bytes could not be received again.
TEST(WaypointEncoding, TheLastTextsAreCutWhereARecordWouldBecomeTooLong) {
  ItemRecord item = store::blank_item();
  item.ident = std::string(50, 'i');
  item.comment = std::string(40, '\xDF');  // twice as many letters, cut to 40
  item.facility = std::string(30, 'f');
  item.city = std::string(24, 'c');
  item.address = std::string(50, 'a');
  item.cross_road = std::string(50, 'x');
  const std::string front = std::string(50, 'i') + '\0' + std::string(40, 's') + '\0' + std::string(30, 'f') + '\0' +
                            std::string(24, 'c') + '\0';
  EXPECT_EQ(text(108, 48, 255, item), front + std::string(50, 'a') + '\0' + '\0');
  EXPECT_EQ(text(110, 62, 255, item), front + std::string(36, 'a') + '\0' + '\0');
  EXPECT_EQ(encode(108, item)->size(), 248U);
  EXPECT_EQ(encode(110, item)->size(), 248U);
  item.address = "short";
  EXPECT_EQ(text(109, 52, 255, item), front + "short" + '\0' + std::string(41, 'x') + '\0');
}

}  // namespace
}  // namespace garmin
