#include "serial/nmea_detector.h"

#include <gtest/gtest.h>

#include <string_view>

namespace serial {
namespace {

bool is_nmea(std::string_view text) {
  NmeaDetector detector;
  for (const char c : text) detector.feed(static_cast<std::uint8_t>(c));
  return detector.found();
}

TEST(NmeaDetector, KnowsStandardSentencesAndMakersOwnOnes) {
  EXPECT_TRUE(is_nmea("$GPRMC,220516,A,5133.82,N,00042.24,W,173.8,231.8,130694,004.2,W*70\r\n"));
  EXPECT_TRUE(is_nmea("$GNGGA,,,,,,0,,,,,,,,*78\r\n"));
  EXPECT_TRUE(is_nmea("$PGRME,15.0,M,45.0,M,25.0,M*1C\r\n"));
  EXPECT_TRUE(is_nmea("$PSRF103,00,01,00,01*25\r\n"));
}

TEST(NmeaDetector, FindsASentenceAfterGarbageAndAfterACutOne) {
  EXPECT_TRUE(is_nmea("\x80\xFE\x10\x03,N*7$GP$GPGLL,4916.45,N"));
  EXPECT_FALSE(is_nmea("GPRMC,220516,A*70\r\n$GPG"));  // tail and head are not enough
}

TEST(NmeaDetector, PricesShortNamesLongWordsAndBinaryPacketsAreNoSentences) {
  EXPECT_FALSE(is_nmea("$100,000"));
  EXPECT_FALSE(is_nmea("$GPS,1"));
  EXPECT_FALSE(is_nmea("$GP RMC,1"));
  EXPECT_FALSE(is_nmea("$gprmc,1"));
  EXPECT_FALSE(is_nmea("$WAYPOINTS,1"));
  EXPECT_FALSE(is_nmea({"\x10\xFF\x0B\x4D\x00\x67\x01$XL\x00\x7F\x10\x03", 14}));
}

}  // namespace
}  // namespace serial
