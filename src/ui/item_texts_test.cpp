#include "ui/item_texts.h"

#include <gtest/gtest.h>

#include "tests/support/recording_front_end.h"
#include "tests/support/stepping_clock.h"

namespace ui {
namespace {

class ItemTextsTest : public testing::Test {
 protected:
  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  session::Session session{clock, front_end, {}};
};

TEST_F(ItemTextsTest, WhatIsShownReadsBackInEveryNotationAndAnotherDatum) {
  session.settings.externaldatum = "Potsdam_Rauenberg_DHDN";
  const geodesy::Position here{51.123456, -7.654321};
  for (const auto notation :
       {geodesy::Notation::Dms, geodesy::Notation::Dmm, geodesy::Notation::Ddd, geodesy::Notation::Utm}) {
    session.settings.DMSMode = notation;
    const ItemTexts texts(session);
    const auto [first, second] = texts.position(here);
    const geodesy::ParsedPosition parsed = texts.parse_position(first + " " + second);
    ASSERT_TRUE(parsed.position) << parsed.problem;
    EXPECT_NEAR(parsed.position->latitude, here.latitude, 2e-5);
    EXPECT_NEAR(parsed.position->longitude, here.longitude, 2e-5);
  }
  session.settings.DMSMode = geodesy::Notation::Ddd;
  EXPECT_NE(ItemTexts(session).position(here).first, "N51.1234560") << "not shifted";
}

TEST_F(ItemTextsTest, AnUnknownDatumIsShownAsWgs84WithoutABoxForEveryRow) {
  session.settings.externaldatum = "Atlantis";
  session.settings.DMSMode = geodesy::Notation::Ddd;
  EXPECT_EQ(ItemTexts(session).position({1.5, 2.5}).first, "N01.5000000");
  EXPECT_TRUE(front_end.boxes.empty());
}

TEST_F(ItemTextsTest, HeightsTimesAndDistancesComeBackAndNonsenseDoesNot) {
  session.settings.VerticalValues = store::VerticalUnit::Feet;
  session.settings.DistValues = geodesy::DistanceUnit::NauticalMiles;
  session.settings.TimeOffsetHours = -5;
  const ItemTexts texts(session);
  EXPECT_EQ(texts.height(30.48F), "100.0");
  EXPECT_NEAR(texts.parse_height("100").value(), 30.48F, 1e-4F);
  EXPECT_FALSE(store::is_known(texts.parse_height(" ").value()));
  for (const char* bad : {"high", "1e30", "inf", "12m"}) EXPECT_FALSE(texts.parse_height(bad)) << bad;
  const store::GarminTime noon{12 * 3600 + 86400};
  EXPECT_EQ(texts.time(noon, 'T'), "Mon Jan 01 07:00:00 1990");
  EXPECT_EQ(texts.parse_time(texts.time(noon, 'T'), 'T'), noon);
  EXPECT_EQ(texts.parse_time("", 'T'), store::GarminTime{});
  EXPECT_FALSE(texts.parse_time("yesterday", 'T'));
  EXPECT_FALSE(texts.parse_time("Sat Dec 30 00:00:00 1989", 'T')) << "before all times";
  EXPECT_EQ(texts.time(noon, 'I'), "Mon Jan 01 12:00:00 1990") << "events keep the time they were given";
  EXPECT_EQ(texts.parse_time("Mon Jan 01 12:00:00 1990", 'I'), noon);
  EXPECT_EQ(texts.distance(1852), "1.000 nm");
  EXPECT_EQ(texts.parse_distance("2"), 3704);
  EXPECT_FALSE(texts.parse_distance("-1"));
}

TEST(InitialBearing, GoesRoundTheCompassAndOverTheDateLine) {
  EXPECT_NEAR(initial_bearing({0, 0}, {1, 0}), 0, 1e-9);
  EXPECT_NEAR(initial_bearing({0, 179}, {0, -179}), 90, 1e-9);
  EXPECT_NEAR(initial_bearing({0, 0}, {-1, 0}), 180, 1e-9);
  EXPECT_NEAR(initial_bearing({0, -179}, {0, 179}), 270, 1e-9);
  EXPECT_NEAR(initial_bearing({50, 7}, {51, 6.9999999}), 360, 1e-4);
}

}  // namespace
}  // namespace ui
