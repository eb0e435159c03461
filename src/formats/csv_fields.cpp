#include "formats/csv_fields.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace formats {
namespace {

constexpr char kQuote = '"';

// Takes a field that stands between quotes from the text: nothing when it is not followed by a separator, or the end
// of the text, and so is none. `open` becomes true where the closing quote is missing.
std::optional<std::string> take_quoted(std::string_view& text, char separator, bool& open) {
  if (!text.starts_with(kQuote)) return std::nullopt;
  std::string field;
  std::size_t at = 1;
  for (;; ++at) {
    const std::size_t quote = text.find(kQuote, at);
    if (quote == std::string_view::npos) {
      open = true;
      return std::nullopt;
    }
    field += text.substr(at, quote - at);
    at = quote + 1;
    if (at == text.size() || text[at] == separator) break;
    if (text[at] != kQuote) return std::nullopt;
    field += kQuote;
  }
  text.remove_prefix(at);
  return field;
}

}  // namespace

std::optional<char> csv_separator(std::string_view line) {
  bool quoted = false;
  for (const char c : line) {
    if (c == kQuote) quoted = !quoted;
    if (!quoted && (c == ',' || c == ';' || c == '\t')) return c;
  }
  return std::nullopt;
}

std::optional<CsvFields> split_quoted(std::string_view text, char separator) {
  CsvFields fields;
  for (;;) {
    bool open = false;
    if (std::optional<std::string> field = take_quoted(text, separator, open)) {
      fields.push_back(*std::move(field));
    } else if (open) {
      return std::nullopt;
    } else {
      const std::size_t end = std::min(text.find(separator), text.size());
      fields.emplace_back(text.substr(0, end));
      text.remove_prefix(end);
    }
    if (text.empty()) return fields;
    text.remove_prefix(1);
  }
}

Continuation continuation_of_quoted(const std::string& line, char separator) {
  const std::string quoted = kQuote + line;
  std::string_view text = quoted;
  bool open = false;
  if (!take_quoted(text, separator, open)) return open ? Continuation::GoesOn : Continuation::None;
  return split_quoted(text, separator) ? Continuation::Completes : Continuation::GoesOn;
}

CsvFields split_plain(std::string_view line, char separator) {
  const std::vector<std::string_view> pieces = base::split(line, separator);
  return {pieces.begin(), pieces.end()};
}

CsvFields split_csv_line(std::string_view line, char separator) {
  std::optional<CsvFields> fields = split_quoted(line, separator);
  return fields ? *std::move(fields) : split_plain(line, separator);
}

std::optional<double> csv_number(std::string_view field) {
  field = base::trim_blanks(field);
  if (field.find(',') == std::string_view::npos) return base::parse_number(field);
  std::string text(field);
  std::replace(text.begin(), text.end(), ',', '.');
  return base::parse_number(text);
}

std::optional<int> csv_integer(std::string_view field) {
  const std::optional<double> number = csv_number(field);
  if (!number || *number != std::trunc(*number) || std::abs(*number) > 999'999'999) return std::nullopt;
  return static_cast<int>(*number);
}

std::string joined_with_commas(std::span<const std::string> pieces) {
  std::string text;
  for (const std::string& piece : pieces) {
    text += piece;
    text += ',';
  }
  if (!text.empty()) text.pop_back();
  return text;
}

}  // namespace formats
