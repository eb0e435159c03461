// The settings that a user may change, as the pages of the property sheet show them: a new setting is one row.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace ui {

enum class OptionKind {
  Flag,
  Number,     // whole, within the row's range
  Hours,      // a decimal number within the range; may be empty
  Latitude,   // an angle; empty: not set
  Longitude,  // likewise
  Text,
  Choice,  // one of the row's choices
  Bits,    // a flag for each of the row's choices, whose words are the bits' values
  Directory,
  Port,
  Datum,
  LastSlot,   // a number within the range, or none for "up to the last one"
  Symbol,     // a Garmin code
  Symbol15,   // a number in the small set of Lowrance/Eagle units
  Symbol28,   // in the large one
  Symbol16,   // in the set of the GPS 12XL family
  Symbols16,  // that set: sixteen Garmin codes
};

struct OptionChoice {
  std::string_view word;  // as the configuration file has it
  std::string_view label;
};

struct OptionRow {
  std::string_view page;
  std::string_view section;  // rows of one section stand together under this heading
  std::string_view key;
  std::string_view label;
  OptionKind kind;
  std::string_view hint = {};
  int lowest = 0;
  int highest = 0;
  std::span<const OptionChoice> choices = {};
};

// In the order of pages and sections.
[[nodiscard]] std::span<const OptionRow> option_rows();
// nullptr for a key that has no row.
[[nodiscard]] const OptionRow* find_option(std::string_view key);
// Keys that the program keeps by itself.
[[nodiscard]] std::span<const std::string_view> keys_without_option();

struct OptionPage {
  std::string_view title;
  std::vector<const OptionRow*> rows;
};
[[nodiscard]] std::vector<OptionPage> option_pages();
// A page of its own for some of them; the keys have rows.
[[nodiscard]] OptionPage option_page(std::string_view title, std::span<const std::string_view> keys);

inline constexpr std::string_view kIgcPage = "IGC flights";

}  // namespace ui
