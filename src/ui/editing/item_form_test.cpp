#include "ui/editing/item_form.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/recording_front_end.h"
#include "tests/support/stepping_clock.h"

namespace ui {
namespace {

using store::ItemRecord;

bool same_bits(const ItemRecord& left, const ItemRecord& right) {
  return std::memcmp(static_cast<const void*>(&left), static_cast<const void*>(&right), sizeof left) == 0;
}

class ItemFormTest : public testing::Test {
 protected:
  ItemFormTest() { session.settings.DMSMode = geodesy::Notation::Dmm; }

  static ItemRecord odd_item(char kind) {
    ItemRecord item = store::blank_item();
    item.kind = kind;
    item.position = {51.123456789, -7.987654321};
    store::set_hemispheres(item);
    item.ident = "Caf\xE9|\x80";
    item.altitude = 123.456F;
    item.time = {400000001};
    item.proximity_distance = 1234.5678F;
    item.symbol = 3;
    item.symbol_mode = 2;
    item.display_mode = 77;
    item.colour = 200;
    item.subclass[17] = 0xFE;
    item.link_class = 3;
    item.route_number = 7;
    return item;
  }
  static void type(ItemForm& form, std::string_view id, std::string text) {
    ASSERT_LT(form.find(id), form.fields().size()) << id;
    form.set_text(form.find(id), std::move(text));
  }
  // What is said of a text in a field of a waypoint.
  ItemForm::Verdict judge(std::string_view id, std::string text, char kind = 'W') const {
    ItemForm form(session, odd_item(kind));
    type(form, id, std::move(text));
    return form.judge(form.find(id));
  }

  support::SteppingClock clock;
  support::RecordingFrontEnd front_end;
  session::Session session{clock, front_end, {}};
};

TEST_F(ItemFormTest, WhatIsNotTouchedStaysToTheLastBit) {
  session.settings.externaldatum = "Potsdam_Rauenberg_DHDN";
  session.settings.VerticalValues = store::VerticalUnit::Feet;
  for (const char kind : {'W', 'R', 'T', 'I', 'P'}) {
    const ItemForm form(session, odd_item(kind));
    EXPECT_TRUE(same_bits(form.result(), odd_item(kind))) << kind;
    for (const std::string& problem : form.problems()) EXPECT_EQ(problem, "") << kind;
  }
}

TEST_F(ItemFormTest, AChangedFieldLeavesAllOthersAsTheyWere) {
  ItemForm form(session, odd_item('W'));
  type(form, "comment", "Fuel");
  ItemRecord expected = odd_item('W');
  expected.comment = "Fuel";
  EXPECT_TRUE(same_bits(form.result(), expected));
}

TEST_F(ItemFormTest, EveryFieldArrivesAndIsShownAgain) {
  const std::vector<std::pair<std::string_view, std::string>> typed{
      {"ident", "Harbour"},  {"position", "N10 20.5000 E030 40.2500"},
      {"comment", "Zoll ß"}, {"symbol", "8287"},
      {"display", "5"},      {"time", "Sat Jun 15 08:00:00 2002"},
      {"altitude", "12.5"},  {"depth", "-3.0"},
      {"in_use", "1"},       {"selected", "1"},
      {"type", "108"},       {"class", "65"},
      {"details", "2"},      {"subclass", "01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 FF"},
      {"name", "n"},         {"facility", "f"},
      {"address", "a"},      {"cross_road", "x"},
      {"city", "c"},         {"state", "st"},
      {"country", "co"},     {"link", "l"},
      {"colour", "4"}};
  ItemForm form(session, odd_item('W'));
  for (const auto& [id, text] : typed) type(form, id, text);
  EXPECT_EQ(typed.size(), form.fields().size());
  for (const std::string& problem : form.problems()) EXPECT_EQ(problem, "");
  const ItemRecord item = form.result();
  const ItemForm again(session, item);
  for (const auto& [id, text] : typed) EXPECT_EQ(again.fields()[again.find(id)].text, text) << id;
  EXPECT_NE(item.symbol_mode, 2) << "8287 is a Garmin code";
  EXPECT_EQ(item.subclass[17], 0xFF);
  EXPECT_EQ(item.longitude_hemisphere, 'E');
}

TEST_F(ItemFormTest, ABadEntryIsRefusedInWordsOfItsOwn) {
  EXPECT_EQ(judge("position", "32 382000 5700000").problem, "Zone letter required!");
  EXPECT_EQ(judge("position", "N91 00 E7 00").problem, "latitude 91 is beyond 90 degrees");
  EXPECT_NE(judge("position", "").problem, "");
  EXPECT_EQ(judge("ident", std::string(51, 'x')).problem, "50 characters fit here; these are 51");
  EXPECT_EQ(judge("ident", std::string(50, 'x')).problem, "");
  EXPECT_EQ(judge("ident", "  ").problem, "A name is needed");
  EXPECT_EQ(judge("comment", "two\nlines").problem, "Line ends and other control characters do not fit here");
  EXPECT_EQ(judge("country", "DEU").problem, "2 characters fit here; these are 3");
  EXPECT_EQ(judge("altitude", "high").problem, "This is no number; an empty field means not known");
  EXPECT_EQ(judge("time", "noon").problem, "This is no date and time such as \"Sat Jun 15 08:00:00 2002\"");
  EXPECT_EQ(judge("distance", "-1", 'P').problem, "A number of 0 or more is needed");
  EXPECT_EQ(judge("number", "100", 'R').problem, "A whole number from 0 to 99 is needed");
  EXPECT_EQ(judge("class", "256").problem, "A whole number from 0 to 255 is needed");
  EXPECT_EQ(judge("subclass", "01 02").problem, "18 bytes are needed; these are 2");
  EXPECT_NE(judge("subclass", "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 1G").problem, "");
}

TEST_F(ItemFormTest, SaysWhatBecomesOfAText) {
  EXPECT_EQ(judge("comment", "a|b").note, "Becomes \"a-b\"");
  EXPECT_EQ(judge("comment", "Łódź").note, "Becomes \"Lódz\"");
  EXPECT_EQ(judge("comment", "Zürich").note, "");
  // A letter may become two, which then do not fit.
  EXPECT_EQ(judge("state", "Щ").problem, "2 characters fit here; these are 4");
  EXPECT_EQ(judge("position", "51.5, 7.25").note, "N51 30.0000 E007 15.0000");
  EXPECT_EQ(judge("class", "64").note, "airport");
}

TEST_F(ItemFormTest, AUserWaypointTakesNoFullDetails) {
  ItemForm form(session, odd_item('W'));
  type(form, "class", "0");
  type(form, "details", "2");
  EXPECT_EQ(form.problems()[form.find("details")], "A user waypoint (class 0) has none of these");
}

TEST_F(ItemFormTest, ANewWaypointMustHaveNameAndPosition) {
  ItemRecord item = store::blank_item();
  item.kind = 'W';
  ItemForm form(session, item, true);
  EXPECT_NE(form.problems()[form.find("position")], "");
  EXPECT_NE(form.problems()[form.find("ident")], "");
}

}  // namespace
}  // namespace ui
