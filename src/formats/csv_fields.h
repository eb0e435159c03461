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
// What a line that begins within quotes does: it completes the record, or ends within quotes too, or its quote closes
// where no field ends, and so the line is none of that record.
enum class Continuation { Completes, GoesOn, None };
[[nodiscard]] Continuation continuation_of_quoted(const std::string& line, char separator);
// All quotes are characters.
[[nodiscard]] CsvFields split_plain(std::string_view line, char separator);
// As the first, but where the line ends within quotes they are all taken as characters.
[[nodiscard]] CsvFields split_csv_line(std::string_view line, char separator);

// The whole field as a number, blanks about it aside: "54.325", "54,325", "1,0E+01".
[[nodiscard]] std::optional<double> csv_number(std::string_view field);
// The same without a fraction: "14", "1,4E+01". At most nine digits.
[[nodiscard]] std::optional<int> csv_integer(std::string_view field);

// The same text with its commas, where it was split: a spreadsheet that has saved the columns with other separators
// since has left none of its own between them.
[[nodiscard]] std::string joined_with_commas(std::span<const std::string> pieces);

}  // namespace formats
