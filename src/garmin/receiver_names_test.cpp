#include "garmin/receiver_names.h"

#include <gtest/gtest.h>

#include <set>

namespace garmin {
namespace {

constexpr NameRule kSixCapitals{6, Letters::Capitals};

TEST(ReceiverNames, NamesThatComeOutAlikeGetNumbersInPlaceOfTheirLastLetters) {
  ReceiverNames names(kSixCapitals);
  EXPECT_EQ(names.name_of("Coniston Water", 1), "CONIST");
  EXPECT_EQ(names.name_of("Coniston Hall", 2), "CONIS1");
  EXPECT_EQ(names.name_of("Coniston Water", 2), "CONIS2");  // elsewhere, so something else
  EXPECT_EQ(names.name_of("Coniston Water", 1), "CONIST");
  for (std::uint64_t thing = 3; thing < 10; ++thing) (void)names.name_of("Conistone", thing);
  EXPECT_EQ(names.name_of("Conistone", 10), "CONI10");
  EXPECT_EQ(names.name_of("BUOY", 1), "BUOY");
  EXPECT_EQ(names.name_of("buoy", 1), "BUOY1");   // room behind it
  EXPECT_EQ(names.name_of("BUOY ", 1), "BUOY2");  // receivers fill names with blanks
}

TEST(ReceiverNames, ANameThatFitsAsItIsComesBeforeThoseThatAreCutToIt) {
  ReceiverNames names(kSixCapitals);
  for (const std::string_view name : {"Coniston", "Conistone", "CONIST", "CONIS1", ""}) names.reserve(name, 7);
  EXPECT_EQ(names.name_of("Coniston", 7), "CONIS2");
  EXPECT_EQ(names.name_of("Conistone", 7), "CONIS3");
  EXPECT_EQ(names.name_of("CONIST", 7), "CONIST");
  EXPECT_EQ(names.name_of("CONIS1", 7), "CONIS1");
}

TEST(ReceiverNames, ThingsWithoutANameAreNumbered) {
  ReceiverNames names({10, Letters::Ascii});
  EXPECT_EQ(names.name_of("", 1), "WPT1");
  EXPECT_EQ(names.name_of("  ", 1), "WPT2");
  EXPECT_EQ(names.name_of("", 1), "WPT1");
  ReceiverNames tracks({10, Letters::Ascii}, "TRACK");
  EXPECT_EQ(tracks.name_of("", 1), "TRACK1");
}

TEST(ReceiverNames, AHundredThousandThatAreCutAlikeAreAllDifferentAndNoneTooLong) {
  // Alike in four letters or in all six: both ways the numbers of others are in the way.
  ReceiverNames names(kSixCapitals);
  std::set<std::string> given;
  for (int i = 0; i < 100000; ++i) {
    const std::string last{static_cast<char>('A' + i % 26), static_cast<char>('A' + i / 26 % 26)};
    const std::string name = names.name_of("CONI" + last + "ABC", static_cast<std::uint64_t>(i));
    ASSERT_LE(name.size(), 6U);
    ASSERT_TRUE(given.insert(name).second) << name;
  }
}

TEST(ReceiverNames, WhatIsOnePlaceToAReceiverIsOneThing) {
  store::ItemRecord item;
  item.position = {54.5, 180.0};
  const std::uint64_t place = place_of(item);
  item.position = {54.5 + 1e-7, -180.0};
  EXPECT_EQ(place_of(item), place);
  item.position.latitude = 54.50002;
  EXPECT_NE(place_of(item), place);
  item.position = {-54.5, 180.0};
  EXPECT_NE(place_of(item), place);
}

}  // namespace
}  // namespace garmin
