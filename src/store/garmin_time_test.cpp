#include "store/garmin_time.h"

#include <gtest/gtest.h>

namespace store {
namespace {

// Literals from `date -u -d @$((631065600 + s))`.
TEST(DateText, KnownMomentsPrintAndReadBack) {
  struct Case {
    std::int64_t seconds;
    const char* text;
  };
  for (const Case& c : {Case{0, "Sun Dec 31 00:00:00 1989"}, Case{-1, "Sat Dec 30 23:59:59 1989"},
                        Case{315619199, "Fri Dec 31 23:59:59 1999"}, Case{320761845, "Tue Feb 29 12:30:45 2000"},
                        Case{4294967295, "Wed Feb  6 06:28:15 2126"}}) {
    std::string expected = c.text;
    if (expected[8] == ' ') expected[8] = '0';
    EXPECT_EQ(format_date_text(c.seconds), expected);
    EXPECT_EQ(parse_date_text(c.text), c.seconds);
  }
}

TEST(DateText, WhatIsNoDateIsRefused) {
  for (const char* text : {"", "Sun Dec 31 00:00:00", "Sun Dec 32 00:00:00 1989", "Mon Feb 29 00:00:00 1999",
                           "Sun Dez 31 00:00:00 1989", "Sun Dec 31 24:00:00 1989", "Sun Dec 31 00:00 1989",
                           "Sun Dec 31 00:00:00 89", "Sun Dec 31 -1:00:00 1989", "Sun Dec 31 00:00:00 1989 x"})
    EXPECT_EQ(parse_date_text(text), std::nullopt) << text;
}

TEST(CalendarTime, OnlyWhatIsInACalendarIsATime) {
  EXPECT_EQ(seconds_of({1999, 12, 31, 23, 59, 59}), 315619199);
  EXPECT_EQ(seconds_of({1999, 12, 31, 23, 59, 60}), 315619200);  // a leap second
  for (const CalendarTime& time :
       {CalendarTime{1999, 2, 29, 0, 0, 0}, CalendarTime{1999, 0, 1, 0, 0, 0}, CalendarTime{1999, 257, 1, 0, 0, 0},
        CalendarTime{1999, 1, 257, 0, 0, 0}, CalendarTime{999, 1, 1, 0, 0, 0}, CalendarTime{10000, 1, 1, 0, 0, 0},
        CalendarTime{1999, 1, 1, 24, 0, 0}, CalendarTime{1999, 1, 1, 0, 60, 0}, CalendarTime{1999, 1, 1, 0, 0, 61}})
    EXPECT_EQ(seconds_of(time), std::nullopt);
}

TEST(CalendarTime, MomentsBeforeTheEpochAreTakenApartToo) {
  const CalendarTime time = calendar_time(-1);
  EXPECT_EQ(time.day, 30u);
  EXPECT_EQ(time.hour * 10000 + time.minute * 100 + time.second, 235959u);
}

TEST(Shifted, ThereAndBackIsExactAcrossTheEndsOfTheCount) {
  for (const std::uint32_t seconds : {1U, 100U, 4294967295U}) {
    for (const std::int64_t offset : {-18000, 3600, 20700}) {
      const GarminTime there = shifted({seconds}, offset);
      if (there.seconds != 0) {
        EXPECT_EQ(shifted(there, -offset).seconds, seconds);
      }
    }
  }
}

TEST(OffsetSeconds, DecimalHoursThatWereCutStillGiveTheZone) {
  EXPECT_EQ(offset_seconds(5.333333), 19200);
  EXPECT_EQ(offset_seconds(-9.5), -34200);
}

}  // namespace
}  // namespace store
