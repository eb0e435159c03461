// The fields of comma-separated values as RFC 4180 describes them, and as spreadsheets of many countries write them:
// with semicolons or tabs, and with decimal commas.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

using CsvFields = std::vector<std::string>;

// What separates the fields of a line: the first comma, semicolon or tab outside quotes, if there is any.
[[nodiscard]] std::optional<char> csv_separator(std::string_view line);

// A field between quotes loses them, and "" in it is one quote; other quotes are characters like others. Nothing when
// the text ends within quotes.
[[nodiscard]] std::optional<CsvFields> split_quoted(std::string_view text, char separator);
// All quotes are characters.
[[nodiscard]] CsvFields split_plain(std::string_view line, char separator);
// As the first, but where the line ends within quotes they are all taken as characters.
[[nodiscard]] CsvFields split_csv_line(std::string_view line, char separator);

// The whole field as a number, blanks about it aside: "54.325", "54,325", "1,0E+01".
[[nodiscard]] std::optional<double> csv_number(std::string_view field);
// The same without a fraction: "14", "1,4E+01". At most nine digits.
[[nodiscard]] std::optional<int> csv_integer(std::string_view field);

// The text that was split at its own separators.
[[nodiscard]] std::string joined(std::span<const std::string> pieces, char separator);

}  // namespace formats
