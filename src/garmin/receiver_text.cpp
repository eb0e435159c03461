#include "garmin/receiver_text.h"

#include <array>

#include "base/text.h"

namespace garmin {
namespace {

constexpr std::string_view kNameSigns = "- +";
constexpr std::string_view kCommentSigns = "- +;?:/.,()'&#!*\"";

// The plain letters of 0xC0 to 0xFF.
constexpr std::array<std::string_view, 64> kPlainLetters{
    "A", "A", "A", "A", "A", "A", "AE", "C", "E", "E", "E", "E", "I", "I", "I",  "I",   // C0
    "D", "N", "O", "O", "O", "O", "O",  "x", "O", "U", "U", "U", "U", "Y", "TH", "ss",  // D0
    "a", "a", "a", "a", "a", "a", "ae", "c", "e", "e", "e", "e", "i", "i", "i",  "i",   // E0
    "d", "n", "o", "o", "o", "o", "o",  "-", "o", "u", "u", "u", "u", "y", "th", "y"};  // F0

constexpr bool is_capital(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool is_small(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Whether receivers with capitals alone have it, when the small letters have become such.
bool is_capital_text(char c, std::string_view signs) {
  return is_capital(c) || is_digit(c) || signs.find(c) != std::string_view::npos;
}

std::string in_letters(std::string_view latin1, Letters letters, std::string_view signs) {
  std::string text;
  text.reserve(latin1.size());
  const auto append = [&](char c) {
    if (letters == Letters::Capitals) {
      if (is_small(c)) c = static_cast<char>(c - 'a' + 'A');
      text += is_capital_text(c, signs) ? c : '-';
    } else {
      text += c >= ' ' && c <= '~' ? c : '-';
    }
  };
  for (const char c : latin1) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0xC0) {
      append(c);
    } else {
      for (const char plain : kPlainLetters[byte - 0xC0U]) append(plain);
    }
  }
  return text;
}

}  // namespace

std::string receiver_name(std::string_view latin1, const NameRule& rule) {
  std::string name = in_letters(latin1, rule.letters, kNameSigns);
  if (name.size() > rule.longest) name.resize(rule.longest);
  return std::string(base::trim_trailing_blanks(name));
}

std::string receiver_comment(std::string_view latin1, Letters letters) {
  return in_letters(latin1, letters, kCommentSigns);
}

}  // namespace garmin
