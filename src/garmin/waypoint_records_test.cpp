// The records are byte literals written by hand from the published layouts.
#include "garmin/waypoint_records.h"

#include <gtest/gtest.h>

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

// Ident, 45 S (-2^29), 11.25 E (2^26), unused, comment.
#define HEAD         \
  "BRIDGE"           \
  "\x00\x00\x00\xE0" \
  "\x00\x00\x00\x08" \
  "\x99\x99\x99\x99" \
  "CROSS HERE"       \
  "          "       \
  "                    "
#define DISTANCE_250 "\x00\x00\x7A\x43"
#define NOT_KNOWN "\x51\x59\x04\x69"
#define NAME_30 "TOWN FIELD                    "
#define CITY_24 "SPRINGFIELD             "

void expect_head(const ItemRecord& item) {
  EXPECT_EQ(item.ident, "BRIDGE");
  EXPECT_EQ(item.position, (geodesy::Position{-45, 11.25}));
  EXPECT_EQ(item.comment, "CROSS HERE");
}

TEST(WaypointRecords, D100HasNoSymbolAndIsANamedDot) {
  const ItemRecord item = decoded(100, data_of(HEAD));
  expect_head(item);
  EXPECT_EQ(item.symbol, 0);
  EXPECT_EQ(item.symbol_mode, kG12xl);
  EXPECT_EQ(item.display_mode, 3);
  EXPECT_EQ(item.record_type, 0);
  EXPECT_EQ(item.waypoint_class, store::kClassNotSet);
  EXPECT_FALSE(store::is_known(item.altitude));
}

TEST(WaypointRecords, D101AndD102CarryADistanceAndASymbolType) {
  const ItemRecord narrow = decoded(101, data_of(HEAD DISTANCE_250 "\x96"));
  expect_head(narrow);
  EXPECT_EQ(narrow.proximity_distance, 250.0F);
  EXPECT_EQ(narrow.symbol, 150);
  EXPECT_EQ(narrow.symbol_mode, store::kSymbolModeNotGiven);
  const ItemRecord wide = decoded(102, data_of(HEAD DISTANCE_250 "\x12\x20"));
  expect_head(wide);
  EXPECT_EQ(wide.proximity_distance, 250.0F);
  EXPECT_EQ(wide.symbol, 8210);
}

TEST(WaypointRecords, TheSixteenSymbolsOfD103AreNotTakenForSymbolTypes) {
  const ItemRecord item = decoded(103, data_of(HEAD "\x06\x01"));
  expect_head(item);
  EXPECT_EQ(item.symbol, 6);
  EXPECT_EQ(item.symbol_mode, kG12xl);
  EXPECT_EQ(item.display_mode, 1);
}

TEST(WaypointRecords, DisplayCodesOf103And104BecomeTheSameModes) {
  EXPECT_EQ(decoded(103, data_of(HEAD "\x06\x00")).display_mode, 3);
  EXPECT_EQ(decoded(103, data_of(HEAD "\x06\x02")).display_mode, 5);
  EXPECT_EQ(decoded(103, data_of(HEAD "\x06\x03")).display_mode, 5);
  EXPECT_EQ(decoded(104, data_of(HEAD DISTANCE_250 "\x12\x20\x00")).display_mode, 1);
  EXPECT_EQ(decoded(104, data_of(HEAD DISTANCE_250 "\x12\x20\x01")).display_mode, 1);
  EXPECT_EQ(decoded(104, data_of(HEAD DISTANCE_250 "\x12\x20\x03")).display_mode, 3);
  EXPECT_EQ(decoded(104, data_of(HEAD DISTANCE_250 "\x12\x20\x05")).display_mode, 5);
  EXPECT_EQ(decoded(104, data_of(HEAD DISTANCE_250 "\x12\x20\xFF")).display_mode, 5);
}

TEST(WaypointRecords, D105HasALongIdentAndNoCommentOfItsOwn) {
  const ItemRecord item = decoded(105, data_of("\x00\x00\x00\xE0\x00\x00\x00\x08\x12\x20"
                                               "A Name Longer Than Fifteen\0"));
  EXPECT_EQ(item.position, (geodesy::Position{-45, 11.25}));
  EXPECT_EQ(item.symbol, 8210);
  EXPECT_EQ(item.ident, "A Name Longer Than Fifteen");
  EXPECT_TRUE(item.comment.empty());
  EXPECT_EQ(item.record_type, 105);
  EXPECT_EQ(item.detail_kind, store::kLongIdentDetails);
  EXPECT_EQ(item.waypoint_class, store::kClassNotSet);
}

#define SUBCLASS_13 "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D"
constexpr char kD106[] = "\x80" SUBCLASS_13
                         "\x00\x00\x00\xE0\x00\x00\x00\x08\x12\x20"
                         "MAIN ST\0"
                         "I 95\0";

TEST(WaypointRecords, D106KeepsClassSubclassAndLinkIdent) {
  const ItemRecord item = decoded(106, data_of(kD106));
  EXPECT_EQ(item.waypoint_class, 0x80);
  EXPECT_EQ(item.subclass, (std::array<std::uint8_t, 18>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
  EXPECT_EQ(item.position, (geodesy::Position{-45, 11.25}));
  EXPECT_EQ(item.symbol, 8210);
  EXPECT_EQ(item.ident, "MAIN ST");
  EXPECT_EQ(item.link_ident, "I 95");
  EXPECT_EQ(item.record_type, 106);
  EXPECT_EQ(item.detail_kind, store::kLongIdentDetails);
}

TEST(WaypointRecords, AUserPointInD106KeepsItsLinkIdentOnDetailLines) {
  const ItemRecord item = decoded(106, data_of("\0" SUBCLASS_13 "\x00\x00\x00\xE0\x00\x00\x00\x08\x12\x20"
                                               "HOME\0"
                                               "I 95\0"));
  EXPECT_EQ(item.waypoint_class, 0);
  EXPECT_EQ(item.detail_kind, store::kLongIdentDetails);
  EXPECT_EQ(item.link_ident, "I 95");
}

TEST(WaypointRecords, D107KeepsSymbolDisplayDistanceAndColour) {
  const ItemRecord item = decoded(107, data_of(HEAD "\x07\x02" DISTANCE_250 "\x03"));
  expect_head(item);
  EXPECT_EQ(item.symbol, 7);
  EXPECT_EQ(item.symbol_mode, kG12xl);
  EXPECT_EQ(item.display_mode, 5);
  EXPECT_EQ(item.proximity_distance, 250.0F);
  EXPECT_EQ(item.colour, 2);  // "Blue" in a waypoint line
  EXPECT_EQ(decoded(107, data_of(HEAD "\x07\x02" DISTANCE_250 "\x01")).colour, 1);
  EXPECT_EQ(decoded(107, data_of(HEAD "\x07\x02" DISTANCE_250 "\x02")).colour, 3);
  EXPECT_EQ(decoded(107, data_of(HEAD "\x07\x02" DISTANCE_250 "\x00")).colour, store::kDefaultColour);
  EXPECT_EQ(decoded(107, data_of(HEAD "\x07\x02" DISTANCE_250 "\x04")).colour, store::kDefaultColour);
}

#define SUBCLASS_18 SUBCLASS_13 "\x0E\x0F\x10\x11\x12"
// Symbol 8210, subclass, 45 S, 11.25 E, altitude 1234.5 m, depth -2.5 m, distance 250 m, state, country.
#define FULL_PLACE                   \
  "\x12\x20" SUBCLASS_18             \
  "\x00\x00\x00\xE0\x00\x00\x00\x08" \
  "\x00\x50\x9A\x44"                 \
  "\x00\x00\x20\xC0" DISTANCE_250    \
  "TX"                               \
  "US"
#define FULL_TEXTS \
  "Pass 12\0"      \
  "steep\0"        \
  "Hut\0"          \
  "Alpville\0"     \
  "12 High Road\0" \
  "Low Road\0"

void expect_full(const ItemRecord& item) {
  EXPECT_EQ(item.record_type, 108);
  EXPECT_EQ(item.symbol, 8210);
  EXPECT_EQ(item.symbol_mode, store::kSymbolModeNotGiven);
  EXPECT_EQ(item.subclass,
            (std::array<std::uint8_t, 18>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
  EXPECT_EQ(item.position, (geodesy::Position{-45, 11.25}));
  EXPECT_EQ(item.altitude, 1234.5F);
  EXPECT_EQ(item.depth, -2.5F);
  EXPECT_EQ(item.proximity_distance, 250.0F);
  EXPECT_EQ(item.state, "TX");
  EXPECT_EQ(item.country, "US");
  EXPECT_EQ(item.ident, "Pass 12");
  EXPECT_EQ(item.comment, "steep");
  EXPECT_EQ(item.facility, "Hut");
  EXPECT_EQ(item.city, "Alpville");
  EXPECT_EQ(item.address, "12 High Road");
  EXPECT_EQ(item.cross_road, "Low Road");
}

TEST(WaypointRecords, D108KeepsEveryField) {
  const ItemRecord item = decoded(108, data_of("\x83\x09\x02\x60" FULL_PLACE FULL_TEXTS));
  expect_full(item);
  EXPECT_EQ(item.waypoint_class, 0x83);
  EXPECT_EQ(item.detail_kind, store::kFullDetails);
  EXPECT_EQ(item.colour, 1);
  EXPECT_EQ(item.display_mode, 5);
}

TEST(WaypointRecords, D109UnpacksDisplayAndColour) {
  const ItemRecord item = decoded(109, data_of("\x01\x40\x49\x70" FULL_PLACE "\x10\x0E\x00\x00" FULL_TEXTS));
  expect_full(item);
  EXPECT_EQ(item.waypoint_class, 0x40);
  EXPECT_EQ(item.display_mode, 5);
  EXPECT_EQ(item.colour, 1);  // red
  const ItemRecord plain = decoded(109, data_of("\x01\x40\x3F\x70" FULL_PLACE "\x10\x0E\x00\x00" FULL_TEXTS));
  EXPECT_EQ(plain.display_mode, 1);
  EXPECT_EQ(plain.colour, store::kDefaultColour);
}

#define D110_START "\x01\x81\x0C\x80"  // class 0x81, blue, symbol and name
#define D110_SKIPPED "\x10\x0E\x00\x00\x00\x00\xA8\x41"

TEST(WaypointRecords, D110KeepsTheTimeAndSkipsTemperatureAndCategories) {
  const ItemRecord item =
      decoded(110, data_of(D110_START FULL_PLACE D110_SKIPPED "\x04\x03\x02\x01\x05\x00" FULL_TEXTS));
  expect_full(item);
  EXPECT_EQ(item.waypoint_class, 0x81);
  EXPECT_EQ(item.time.seconds, 0x01020304U);
  EXPECT_EQ(item.display_mode, 3);
  EXPECT_EQ(item.colour, 2);
  const ItemRecord never =
      decoded(110, data_of(D110_START FULL_PLACE D110_SKIPPED "\xFF\xFF\xFF\xFF\x05\x00" FULL_TEXTS));
  EXPECT_EQ(never.time.seconds, 0U);
}

TEST(WaypointRecords, AUserWaypointInD108KeepsItsFieldsWithoutBeingDetailed) {
  const ItemRecord item = decoded(108, data_of("\0\xFF\0\x60" FULL_PLACE FULL_TEXTS));
  expect_full(item);
  EXPECT_EQ(item.waypoint_class, 0);
  EXPECT_EQ(item.detail_kind, store::kNoDetails);
  EXPECT_EQ(item.colour, store::kDefaultColour);
}

// Deliberate : the dark colours change places with those that have a word of their own.
TEST(WaypointRecords, EveryD108ColourKeepsANumberOfItsOwn) {
  std::array<int, 16> seen{};
  for (char code = 0; code < 16; ++code) {
    std::string data = data_of("\0\0\0\x60" FULL_PLACE FULL_TEXTS);
    data[1] = code;
    ++seen.at(decoded(108, data).colour);
  }
  EXPECT_EQ(seen, (std::array<int, 16>{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}));
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
  EXPECT_TRUE(none.state.empty());
  EXPECT_TRUE(none.cross_road.empty());
  // Not a number, minus infinity, not a number.
  const ItemRecord damaged = with_heights(data_of("\0\0\xC0\x7F\0\0\x80\xFF\0\0\xC0\x7F"));
  EXPECT_EQ(damaged.altitude, store::kNotKnown);
  EXPECT_EQ(damaged.depth, store::kNotKnown);
  EXPECT_EQ(damaged.proximity_distance, 0.0F);
}

// Ident, country, class, 45 S, 11.25 E, altitude, city, state, name, comment.
std::string d150(char waypoint_class, const std::string& altitude) {
  return data_of("KABC  US") + waypoint_class + data_of("\0\0\0\xE0\0\0\0\x08") + altitude +
         data_of(CITY_24 "TX" NAME_30
                         "TOWER 118.5"
                         "                             ");
}

TEST(WaypointRecords, D150KeepsEveryFieldUnderType154) {
  const ItemRecord item = decoded(150, d150(6, data_of("\xD2\x04")));
  EXPECT_EQ(item.record_type, 154);
  EXPECT_EQ(item.ident, "KABC");
  EXPECT_EQ(item.country, "US");
  EXPECT_EQ(item.waypoint_class, 6);
  EXPECT_EQ(item.position, (geodesy::Position{-45, 11.25}));
  EXPECT_EQ(item.altitude, 1234.0F);
  EXPECT_EQ(item.city, "SPRINGFIELD");
  EXPECT_EQ(item.state, "TX");
  EXPECT_EQ(item.name, "TOWN FIELD");
  EXPECT_EQ(item.comment, "TOWER 118.5");
  EXPECT_EQ(decoded(150, d150(7, data_of("\xD2\x04"))).waypoint_class, 9);  // locked
}

TEST(WaypointRecords, ZeroIsTheAltitudeOfAnAirportButNotThatOfAUserWaypoint) {
  EXPECT_EQ(decoded(150, d150(0, data_of("\0\0"))).altitude, 0.0F);
  EXPECT_FALSE(store::is_known(decoded(150, d150(4, data_of("\0\0"))).altitude));
  EXPECT_FALSE(store::is_known(decoded(150, d150(7, data_of("\0\0"))).altitude));
  EXPECT_EQ(decoded(150, d150(4, data_of("\xFE\xFF"))).altitude, -2.0F);
}

#define AVIATION_TAIL \
  NAME_30 CITY_24     \
      "TX"            \
      "\xFE\xFF"      \
      "US"            \
      "\x77"

void expect_aviation(const ItemRecord& item, int record_type, int waypoint_class) {
  expect_head(item);
  EXPECT_EQ(item.record_type, record_type);
  EXPECT_EQ(item.waypoint_class, waypoint_class);
  EXPECT_EQ(item.proximity_distance, 250.0F);
  EXPECT_EQ(item.name, "TOWN FIELD");
  EXPECT_EQ(item.city, "SPRINGFIELD");
  EXPECT_EQ(item.state, "TX");
  EXPECT_EQ(item.altitude, -2.0F);
  EXPECT_EQ(item.country, "US");
  EXPECT_EQ(item.detail_kind, store::kNoDetails);
}

TEST(WaypointRecords, D151ToD155KeepEveryField) {
  expect_aviation(decoded(151, data_of(HEAD DISTANCE_250 AVIATION_TAIL "\x01")), 151, 1);
  expect_aviation(decoded(152, data_of(HEAD DISTANCE_250 AVIATION_TAIL "\x03")), 152, 3);
  const ItemRecord d154 = decoded(154, data_of(HEAD DISTANCE_250 AVIATION_TAIL "\x08\x03\x40"));
  expect_aviation(d154, 154, 8);
  EXPECT_EQ(d154.symbol, 16387);
  EXPECT_EQ(d154.symbol_mode, store::kSymbolModeNotGiven);
  const ItemRecord d155 = decoded(155, data_of(HEAD DISTANCE_250 AVIATION_TAIL "\x05\x03\x40\x01"));
  expect_aviation(d155, 155, 5);
  EXPECT_EQ(d155.symbol, 16387);
  EXPECT_EQ(d155.display_mode, 1);
}

TEST(WaypointRecords, EachAviationFormatHasItsOwnUserClassWhoseZeroAltitudeIsUnknown) {
  const auto is_known_at_zero = [](std::uint16_t number, char waypoint_class, const std::string& rest) {
    const std::string data = data_of(HEAD DISTANCE_250 NAME_30 CITY_24 "TX\0\0US\0") + waypoint_class + rest;
    return store::is_known(decoded(number, data).altitude);
  };
  EXPECT_TRUE(is_known_at_zero(151, 1, ""));
  EXPECT_FALSE(is_known_at_zero(151, 2, ""));
  EXPECT_TRUE(is_known_at_zero(152, 3, ""));
  EXPECT_FALSE(is_known_at_zero(152, 4, ""));
  EXPECT_TRUE(is_known_at_zero(154, 7, "AA"));
  EXPECT_FALSE(is_known_at_zero(154, 8, "AA"));
  EXPECT_TRUE(is_known_at_zero(155, 3, "AAA"));
  EXPECT_FALSE(is_known_at_zero(155, 5, "AAA"));
}

TEST(WaypointRecords, ProximityFormatsKeepTheirDistance) {
  const ItemRecord d400 = decoded(kProximityFormats, 400, data_of(HEAD DISTANCE_250));
  expect_head(d400);
  EXPECT_EQ(d400.proximity_distance, 250.0F);
  const ItemRecord d403 = decoded(kProximityFormats, 403, data_of(HEAD "\x09\x01" DISTANCE_250));
  expect_head(d403);
  EXPECT_EQ(d403.symbol, 9);
  EXPECT_EQ(d403.symbol_mode, kG12xl);
  EXPECT_EQ(d403.display_mode, 1);
  EXPECT_EQ(d403.proximity_distance, 250.0F);
  const ItemRecord d450 =
      decoded(kProximityFormats, 450, data_of("\x07\0") + d150(0, data_of("\xD2\x04")) + data_of(DISTANCE_250));
  EXPECT_EQ(d450.ident, "KABC");
  EXPECT_EQ(d450.altitude, 1234.0F);
  EXPECT_EQ(d450.comment, "TOWER 118.5");
  EXPECT_EQ(d450.proximity_distance, 250.0F);
  for (const int number : {101, 102, 104, 107, 108, 109, 110, 151, 152, 154, 155}) {
    EXPECT_NE(find_format(kProximityFormats, static_cast<std::uint16_t>(number)), nullptr) << number;
  }
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
  const std::string d106 = data_of(kD106);  // 24 bytes, MAIN ST, I 95
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
  ItemRecord item;
  EXPECT_EQ(decode(108, whole.substr(0, whole.size() - 1), item).refusal,
            "Pid_Wpt_Data D108: 96 bytes, needs at least 97: record refused");
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

TEST(WaypointRecords, SemicirclesBecomeDegreesWithoutRounding) {
  const ItemRecord item = decoded(105, data_of("\xFF\xFF\xFF\xFF\x00\x00\x00\x80\0\0A\0"));
  EXPECT_EQ(item.position.latitude, -180.0 / 2147483648.0);
  EXPECT_EQ(item.position.longitude, -180.0);
}

}  // namespace
}  // namespace garmin
