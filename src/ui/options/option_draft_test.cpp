#include "ui/options/option_draft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "base/text.h"
#include "tests/support/recording_front_end.h"
#include "tests/support/stepping_clock.h"
#include "ui/options/datum_search.h"

namespace ui {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OptionsTest : public testing::Test {
 protected:
  std::string take(const char* key, const std::string& text) { return draft.take(*find_option(key), text); }

  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  session::Session session{clock, front_end, {}};
  OptionDraft draft{session};
};

TEST_F(OptionsTest, EveryKeyOfTheFileIsOnOnePageOrKeptByTheProgram) {
  std::map<std::string_view, int> places;
  for (const OptionRow& row : option_rows()) ++places[row.key];
  for (const std::string_view key : keys_without_option()) ++places[key];
  for (const std::string_view key : store::key_names()) EXPECT_EQ(places[key], 1) << key;
  EXPECT_EQ(places.size(), store::key_names().size()) << "a row has no key";
}

TEST_F(OptionsTest, PagesAndSectionsAreNotTornApart) {
  std::set<std::string> begun;
  std::string last;
  for (const OptionRow& row : option_rows()) {
    const std::string section = std::string(row.page) + "/" + std::string(row.section);
    if (section != last) {
      EXPECT_TRUE(begun.insert(section).second) << section;
    }
    last = section;
  }
}

TEST_F(OptionsTest, WhateverAFieldOffersTheFileTakesAndGivesBack) {
  for (const OptionRow& row : option_rows()) {
    if (row.kind == OptionKind::Bits || row.kind == OptionKind::Symbols16) continue;
    for (const OptionEntry& entry : draft.entries(row)) {
      EXPECT_EQ(draft.take(row, entry.text), "") << row.key << " " << entry.text;
      EXPECT_EQ(draft.text(row), entry.text) << row.key;
    }
  }
}

TEST_F(OptionsTest, TheLimitsOfNumbersAreTakenAndNothingBeyond) {
  for (const OptionRow& row : option_rows()) {
    if (row.kind != OptionKind::Number) continue;
    for (const int number : {row.lowest, row.highest}) {
      EXPECT_EQ(draft.take(row, std::to_string(number)), "") << row.key;
      EXPECT_EQ(draft.text(row), std::to_string(number)) << row.key;
    }
    for (const std::string& text : {std::to_string(row.highest + 1LL), std::to_string(row.lowest - 1LL),
                                    std::string("1.5"), std::string("x"), std::string()})
      EXPECT_THAT(draft.take(row, text), HasSubstr("whole number")) << row.key << " " << text;
    EXPECT_EQ(draft.text(row), std::to_string(row.highest)) << row.key;
  }
}

TEST_F(OptionsTest, AnOddValueOfTheFileStaysWhenItsFieldWasNotTouched) {
  session.settings.SA_LineWidth = 700;
  session.settings.externaldatum = "Atlantis";
  session.settings.port_speed = 14400;
  OptionDraft odd(session);
  for (const OptionRow& row : option_rows()) EXPECT_EQ(odd.take(row, odd.text(row)), "") << row.key;
  EXPECT_EQ(store::configuration_text(odd.settings()), store::configuration_text(session.settings));
  EXPECT_EQ(odd.entries(*find_option("port_speed")).back().text, "14400");
}

TEST_F(OptionsTest, TextsAreNeverCutWithoutAWord) {
  EXPECT_THAT(take("Pilot", std::string(511, 'x')), HasSubstr("too long"));
  EXPECT_EQ(draft.settings().Pilot, "None");
  const std::string longest(510, 'x');
  EXPECT_EQ(take("Pilot", longest), "");
  store::Settings again;
  store::read_configuration(store::configuration_text(draft.settings()), again);
  EXPECT_EQ(again.Pilot, longest);
}

TEST_F(OptionsTest, TheMapCentreIsAnAngleOrNotSet) {
  EXPECT_EQ(draft.text(*find_option("SA_SetLat")), "");
  EXPECT_EQ(take("SA_SetLat", "S33 30.0"), "");
  EXPECT_EQ(draft.settings().SA_SetLat, -33.5);
  EXPECT_EQ(take("SA_SetLat", "90.1"), "This is no latitude");
  EXPECT_EQ(take("SA_SetLat", "W12"), "This is no latitude");
  EXPECT_EQ(take("SA_SetLon", "north"), "This is no longitude");
  EXPECT_EQ(take("SA_SetLat", " "), "");
  EXPECT_EQ(draft.settings().SA_SetLat, store::kCoordinateNotSet);
}

TEST_F(OptionsTest, TheTimeOffsetMayBeEmpty) {
  EXPECT_EQ(take("TimeOffsetHours", "-3.5"), "");
  EXPECT_EQ(draft.settings().TimeOffsetHours, -3.5);
  EXPECT_THAT(take("TimeOffsetHours", "49"), HasSubstr("from -48 to 48"));
  EXPECT_EQ(take("TimeOffsetHours", ""), "");
  EXPECT_FALSE(draft.settings().TimeOffsetHours);
}

TEST_F(OptionsTest, ALastSlotBeforeTheFirstIsAContradiction) {
  EXPECT_EQ(take("SA_LwrRangeLo", "20"), "");
  EXPECT_EQ(draft.contradiction().text, "");
  EXPECT_EQ(take("SA_LwrRangeHi", "19"), "");
  EXPECT_EQ(draft.contradiction().key, "SA_LwrRangeHi");
}

TEST_F(OptionsTest, AnUnknownDatumIsRefused) {
  EXPECT_THAT(take("externaldatum", "Atlantis"), HasSubstr("no datum"));
  EXPECT_EQ(take("externaldatum", "NAD27_CONUS"), "");
}

TEST_F(OptionsTest, DatumsAreSortedAndFoundByAnyPartOfTheirName) {
  const std::vector<std::string> names = sorted_datums(session.datums);
  EXPECT_TRUE(std::ranges::is_sorted(names, {}, base::lower_case));
  EXPECT_THAT(matching_datums(names, "wgs 84"), ElementsAre("WGS-84"));
  EXPECT_THAT(matching_datums(names, "27 con"), testing::Contains("NAD27_CONUS"));
  EXPECT_EQ(matching_datums(names, ""), names);
  EXPECT_THAT(matching_datums(names, "atlantis"), IsEmpty());
}

TEST_F(OptionsTest, ThePreviewShiftsAPositionAndTellsHowFar) {
  std::string problem;
  const auto same = preview_datum(session, "WGS-84", geodesy::Notation::Ddd, "51.5 7.25", problem);
  ASSERT_TRUE(same) << problem;
  EXPECT_EQ(same->position.first, "N51.5000000");
  EXPECT_EQ(same->metres, 0);
  const auto shifted = preview_datum(session, "Potsdam_Rauenberg_DHDN", geodesy::Notation::Dmm, "51.5 7.25", problem);
  ASSERT_TRUE(shifted) << problem;
  EXPECT_GT(shifted->metres, 100);
  EXPECT_LT(shifted->metres, 300);
  EXPECT_FALSE(preview_datum(session, "WGS-84", geodesy::Notation::Ddd, "somewhere", problem));
  EXPECT_NE(problem, "");
}

TEST_F(OptionsTest, ThePreviewStartsAtTheReferenceElseAtTheFirstWaypointInUse) {
  EXPECT_EQ(preview_place(session, geodesy::Notation::Ddd).text, "");
  for (const char* ident : {"GONE", "HERE"}) {
    session.items.start_item();
    session.items.CurrentItem.ident = ident;
    session.items.CurrentItem.position = {10, 20};
    ASSERT_EQ(session.items.push_waypoint(0), 0);
  }
  session.items.set_in_use('W', 1, false);
  EXPECT_EQ(preview_place(session, geodesy::Notation::Ddd).origin, "waypoint HERE");
  session.settings.RefRecord = store::ReferenceRecord{1, 2, {}};
  EXPECT_EQ(preview_place(session, geodesy::Notation::Ddd).text, "N01.0000000 E002.0000000");
}

}  // namespace
}  // namespace ui
