// Position texts cut into numbers, letters, signs, marks and separators, before anybody asks what they mean.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace geodesy {

enum class TokenKind { Number, Letter, DegreeMark, MinuteMark, SecondMark, Colon, Sign, Separator };

struct Token {
  TokenKind kind = TokenKind::Separator;
  std::string_view text;      // as written
  bool after_blank = false;   // blanks stand before it
  double value = 0;           // of a number, never negative
  bool has_decimals = false;  // the number is written with a decimal sign

  // The text in capitals when it is a single letter (a mark of one letter included), else NUL.
  [[nodiscard]] char single_letter() const;
};

// What a comma between two digits is; any other comma is a separator.
enum class InnerComma { Separates, Decimal };

struct Tokens {
  std::array<Token, 24> items;
  std::size_t count = 0;
  std::string problem;  // one sentence, empty when the whole text was understood

  [[nodiscard]] std::span<const Token> all() const { return std::span(items).first(count); }
};

// The tokens look into `text`, which must outlive them. Bytes may be Latin-1 or UTF-8.
[[nodiscard]] Tokens tokenize(std::string_view text, InnerComma inner_comma);

[[nodiscard]] bool has_inner_comma(std::string_view text);

}  // namespace geodesy
