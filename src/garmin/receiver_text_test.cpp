#include "garmin/receiver_text.h"

#include <gtest/gtest.h>

namespace garmin {
namespace {

std::string range(int first, int last) {
  std::string bytes;
  for (int c = first; c <= last; ++c) bytes += static_cast<char>(c);
  return bytes;
}

TEST(ReceiverText, AccentsFallAndLigaturesBecomeTwoLetters) {
  EXPECT_EQ(receiver_comment(range(0xC0, 0xDF), Letters::Ascii), "AAAAAAAECEEEEIIIIDNOOOOOxOUUUUYTHss");
  EXPECT_EQ(receiver_comment(range(0xE0, 0xFF), Letters::Ascii), "aaaaaaaeceeeeiiiidnooooo-ouuuuythy");
  EXPECT_EQ(receiver_comment(range(0xC0, 0xDF), Letters::Capitals), "AAAAAAAECEEEEIIIIDNOOOOOXOUUUUYTHSS");
  EXPECT_EQ(receiver_comment(range(0xE0, 0xFF), Letters::Capitals), "AAAAAAAECEEEEIIIIDNOOOOO-OUUUUYTHY");
}

TEST(ReceiverText, EachSetOfLettersHasItsSignsAndAHyphenForAllOthers) {
  const std::string signs = range(' ', '/') + range(':', '@') + range('[', '`') + range('{', '~');
  EXPECT_EQ(receiver_comment(signs, Letters::Ascii), signs);
  EXPECT_EQ(receiver_name(signs, {99, Letters::Ascii}), signs);
  EXPECT_EQ(receiver_comment(signs, Letters::Capitals), " !\"#--&'()*+,-./:;---?-----------");
  EXPECT_EQ(receiver_name(signs, {99, Letters::Capitals}), " ----------+---------------------");
  const std::string controls = range(0, 31) + range(127, 0xBF);
  for (const Letters letters : {Letters::Capitals, Letters::Ascii})
    EXPECT_EQ(receiver_comment(controls, letters), std::string(controls.size(), '-'));
}

TEST(ReceiverText, ANameIsCutWhenItHasItsLetters) {
  EXPECT_EQ(receiver_name("Stra\337e 7", {6, Letters::Capitals}), "STRASS");
  EXPECT_EQ(receiver_name("Stra\337e 7", {9, Letters::Ascii}), "Strasse 7");
  EXPECT_EQ(receiver_name("Stra\337e 7", {0, Letters::Ascii}), "");
  EXPECT_EQ(receiver_name("", {6, Letters::Capitals}), "");
  EXPECT_EQ(receiver_name(" Lake  Constance", {7, Letters::Capitals}), " LAKE");
}

}  // namespace
}  // namespace garmin
