// Small text helpers that every folder needs. Texts are bytes (Latin-1 where letters matter); letter case
// is that of ASCII only; numbers use the decimal point whatever the user's locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace base {

// printf into a string; the compiler checks the arguments against the format.
[[gnu::format(printf, 1, 2)]] std::string format_text(const char* format, ...);

[[nodiscard]] bool equal_ignoring_case(std::string_view left, std::string_view right);
[[nodiscard]] std::string lower_case(std::string_view text);

// Blanks are space characters; nothing else is removed.
[[nodiscard]] std::string_view trim_blanks(std::string_view text);
[[nodiscard]] std::string_view trim_trailing_blanks(std::string_view text);

// The pieces between the separators, empty ones included: n separators give n + 1 pieces.
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, char separator);
// The words between runs of blanks and tabs.
[[nodiscard]] std::vector<std::string_view> split_words(std::string_view text);

// The whole text as a number (one leading '+' allowed); nothing when anything else is in it, or it does not fit.
[[nodiscard]] std::optional<long long> parse_integer(std::string_view text, int base = 10);
[[nodiscard]] std::optional<double> parse_number(std::string_view text);

// The number that the text begins with after blanks, as far as it goes; 0 when it begins with none.
[[nodiscard]] long long leading_integer(std::string_view text);
[[nodiscard]] double leading_number(std::string_view text);

// Latin-1 bytes as UTF-8; a text that is UTF-8 already (a file name, say) stays as it is.
[[nodiscard]] std::string utf8_text(std::string_view text);

}  // namespace base
