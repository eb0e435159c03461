#include "store/symbol_sets.h"

#include <gtest/gtest.h>

#include "store/symbols.h"

namespace store {
namespace {

TEST(LowranceSymbols, WhatAUnitHasSentGoesBackAsItWas) {
  for (const int symbols : {15, 28}) {
    for (int number = 0; number < symbols; ++number) {
      const std::optional<std::int16_t> code = code_of_lowrance_symbol(number, symbols);
      ASSERT_TRUE(code && find_symbol(*code)) << number;
      EXPECT_EQ(lowrance_symbol(*code, symbols), number);
    }
    EXPECT_FALSE(code_of_lowrance_symbol(symbols, symbols));
    EXPECT_FALSE(code_of_lowrance_symbol(-1, symbols));
  }
  EXPECT_FALSE(code_of_lowrance_symbol(15, 27));  // not 28, so it is the small set
}

TEST(LowranceSymbols, OtherSymbolsBecomeWhatIsNearOrTheDot) {
  const auto both = [](int code) { return std::pair(lowrance_symbol(code, 28), lowrance_symbol(code, 15)); };
  using Pair = std::pair<std::uint8_t, std::uint8_t>;
  EXPECT_EQ(both(164), Pair(15, 0));   // dam: bridge, or the dot
  EXPECT_EQ(both(173), Pair(4, 4));    // lodging: house
  EXPECT_EQ(both(191), Pair(25, 3));   // marina: anchor
  EXPECT_EQ(both(178), Pair(27, 10));  // flag
  EXPECT_EQ(both(16393), Pair(9, 9));  // aviation: airplane
  EXPECT_EQ(both(152), Pair(0, 0));    // restroom
  EXPECT_EQ(both(-5), Pair(0, 0));
  EXPECT_EQ(both(99999), Pair(0, 0));
  EXPECT_FALSE(exact_lowrance_symbol(178, 15));
}

TEST(SymbolCode, OnlyTheSetOf16HasNumbersOfItsOwn) {
  Settings settings;
  ItemRecord item;
  item.symbol = 3;
  for (const auto& [set, code] : {std::pair(IconSet::G12xl, 170), {IconSet::Lei15, 3}, {IconSet::Lei28, 3}}) {
    item.symbol_mode = static_cast<std::uint8_t>(set);
    EXPECT_EQ(symbol_code(item, settings), code);
  }
  settings.IconSelector = IconSet::G12xl;
  EXPECT_EQ(mode_of_codes(settings), static_cast<int>(IconSet::Giii));
  settings.IconSelector = IconSet::Lei28;
  EXPECT_EQ(mode_of_codes(settings), static_cast<int>(IconSet::Lei28));
}

}  // namespace
}  // namespace store
