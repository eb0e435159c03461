#include "geodesy/position_parser.h"

#include <gtest/gtest.h>

#include <cmath>

#include "geodesy/notation.h"

namespace geodesy {
namespace {

constexpr Ellipsoid kWgs84;

struct Accepted {
  std::string_view text;
  Position position;
};

void expect_accepted(std::initializer_list<Accepted> cases) {
  for (const Accepted& expected : cases) {
    const ParsedPosition parsed = parse_position(expected.text, kWgs84);
    ASSERT_TRUE(parsed.position) << expected.text << ": " << parsed.problem;
    EXPECT_NEAR(parsed.position->latitude, expected.position.latitude, 1e-9) << expected.text;
    EXPECT_NEAR(parsed.position->longitude, expected.position.longitude, 1e-9) << expected.text;
    EXPECT_EQ(parsed.problem, "");
  }
}

struct Refused {
  std::string_view text;
  std::string_view problem;
};

void expect_refused(std::initializer_list<Refused> cases) {
  for (const Refused& expected : cases) {
    const ParsedPosition parsed = parse_position(expected.text, kWgs84);
    EXPECT_FALSE(parsed.position) << expected.text;
    EXPECT_EQ(parsed.problem, expected.problem) << expected.text;
  }
}

constexpr std::string_view kNoPosition = "this is neither latitude and longitude nor a UTM position";
constexpr std::string_view kUnclear = "it is not clear where the first angle ends and the second begins";
constexpr std::string_view kCommaUnclear = "the comma is ambiguous: it may separate two numbers or be a decimal sign";

TEST(ParsePosition, WhatIsPrintedReadsBackInEveryNotation) {
  struct Precision {
    Notation notation;
    double degrees;
  };
  for (const auto& [notation, precision] : {Precision{Notation::Dms, 1.5e-6}, Precision{Notation::Dmm, 9e-7},
                                            Precision{Notation::Ddd, 6e-8}, Precision{Notation::Utm, 5e-7}})
    for (const double latitude : {-90.0, -89.99, -80.1, -80.0, -72.0, -33.3333333, -0.00001, 0.0, 0.5, 7.9999999,
                                  12.9999999, 51.99999999, 80.0, 83.99, 84.0, 84.01, 90.0})
      for (const double longitude : {-180.0, -179.9999, -100.0, -6.0, -0.00001, 0.0, 5.99999999, 179.9999, 180.0}) {
        const PositionTexts texts = format_position({latitude, longitude}, notation, kWgs84);
        const std::string text = texts.first + " " + texts.second;
        const ParsedPosition parsed = parse_position(text, kWgs84);
        ASSERT_TRUE(parsed.position) << text << ": " << parsed.problem;
        EXPECT_NEAR(parsed.position->latitude, latitude, precision) << text;
        // Metres make more degrees towards the pole, and the date line has two names.
        const double east = std::remainder(parsed.position->longitude - longitude, 360.0);
        const bool metres = notation == Notation::Utm;
        EXPECT_NEAR(east * (metres ? std::cos(latitude * 0.0174532925) : 1.0), 0.0, precision * 2) << text;
      }
}

TEST(ParsePosition, SignsLettersAndMarksMayStandAsPeoplePutThem) {
  expect_accepted({
      {"51.5 7.25", {51.5, 7.25}},
      {"  +51.5\t-7.25\n", {51.5, -7.25}},
      {"51.5-7.25", {51.5, -7.25}},
      {"n51.5 w 7.25", {51.5, -7.25}},
      {"51.5S 7.25 E", {-51.5, 7.25}},
      {"51.5 south, 7.25 East", {-51.5, 7.25}},
      {"S-51.5 W-7.25", {-51.5, -7.25}},
      {"51 30 7 15", {51.5, 7.25}},
      {"51 30 36 7 15 18", {51.51, 7.255}},
      {"-51 30 -7 15", {-51.5, -7.25}},
      {"51\u00B0 30' 36\" N 7\u00B0 15' 18'' W", {51.51, -7.255}},
      {"51\26030\2647\27215\x92", {51.5, 7.25}},  // degree, acute, ordinal and quote of Windows
      {"N51\u00BA30\u201936\u201D, E7\u00BA15\u00B4", {51.51, 7.25}},
      {"\u221251.5;7.25", {-51.5, 7.25}},
      {"51d30m36s 7d15m18s", {51.51, 7.255}},
      {"51D30M36SS 7D15M18SW", {-51.51, -7.255}},
      {"51d30m36s S 7d15m18s E", {-51.51, 7.255}},
      {"51 deg 30 min N 7 deg 15 min E", {51.5, 7.25}},
      {"51:30:36 -7:15", {51.51, -7.25}},
      {"51\u00B030' 7.25", {51.5, 7.25}},
  });
}

TEST(ParsePosition, LettersPutTheLongitudeFirst) {
  expect_accepted({{"E 7.25 N 51.5", {51.5, 7.25}},
                   {"7 15 W 51 30 S", {-51.5, -7.25}},
                   {"W 100.5, 51.5", {51.5, -100.5}},
                   {"100.5 N51.5", {51.5, 100.5}}});
}

TEST(ParsePosition, ACommaIsWhateverMakesAPosition) {
  expect_accepted({{"51,5 7,25", {51.5, 7.25}},
                   {"51,5; 7,25", {51.5, 7.25}},
                   {"51,5, 7,25", {51.5, 7.25}},
                   {"51.5, 7.25", {51.5, 7.25}},
                   {"51.5,7.25", {51.5, 7.25}},
                   {"51,7", {51.0, 7.0}},
                   {"N 51 30,5 E 7 15,25", {51.0 + 30.5 / 60, 7.0 + 15.25 / 60}},
                   {"N51,5 E7", {51.5, 7.0}},
                   {"51.5 7,25", {51.5, 7.25}}});
  expect_refused({{"51,5 7", kCommaUnclear},
                  {"51 30,7 15", kCommaUnclear},  // 51 30 and 7 15, or 51 30.7 and 15
                  {"51,5 7.25", kCommaUnclear},
                  {"51,5,7,25", "the decimal signs are ambiguous: write decimals with a point"},
                  {"51.5.3 7", "the decimal signs are ambiguous: write decimals with a point"},
                  {"51, 5, 7", kNoPosition}});
}

TEST(ParsePosition, SouthAndWestOfZeroDegreesKeepTheirSide) {
  expect_accepted({{"0 30 S 0 15 W", {-0.5, -0.25}}, {"-0 30 0 -0 15 0", {-0.5, -0.25}}, {"S 0 W 0", {0.0, 0.0}}});
}

TEST(ParsePosition, SixtyIsTakenOnlyWherePrintingRoundsUpToIt) {
  expect_accepted({{"N12 59 60.00 E007 60.0000", {13.0, 8.0}}});
  expect_refused({{"51 61 7 15", "minutes 61 are 60 or more"},
                  {"51 60 0 7 15 0", "minutes 60 are 60 or more"},
                  {"51 30 60.01 7 15 0", "seconds 60.01 are 60 or more"}});
}

TEST(ParsePosition, RangesEndAtThePolesAndAHairBeyondTheDateLine) {
  expect_accepted({{"N90 00.0000 E180 00.0024", {90.0, 180.00004}}, {"-90 -180.01", {-90.0, -180.01}}});
  expect_refused({{"91 7", "latitude 91 is beyond 90 degrees"},
                  {"-90.0000001 7", "latitude 90.0000001 is beyond 90 degrees"},
                  {"W 51 W 180.02", "there are two longitudes"},
                  {"51 180.02", "longitude 180.02 is beyond 180 degrees"},
                  {"382000 5700000", "latitude 382000 is beyond 90 degrees"}});
}

TEST(ParsePosition, WhatContradictsItselfOrIsUnclearIsRefused) {
  expect_refused({
      {"", "the text is empty"},
      {" \t ", "the text is empty"},
      {"51.5", "a position needs a latitude and a longitude"},
      {"N51 S7", "there are two latitudes"},
      {"N-51 E7", "the sign - contradicts the letter N"},
      {"51 -7 E", "the sign - contradicts the letter E"},
      {"S+51 E7", "the sign + contradicts the letter S"},
      {"51 W 7", kUnclear},
      {"51 30 7", kUnclear},
      {"51 30 15 7 15", kUnclear},
      {"N51N 7", "there are two latitudes"},
      {"51.5 30 12.5 7 15 3", kNoPosition},
      {"51: 7", "a position needs a latitude and a longitude"},
      {"51d30m15s 7d15mE", "the s may be seconds or south"},
      {"nan inf", "'nan' does not belong in a position"},
      {"1e999 7", kUnclear},
      {"51.5 7.25 ?", "'?' does not belong in a position"},
      {std::string_view("51.5\0 7.25", 10), "a character does not belong in a position"},
      {". .", "'.' is no number"},
  });
}

TEST(ParsePosition, UtmIsTakenAsPeopleWriteIt) {
  const Position essen = utm_to_latlon(32, false, 378531.9, 5706881.1, kWgs84);
  const Position namibia = utm_to_latlon(33, true, 220241.5, 6677672.7, kWgs84);
  expect_accepted({{"32U  378531.9  5706881.1", essen},
                   {"32 u 378531,9; 5706881,1", essen},
                   {"32U, 378531.9, 5706881.1", essen},
                   {"32U 378531.9mE 5706881.1mN", essen},
                   {"32N 378531.9 5706881.1", essen},  // N as "north"
                   {"33J 220241.5 6677672.7", namibia},
                   {"33J 220241.5 13322327.3", namibia},
                   {"31M 166021.4 10000000.0", utm_to_latlon(31, true, 166021.4, 1e7, kWgs84)},
                   {"00Z 2000000.0 2000000.0", {90.0, 0.0}}});
}

TEST(ParsePosition, UtmOutsideItsGridIsRefused) {
  expect_refused({{"32 378531.9 5706881.1", "Zone letter required!"},
                  {"62U 378531.9 5706881.1", "zone 62 is beyond 60"},
                  {"61U 500000 5706881.1", "longitude 183 is beyond 180 degrees"},
                  {"32I 378531.9 5706881.1", "'I' is no zone letter"},
                  {"00U 2000000 2000000", "zone 00 takes the letters A, B, Y and Z"},
                  {"00Z 2000000 9000000", "easting and northing lie outside the polar cap"},
                  {"32U 1000000 5706881.1", "easting 1000000.0 is out of range"},
                  {"32U 378531.9 9400001", "northing 9400001.0 is out of range"},
                  {"33S 220241.5 6677672.7", "northing 6677672.7 is far from latitude band S"},  // S as "south"
                  {"32U 378531.9", kNoPosition}});
}

TEST(ParsePosition, GarbageOfAnyLengthIsRefused) {
  EXPECT_FALSE(parse_position(std::string(10'000'000, '7'), kWgs84).position);
  EXPECT_FALSE(parse_position("1 2 3 4 5 6 7 8 9 1 2 3 4 5 6 7 8 9 1 2 3 4 5 6 7 8 9", kWgs84).position);
  const std::string_view sample = "N51\u00B030'36\" E7,5;-.:+sdm32U 378531.9mE";
  for (std::size_t start = 0; start < sample.size(); ++start)
    for (std::size_t length = 0; length <= sample.size() - start; ++length) {
      const ParsedPosition parsed = parse_position(sample.substr(start, length), kWgs84);
      EXPECT_NE(parsed.position.has_value(), !parsed.problem.empty()) << sample.substr(start, length);
    }
  EXPECT_FALSE(parse_position("32U 378531.9 5706881.1", {6378137.0, -7.0}).position);
}

TEST(ParseAngle, ReadsOneLatitudeOrLongitude) {
  EXPECT_DOUBLE_EQ(parse_angle("N12 59 60.00").value(), 13.0);
  EXPECT_EQ(parse_angle("W007.2500000"), -7.25);
  EXPECT_EQ(parse_angle("-33.5"), -33.5);
  EXPECT_EQ(parse_angle("12 30 S"), -12.5);
  EXPECT_EQ(parse_angle("12,5"), 12.5);
  EXPECT_EQ(parse_angle("179.5"), 179.5);
  for (const char* const text : {"", "N", "N91", "E181", "12 61", "12 30 7 15", "12;5", "N12E", "x"})
    EXPECT_FALSE(parse_angle(text)) << text;
}

}  // namespace
}  // namespace geodesy
