#include "geodesy/position_tokens.h"

#include <algorithm>
#include <optional>

#include "base/text.h"

namespace geodesy {
namespace {

constexpr std::size_t kLongestText = 200;

struct Spelling {
  std::string_view text;
  TokenKind kind;
};

// Signs that are no letters, in UTF-8 and Latin-1; of two that begin alike the longer stands first.
constexpr std::array kMarks{
    Spelling{"''", TokenKind::SecondMark},
    Spelling{"'", TokenKind::MinuteMark},
    Spelling{"\"", TokenKind::SecondMark},
    Spelling{":", TokenKind::Colon},
    Spelling{";", TokenKind::Separator},
    Spelling{",", TokenKind::Separator},
    Spelling{"+", TokenKind::Sign},
    Spelling{"-", TokenKind::Sign},
    Spelling{"\xC2\xB0", TokenKind::DegreeMark},
    Spelling{"\xB0", TokenKind::DegreeMark},
    Spelling{"\xC2\xBA", TokenKind::DegreeMark},
    Spelling{"\xBA", TokenKind::DegreeMark},
    Spelling{"\xC2\xB4\xC2\xB4", TokenKind::SecondMark},
    Spelling{"\xC2\xB4", TokenKind::MinuteMark},
    Spelling{"\xB4\xB4", TokenKind::SecondMark},
    Spelling{"\xB4", TokenKind::MinuteMark},
    Spelling{"\xE2\x80\x99\xE2\x80\x99", TokenKind::SecondMark},
    Spelling{"\xE2\x80\x99", TokenKind::MinuteMark},
    Spelling{"\xE2\x80\xB2", TokenKind::MinuteMark},
    Spelling{"\x92", TokenKind::MinuteMark},
    Spelling{"\xE2\x80\x9D", TokenKind::SecondMark},
    Spelling{"\xE2\x80\xB3", TokenKind::SecondMark},
    Spelling{"\x94", TokenKind::SecondMark},
    Spelling{"\xE2\x88\x92", TokenKind::Sign},
};

// Words in small letters, longer ones first. A lone "s" is the south, or seconds where they can stand.
constexpr std::array kWords{
    Spelling{"degrees", TokenKind::DegreeMark}, Spelling{"degree", TokenKind::DegreeMark},
    Spelling{"degs", TokenKind::DegreeMark},    Spelling{"deg", TokenKind::DegreeMark},
    Spelling{"d", TokenKind::DegreeMark},       Spelling{"minutes", TokenKind::MinuteMark},
    Spelling{"minute", TokenKind::MinuteMark},  Spelling{"mins", TokenKind::MinuteMark},
    Spelling{"min", TokenKind::MinuteMark},     Spelling{"m", TokenKind::MinuteMark},
    Spelling{"seconds", TokenKind::SecondMark}, Spelling{"second", TokenKind::SecondMark},
    Spelling{"secs", TokenKind::SecondMark},    Spelling{"sec", TokenKind::SecondMark},
    Spelling{"north", TokenKind::Letter},       Spelling{"south", TokenKind::Letter},
    Spelling{"east", TokenKind::Letter},        Spelling{"west", TokenKind::Letter},
};

constexpr std::array<std::string_view, 6> kBlanks{" ", "\t", "\r", "\n", "\xC2\xA0", "\xA0"};

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool comma_is_inner(std::string_view text, std::size_t at) {
  return text[at] == ',' && at > 0 && is_digit(text[at - 1]) && at + 1 < text.size() && is_digit(text[at + 1]);
}

class Tokenizer {
 public:
  Tokenizer(std::string_view text, InnerComma inner_comma) : text_(text), inner_comma_(inner_comma) {}

  Tokens run() {
    bool blank = false;
    while (tokens_.problem.empty() && at_ < text_.size()) {
      if (skip_blank()) {
        blank = true;
        continue;
      }
      if (tokens_.count + 1 > tokens_.items.size()) {
        tokens_.problem = "the text has too many parts for a position";
        break;
      }
      const std::size_t first = tokens_.count;
      take_one();
      tokens_.items[first].after_blank = blank;
      blank = false;
    }
    return tokens_;
  }

 private:
  [[nodiscard]] std::string_view rest() const { return text_.substr(at_); }

  bool skip_blank() {
    const auto blank = std::ranges::find_if(kBlanks, [this](auto text) { return rest().starts_with(text); });
    if (blank == kBlanks.end()) return false;
    at_ += blank->size();
    return true;
  }

  void add(TokenKind kind, std::size_t size) {
    tokens_.items[tokens_.count++] = {kind, text_.substr(at_, size)};
    at_ += size;
  }

  void take_one() {
    const char c = text_[at_];
    if (is_digit(c) || c == '.') return take_number();
    if (is_letter(c)) return take_word();
    const auto mark =
        std::ranges::find_if(kMarks, [this](const Spelling& row) { return rest().starts_with(row.text); });
    if (mark != kMarks.end()) return add(mark->kind, mark->text.size());
    tokens_.problem = c > ' ' && c < '\x7F' ? base::format_text("'%c' does not belong in a position", c)
                                            : "a character does not belong in a position";
  }

  [[nodiscard]] bool at_decimal_sign() const {
    if (at_ >= text_.size()) return false;
    return text_[at_] == '.' || (inner_comma_ == InnerComma::Decimal && comma_is_inner(text_, at_));
  }

  void skip_digits() {
    while (at_ < text_.size() && is_digit(text_[at_])) ++at_;
  }

  void take_number() {
    const std::size_t start = at_;
    skip_digits();
    const bool has_decimals = at_decimal_sign();
    if (has_decimals) ++at_;
    skip_digits();
    if (at_decimal_sign()) {
      tokens_.problem = "the decimal signs are ambiguous: write decimals with a point";
      return;
    }
    const std::string_view written = text_.substr(start, at_ - start);
    std::string digits(written);
    std::ranges::replace(digits, ',', '.');
    const std::optional<double> value = base::parse_number(digits);
    if (!value) {
      tokens_.problem = "'" + digits + "' is no number";
      return;
    }
    tokens_.items[tokens_.count++] = {TokenKind::Number, written, false, *value, has_decimals};
  }

  // The letters of one run are a word, or unit words with a word or a lone letter behind: "N", "deg", "mN".
  void take_word() {
    const auto end = std::ranges::find_if_not(rest(), is_letter);
    const std::string_view word = rest().substr(0, static_cast<std::size_t>(end - rest().begin()));
    const auto known = std::ranges::find_if(kWords, [word](const Spelling& row) {
      return base::equal_ignoring_case(word.substr(0, row.text.size()), row.text) &&
             (row.kind != TokenKind::Letter || word.size() == row.text.size());
    });
    if (known != kWords.end()) return add(known->kind, known->text.size());
    if ((word[0] == 's' || word[0] == 'S') && seconds_can_stand_here()) return add(TokenKind::SecondMark, 1);
    if (word.size() == 1) return add(TokenKind::Letter, 1);
    tokens_.problem = "'" + std::string(word) + "' does not belong in a position";
  }

  // Directly behind the number that follows minutes marked by a letter: "51d30m15s".
  [[nodiscard]] bool seconds_can_stand_here() const {
    if (tokens_.count < 2 || !is_digit(text_[at_ - 1])) return false;
    const Token& before = tokens_.items[tokens_.count - 2];
    return before.kind == TokenKind::MinuteMark && is_letter(before.text[0]);
  }

  std::string_view text_;
  InnerComma inner_comma_;
  std::size_t at_ = 0;
  Tokens tokens_;
};

}  // namespace

char Token::single_letter() const {
  if (text.size() != 1 || !is_letter(text[0])) return '\0';
  return static_cast<char>(text[0] & ~('a' - 'A'));
}

Tokens tokenize(std::string_view text, InnerComma inner_comma) {
  if (text.size() <= kLongestText) return Tokenizer(text, inner_comma).run();
  Tokens tokens;
  tokens.problem = "the text is too long for a position";
  return tokens;
}

bool has_inner_comma(std::string_view text) {
  text = text.substr(0, kLongestText);
  for (std::size_t i = 0; i < text.size(); ++i)
    if (comma_is_inner(text, i)) return true;
  return false;
}

}  // namespace geodesy
