// The records are byte literals written by hand from the published layouts.
#include "garmin/waypoint_records.h"

#include <gtest/gtest.h>

#include <optional>

#include "tests/support/described_store.h"

namespace garmin {
namespace {

using base::Bytes;
using store::ItemRecord;

template <std::size_t N>
std::string data_of(const char (&literal)[N]) {
  return {literal, N - 1};
}

Bytes to_bytes(const std::string& data) { return {data.begin(), data.end()}; }

DecodeResult decode(std::uint16_t number, const std::string& data, ItemRecord& item) {
  item = store::blank_item();
  return decode_record(kWaypointFormats, number, "Pid_Wpt_Data", to_bytes(data), item);
}

ItemRecord decoded(std::span<const RecordFormat> formats, std::uint16_t number, const std::string& data) {
  ItemRecord item = store::blank_item();
  const DecodeResult result = decode_record(formats, number, "Pid", to_bytes(data), item);
  EXPECT_TRUE(result) << result.refusal;
  return item;
}
ItemRecord decoded(std::uint16_t number, const std::string& data) { return decoded(kWaypointFormats, number, data); }

constexpr std::uint8_t kG12xl = 2;

#define PLACE "\x00\x00\x00\xE0\x00\x00\x00\x08"  // 45 S (-2^29), 11.25 E (2^26)
// Ident, place, unused, comment; as receivers may send it and as it is sent to them.
#define HEAD_WITH(unused) "BRIDGE" PLACE unused "GO ACROSS HERE                          "
#define HEAD HEAD_WITH("\x99\x99\x99\x99")
#define HEAD_SENT HEAD_WITH("\0\0\0\0")
#define DISTANCE_250 "\x00\x00\x7A\x43"
#define NOT_KNOWN "\x51\x59\x04\x69"
#define NAME_30 "TOWN FIELD                    "
#define CITY_24 "SPRINGFIELD             "
#define SUBCLASS_13 "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D"
#define D106_FROM_SUBCLASS SUBCLASS_13 PLACE "\x12\x20MAIN ST\0I 95\0"
#define SUBCLASS_18 SUBCLASS_13 "\x0E\x0F\x10\x11\x12"
// Symbol 8210, subclass, place, altitude 1234.5 m, depth -2.5 m, distance 250 m, state, country.
#define FULL_PLACE "\x12\x20" SUBCLASS_18 PLACE "\x00\x50\x9A\x44\x00\x00\x20\xC0" DISTANCE_250 "TXUS"
#define FULL_TEXTS "Pass 12\0steep\0Hut\0Alpville\0High Road 12\0Low Road\0"
// Distance, name, city, state, altitude -2 m, country; an unused byte follows.
#define AVIATION_START DISTANCE_250 NAME_30 CITY_24 "TX\xFE\xFFUS"
#define AVIATION AVIATION_START "\x77"
#define AVIATION_SENT AVIATION_START "\0"

// Ident, country, class, place, altitude, city, state, name, comment.
std::string d150(char waypoint_class, const std::string& altitude) {
  return data_of("KABC  US") + waypoint_class + data_of(PLACE) + altitude + data_of(CITY_24 "TX" NAME_30) +
         "TOWER 118.5" + std::string(29, ' ');
}

ItemRecord drawn(int symbol, int symbol_mode, int display_mode) {
  ItemRecord item = store::blank_item();
  item.position = {-45, 11.25};
  item.symbol = static_cast<std::int16_t>(symbol);
  item.symbol_mode = static_cast<std::uint8_t>(symbol_mode);
  item.display_mode = static_cast<std::int16_t>(display_mode);
  return item;
}
ItemRecord short_item(float distance, int symbol, int symbol_mode, int display_mode, std::uint8_t colour = 0) {
  ItemRecord item = drawn(symbol, symbol_mode, display_mode);
  item.ident = "BRIDGE";
  item.comment = "GO ACROSS HERE";
  item.proximity_distance = distance;
  item.colour = colour;
  return item;
}
ItemRecord long_ident_item(std::uint16_t record_type, std::string_view ident) {
  ItemRecord item = drawn(8210, store::kSymbolModeNotGiven, 3);
  item.ident = ident;
  item.record_type = record_type;
  item.detail_kind = store::kLongIdentDetails;
  return item;
}
ItemRecord road(std::uint8_t waypoint_class) {
  ItemRecord item = long_ident_item(106, "MAIN ST");
  item.waypoint_class = waypoint_class;
  item.subclass = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
  item.link_ident = "I 95";
  return item;
}
ItemRecord full_item(std::uint8_t waypoint_class, int display_mode, std::uint8_t colour, std::uint32_t time = 0) {
  ItemRecord item = drawn(8210, store::kSymbolModeNotGiven, display_mode);
  item.record_type = 108;
  item.waypoint_class = waypoint_class;
  item.detail_kind = waypoint_class == 0 ? store::kNoDetails : store::kFullDetails;
  item.colour = colour;
  item.time = {time};
  item.subclass = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18};
  item.altitude = 1234.5F;
  item.depth = -2.5F;
  item.proximity_distance = 250;
  item.state = "TX";
  item.country = "US";
  item.ident = "Pass 12";
  item.comment = "steep";
  item.facility = "Hut";
  item.city = "Alpville";
  item.address = "High Road 12";
  item.cross_road = "Low Road";
  return item;
}
ItemRecord with_field(ItemRecord item, std::uint16_t record_type, std::uint8_t waypoint_class, float altitude) {
  item.record_type = record_type;
  item.waypoint_class = waypoint_class;
  item.altitude = altitude;
  item.name = "TOWN FIELD";
  item.city = "SPRINGFIELD";
  item.state = "TX";
  item.country = "US";
  return item;
}
ItemRecord airport(std::uint8_t waypoint_class, float distance = 0) {
  ItemRecord item = with_field(short_item(distance, 0, kG12xl, 3), 154, waypoint_class, 1234);
  item.ident = "KABC";
  item.comment = "TOWER 118.5";
  return item;
}

struct Case {
  std::uint16_t number;
  std::string received;
  ItemRecord item;
  std::string sent = received;
};

std::string encoded(std::span<const RecordFormat> formats, std::uint16_t number, const ItemRecord& item) {
  const std::optional<Bytes> data = encode_record(formats, number, item, store::Settings{});
  return data ? std::string(data->begin(), data->end()) : "refused";
}

void expect_kept(std::span<const RecordFormat> formats, const std::vector<Case>& cases) {
  for (const auto& [number, received, item, sent] : cases) {
    const ItemRecord found = decoded(formats, number, received);
    EXPECT_EQ(support::described(found), support::described(item)) << number;
    EXPECT_EQ(found.position, item.position) << number;
    // Both from the item and by way of what the bytes are decoded to.
    EXPECT_EQ(encoded(formats, number, item), sent) << number;
    EXPECT_EQ(encoded(formats, number, found), sent) << number;
  }
}

// What the store has no field for goes out as none: unused bytes, undefined codes, time en route, categories.
TEST(WaypointRecords, EveryWaypointFormatKeepsAllItsFieldsAndGivesThemBack) {
  constexpr int kGivenLater = store::kSymbolModeNotGiven;
  const std::string none = "\xFF\xFF\xFF\xFF";
  const std::string sent_110 =
      data_of("\x01\x81\x1F\x80" FULL_PLACE) + none + data_of(NOT_KNOWN) + none + data_of("\0\0" FULL_TEXTS);
  expect_kept(
      kWaypointFormats,
      {{100, data_of(HEAD), short_item(0, 0, kG12xl, 3), data_of(HEAD_SENT)},
       {101, data_of(HEAD DISTANCE_250 "\x96"), short_item(250, 150, kGivenLater, 3),
        data_of(HEAD_SENT DISTANCE_250 "\x96")},
       {101, data_of(HEAD_SENT "\0\0\0\0\x96"), short_item(0, 150, kGivenLater, 3)},
       {102, data_of(HEAD_SENT DISTANCE_250 "\x12\x20"), short_item(250, 8210, kGivenLater, 3)},
       {103, data_of(HEAD_SENT "\x06\x01"), short_item(0, 6, kG12xl, 1)},
       {103, data_of(HEAD_SENT "\x06\x07"), short_item(0, 6, kG12xl, 5), data_of(HEAD_SENT "\x06\x02")},
       {104, data_of(HEAD_SENT DISTANCE_250 "\x12\x20\x05"), short_item(250, 8210, kGivenLater, 5)},
       {104, data_of(HEAD_SENT DISTANCE_250 "\x12\x20\0"), short_item(250, 8210, kGivenLater, 1),
        data_of(HEAD_SENT DISTANCE_250 "\x12\x20\x01")},
       {105, data_of(PLACE "\x12\x20Long Name Beyond Fifteen\0"), long_ident_item(105, "Long Name Beyond Fifteen")},
       {106, data_of("\x80" D106_FROM_SUBCLASS), road(0x80)},
       {106, data_of("\0" D106_FROM_SUBCLASS), road(0)},  // a user's point, and still with a link
       {107, data_of(HEAD_SENT "\x07\x02" DISTANCE_250 "\x03"), short_item(250, 7, kG12xl, 5, 2)},
       {108, data_of("\x83\x09\x02\x60" FULL_PLACE FULL_TEXTS), full_item(0x83, 5, 1)},
       {108, data_of("\0\xFF\0\x60" FULL_PLACE FULL_TEXTS), full_item(0, 3, store::kDefaultColour)},
       {109, data_of("\x02\x40\x49\x77" FULL_PLACE "\x10\x0E\0\0" FULL_TEXTS), full_item(0x40, 5, 1),
        data_of("\x01\x40\x49\x70" FULL_PLACE) + none + data_of(FULL_TEXTS)},
       {109, data_of("\x01\x40\x3F\x70" FULL_PLACE) + none + data_of(FULL_TEXTS),
        full_item(0x40, 1, store::kDefaultColour)},
       {110, data_of("\x01\x81\x0C\x80" FULL_PLACE "\x10\x0E\0\0\0\0\xA8\x41\x04\x03\x02\x01\x05\0" FULL_TEXTS),
        full_item(0x81, 3, 2, 0x01020304),
        data_of("\x01\x81\x0C\x80" FULL_PLACE) + none + data_of(NOT_KNOWN "\x04\x03\x02\x01\0\0" FULL_TEXTS)},
       {110, sent_110, full_item(0x81, 3, store::kDefaultColour)},
       {110, data_of("\0\x81\x10\x99" FULL_PLACE "\x10\x0E\0\0\0\0\xA8\x41\0\0\0\0\x05\0" FULL_TEXTS),
        full_item(0x81, 3, store::kDefaultColour), sent_110},  // "transparent", and a time of 0
       {150, d150(6, "\xD2\x04"), airport(6)},
       {150, d150(7, "\xD2\x04"), airport(9)},  // locked
       {151, data_of(HEAD AVIATION "\x01"), with_field(short_item(250, 0, kG12xl, 3), 151, 1, -2),
        data_of(HEAD_SENT AVIATION_SENT "\x01")},
       {152, data_of(HEAD_SENT AVIATION_SENT "\x03"), with_field(short_item(250, 0, kG12xl, 3), 152, 3, -2)},
       {154, data_of(HEAD_SENT AVIATION_SENT "\x08\x03\x40"),
        with_field(short_item(250, 16387, kGivenLater, 3), 154, 8, -2)},
       {155, data_of(HEAD_SENT AVIATION_SENT "\x05\x03\x40\x01"),
        with_field(short_item(250, 16387, kGivenLater, 1), 155, 5, -2)}});
}

TEST(WaypointRecords, ProximityFormatsKeepTheirDistance) {
  const std::string place_450 = d150(0, "\xD2\x04") + data_of(DISTANCE_250);
  expect_kept(kProximityFormats, {{400, data_of(HEAD_SENT DISTANCE_250), short_item(250, 0, kG12xl, 3)},
                                  {403, data_of(HEAD_SENT "\x09\x01" DISTANCE_250), short_item(250, 9, kG12xl, 1)},
                                  {450, data_of("\x07\0") + place_450, airport(0, 250), data_of("\0\0") + place_450}});
  ItemRecord seventh = airport(0, 250);
  seventh.number = 7;
  EXPECT_EQ(encoded(kProximityFormats, 450, seventh), data_of("\x07\0") + place_450);
  for (const int number : {101, 102, 104, 107, 108, 109, 110, 151, 152, 154, 155})
    EXPECT_NE(find_format(kProximityFormats, static_cast<std::uint16_t>(number)), nullptr) << number;
}

TEST(WaypointRecords, DisplayCodesAndColoursOfEachFormatBecomeTheSameModesAndColours) {
  for (const auto& [code, mode] : {std::pair('\0', 3), std::pair('\2', 5), std::pair('\3', 5)})
    EXPECT_EQ(decoded(103, data_of(HEAD "\x06") + code).display_mode, mode);
  for (const auto& [code, mode] : {std::pair('\0', 1), std::pair('\1', 1), std::pair('\3', 3), std::pair('\xFF', 5)})
    EXPECT_EQ(decoded(104, data_of(HEAD DISTANCE_250 "\x12\x20") + code).display_mode, mode);
  for (const auto& [code, colour] : {std::pair('\0', 16), std::pair('\1', 1), std::pair('\2', 3), std::pair('\4', 16)})
    EXPECT_EQ(decoded(107, data_of(HEAD "\x07\x02" DISTANCE_250) + code).colour, colour);
}

// Deliberate : the dark colours change places with those that have a word of their own.
TEST(WaypointRecords, EveryD108ColourKeepsANumberOfItsOwn) {
  std::array<int, 18> seen{};
  for (char code = 0; code < 16; ++code) {
    std::string data = data_of("\0\0\0\x60" FULL_PLACE FULL_TEXTS);
    data[1] = code;
    const ItemRecord item = decoded(108, data);
    ++seen.at(item.colour);
    EXPECT_EQ(encoded(kWaypointFormats, 108, item), data);
  }
  // 0 and 16 are those of waypoints without a colour.
  EXPECT_EQ(seen, (std::array<int, 18>{0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 1}));
}

TEST(WaypointRecords, UnknownHeightsStayUnknownAndAnUnknownDistanceIsNone) {
  const auto with_heights = [](const std::string& heights) {
    return decoded(108, data_of("\0\xFF\0\x60\x12\0" SUBCLASS_18 "\0\0\0\x20\0\0\0\xC0") + heights +
                            data_of("        A\0\0\0\0\0\0").substr(4));
  };
  const ItemRecord none = with_heights(data_of(NOT_KNOWN NOT_KNOWN NOT_KNOWN));
  EXPECT_EQ(none.altitude, 1.0e25F);
  EXPECT_EQ(none.depth, 1.0e25F);
  EXPECT_EQ(none.proximity_distance, 0.0F);
  EXPECT_EQ(none.position, (geodesy::Position{45, -90}));
  EXPECT_EQ(none.ident, "A");
  EXPECT_EQ(encoded(kWaypointFormats, 108, none).substr(32, 12), data_of(NOT_KNOWN NOT_KNOWN NOT_KNOWN));
  EXPECT_TRUE(none.state.empty());
  EXPECT_TRUE(none.cross_road.empty());
  // Not a number, minus infinity, not a number.
  const ItemRecord damaged = with_heights(data_of("\0\0\xC0\x7F\0\0\x80\xFF\0\0\xC0\x7F"));
  EXPECT_EQ(damaged.altitude, store::kNotKnown);
  EXPECT_EQ(damaged.depth, store::kNotKnown);
  EXPECT_EQ(damaged.proximity_distance, 0.0F);
}

TEST(WaypointRecords, EachAviationFormatHasItsOwnUserClassWhoseZeroAltitudeIsUnknown) {
  const auto is_known_at_zero = [](std::uint16_t number, char waypoint_class, const std::string& rest) {
    const std::string data = data_of(HEAD DISTANCE_250 NAME_30 CITY_24 "TX\0\0US\0") + waypoint_class + rest;
    return store::is_known(decoded(number, data).altitude);
  };
  for (const auto& [waypoint_class, is_known] : {std::pair('\0', true), {'\4', false}, {'\7', false}})
    EXPECT_EQ(store::is_known(decoded(150, d150(waypoint_class, data_of("\0\0"))).altitude), is_known);
  EXPECT_EQ(decoded(150, d150(4, data_of("\xFE\xFF"))).altitude, -2.0F);
  EXPECT_TRUE(is_known_at_zero(151, 1, ""));
  EXPECT_FALSE(is_known_at_zero(151, 2, ""));
  EXPECT_TRUE(is_known_at_zero(152, 3, ""));
  EXPECT_FALSE(is_known_at_zero(152, 4, ""));
  EXPECT_TRUE(is_known_at_zero(154, 7, "AA"));
  EXPECT_FALSE(is_known_at_zero(154, 8, "AA"));
  EXPECT_TRUE(is_known_at_zero(155, 3, "AAA"));
  EXPECT_FALSE(is_known_at_zero(155, 5, "AAA"));
}

TEST(WaypointRecords, AFormatWithoutADistanceIsNoProximityFormatNorTheOtherWayRound) {
  ItemRecord item = store::blank_item();
  const Bytes d100 = to_bytes(data_of(HEAD));
  EXPECT_EQ(decode_record(kProximityFormats, 100, "Pid_Prx_Wpt_Data", d100, item).refusal,
            "Pid_Prx_Wpt_Data D100 is an unknown data format: record refused");
  EXPECT_EQ(decode(400, data_of(HEAD DISTANCE_250), item).outcome, Decoded::UnknownFormat);
}

TEST(WaypointRecords, ARecordOfTheWrongLengthIsRefusedNamingBothLengths) {
  ItemRecord item;
  const std::string d100 = data_of(HEAD);
  EXPECT_EQ(decode(100, d100.substr(0, 57), item).refusal, "Pid_Wpt_Data D100: 57 bytes instead of 58: record refused");
  EXPECT_EQ(decode(100, d100 + '\0', item).refusal, "Pid_Wpt_Data D100: 59 bytes instead of 58: record refused");
  const std::string d106 = data_of("\x80" D106_FROM_SUBCLASS);  // 24 bytes, MAIN ST, I 95
  EXPECT_EQ(decode(106, d106.substr(0, 12), item).refusal,
            "Pid_Wpt_Data D106: 12 bytes, needs at least 26: record refused");
  EXPECT_EQ(decode(106, d106 + 'X', item).refusal, "Pid_Wpt_Data D106: 38 bytes instead of 37: record refused");
  EXPECT_EQ(decode(106, d106 + std::string(250, 'X'), item).refusal,
            "Pid_Wpt_Data D106: 287 bytes, at most 255: record refused");
}

TEST(WaypointRecords, ARecordCutAnywhereIsRefusedAndLeavesTheItemAlone) {
  const std::string whole = data_of("\x83\x09\x02\x60" FULL_PLACE FULL_TEXTS);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    ItemRecord item;
    const DecodeResult result = decode(108, whole.substr(0, size), item);
    EXPECT_EQ(result.outcome, Decoded::WrongLength) << size;
    EXPECT_TRUE(item.ident.empty());
    EXPECT_EQ(item.position, geodesy::Position{});
    EXPECT_EQ(item.record_type, 0);
  }
}

TEST(WaypointRecords, TextsLongerThanTheStoreHoldsAreCutNotRefused) {
  const ItemRecord item = decoded(105, data_of("\0\0\0\0\0\0\0\0\0\0") + std::string(244, 'A') + '\0');
  EXPECT_EQ(item.ident.view(), std::string(50, 'A'));
}

TEST(WaypointRecords, AWaypointBeyondAPoleHasNoPositionAndIsRefused) {
  ItemRecord item;
  const auto at = [&](const std::string& latitude) {
    return decode(105, latitude + data_of("\0\0\0\x08\0\0A\0"), item);
  };
  EXPECT_TRUE(at(data_of("\0\0\0\x40")));
  EXPECT_EQ(item.position.latitude, 90.0);
  EXPECT_TRUE(at(data_of("\0\0\0\xC0")));
  EXPECT_EQ(item.position.latitude, -90.0);
  EXPECT_EQ(at(data_of("\x01\0\0\x40")).refusal, "Pid_Wpt_Data D105 has no position: record refused");
  EXPECT_EQ(at(data_of("\xFF\xFF\xFF\xBF")).outcome, Decoded::NoPosition);
  EXPECT_EQ(at(data_of("\xFF\xFF\xFF\x7F")).outcome, Decoded::NoPosition);
  EXPECT_EQ(at(data_of("\0\0\0\x80")).outcome, Decoded::NoPosition);
}

}  // namespace
}  // namespace garmin
