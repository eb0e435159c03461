#include "base/encoding.h"

#include <gtest/gtest.h>

namespace base {
namespace {

TEST(Encoding, RecordsShowTheCharactersThatWindowsHasAndComeBack) {
  EXPECT_EQ(utf8_from_latin1("M\xFCller \x80 5 \x96 \x81"), "M\xC3\xBCller \xE2\x82\xAC 5 \xE2\x80\x93 \xC2\x81");
  std::string all;
  for (int byte = 1; byte < 256; ++byte)
    if (byte < 0x80 || byte >= 0xA0) all += static_cast<char>(byte);
  int substitutes = 0;
  EXPECT_EQ(latin1_from_utf8(utf8_from_latin1(all), &substitutes), all);
  EXPECT_EQ(substitutes, 0);
}

TEST(Encoding, WhatLatin1DoesNotHaveBecomesReadable) {
  struct Case {
    const char *utf8, *latin1;
    int substitutes;
  };
  for (const Case& c : {
           Case{"M\u00FCller", "M\xFCller", 0},
           Case{"a \u2013 b \u2014 \u201EQ\u201C \u2026", "a - b - \"Q\" ...", 5},
           Case{"5 \u20AC \u2116 3 \u2122", "5 EUR No 3 TM", 3},
           Case{"\u0141\u00F3d\u017A \u0160koda \u0151 \u0110 \u0178", "L\363dz Skoda o D Y", 6},
           Case{"\u017F\u017E\u017D\u0100\u012F\u0130\u0131\u0177", "szZAiIiy", 8},
           Case{"\u0110\u00E0 N\u1EB5ng \u1EF8\u1E95", "D\xE0 Nang Yz", 4},
           Case{"\u0391\u03B8\u03AE\u03BD\u03B1 \u03A7\u03AF\u03BF\u03C2", "Athina Chios", 9},
           Case{"\u041C\u043E\u0441\u043A\u0432\u0430 \u0429\u0451", "Moskva Shchyo", 8},
           Case{"\u041A\u0438\u0457\u0432 \u0491 \u0409\u0443\u0431", "Kiyiv g Ljub", 8},
           Case{"\u03A9\u2192\u2154\u2075\uFB03\uFF21\uFF5E\u2161", "O->2/35ffiA~II", 8},
           Case{"e\u0301 n\u0303 u\u0308 r\u030C \u0301", "\xE9 \xF1 \xFC r ", 2},
           Case{"\uFEFFx\u200By\u2060\uFE0F", "xy", 0},
           Case{"\xC2\x96 \xC2\x81", "- ?", 2},
           Case{"\u4E2D\U0001F600\u2016\u01BF", "????", 4},
       }) {
    int substitutes = 0;
    EXPECT_EQ(latin1_from_utf8(c.utf8, &substitutes), c.latin1);
    EXPECT_EQ(substitutes, c.substitutes) << c.latin1;
  }
}

TEST(Encoding, BytesThatAreNoUtf8StayWhatTheyAre) {
  for (const char* text : {"M\xFCller", "\xE4", "\xC3", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF8\x88\x80",
                           "\xF4\x90\x80\x80", "a\x80", "\xE2\x82"})
    EXPECT_EQ(latin1_from_utf8(text), text);
}

}  // namespace
}  // namespace base
