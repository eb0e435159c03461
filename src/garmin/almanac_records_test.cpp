// The records are byte literals written by hand from the published layouts.
#include "garmin/almanac_records.h"

#include <gtest/gtest.h>

namespace garmin {
namespace {

template <std::size_t N>
base::Bytes data_of(const char (&literal)[N]) {
  return {literal, literal + N - 1};
}

// 1.0 to 10.0 from the reference time to the inclination.
#define ORBIT                                                                          \
  "\0\0\x80\x3F\0\0\0\x40\0\0\x40\x40\0\0\x80\x40\0\0\xA0\x40\0\0\xC0\x40\0\0\xE0\x40" \
  "\0\0\0\x41\0\0\x10\x41\0\0\x20\x41"

SatelliteRecord decoded(std::uint16_t number, const base::Bytes& data) {
  SatelliteRecord satellite;
  const DecodeResult result = decode_record(kAlmanacFormats, number, "Pid_Almanac_Data", data, satellite);
  EXPECT_TRUE(result) << result.refusal;
  return satellite;
}
base::Bytes encoded(std::uint16_t number, const SatelliteRecord& satellite) {
  return encode_record(kAlmanacFormats, number, satellite, {}).value();
}

TEST(AlmanacRecords, AnOrbitIsKeptAndGoesOutAsItCame) {
  const base::Bytes d500 = data_of("\x39\x03" ORBIT);
  const base::Bytes d501 = data_of("\x39\x03" ORBIT "\x3F");
  store::AlmanacEntry expected{825, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, std::nullopt};
  EXPECT_EQ(decoded(500, d500), expected);
  EXPECT_EQ(encoded(500, expected), d500);
  expected.health = 0x3F;
  EXPECT_EQ(decoded(501, d501), expected);
  EXPECT_EQ(encoded(501, expected), d501);
  EXPECT_EQ(encoded(500, expected), d500);
  expected.health.reset();  // not told: usable
  EXPECT_EQ(encoded(501, expected), data_of("\x39\x03" ORBIT "\0"));
}

TEST(AlmanacRecords, ANegativeWeekIsASatelliteThatIsNotKnown) {
  EXPECT_EQ(decoded(500, data_of("\xFF\xFF" ORBIT)), std::nullopt);
  EXPECT_EQ(decoded(501, data_of("\x00\x80" ORBIT "\x3F")), std::nullopt);
  base::Bytes none(42, 0);
  none[0] = none[1] = 0xFF;
  EXPECT_EQ(encoded(500, std::nullopt), none);
  none.push_back(0);
  EXPECT_EQ(encoded(501, std::nullopt), none);
}

TEST(AlmanacRecords, ARecordOfAnotherLengthIsRefused) {
  SatelliteRecord satellite;
  EXPECT_EQ(
      decode_record(kAlmanacFormats, 500, "Pid_Almanac_Data", data_of("\x39\x03" ORBIT "\x3F"), satellite).refusal,
      "Pid_Almanac_Data D500: 43 bytes instead of 42: record refused");
  EXPECT_EQ(satellite, std::nullopt);
}

}  // namespace
}  // namespace garmin
