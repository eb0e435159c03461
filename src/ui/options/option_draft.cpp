#include "ui/options/option_draft.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "ui/item_texts.h"

namespace ui {
namespace {

constexpr std::size_t kLongestLine = 516;  // of the configuration file, key and all

std::string numbered(int number, int code) { return base::format_text("%d  %s", number, symbol_name(code).c_str()); }

std::vector<OptionEntry> lowrance_entries(int symbols) {
  std::vector<OptionEntry> entries;
  for (int number = 0; number < symbols; ++number)
    entries.push_back({std::to_string(number),
                       numbered(number, store::code_of_lowrance_symbol(number, symbols).value_or(store::kDotSymbol))});
  return entries;
}

void add_if_missing(std::vector<OptionEntry>& entries, const std::string& text, const std::string& label) {
  if (!text.empty() && std::ranges::find(entries, text, &OptionEntry::text) == entries.end())
    entries.push_back({text, label});
}

// Empty when the text is a whole number of the range.
std::string number_problem(const OptionRow& row, const std::string& text) {
  const auto number = base::parse_integer(text);
  if (number && *number >= row.lowest && *number <= row.highest) return {};
  return base::format_text("This must be a whole number from %d to %d", row.lowest, row.highest);
}

std::string hours_problem(const OptionRow& row, const std::string& text) {
  const auto hours = base::parse_number(text);
  if (text.empty() || (hours && *hours >= row.lowest && *hours <= row.highest)) return {};
  return base::format_text("This must be a number from %d to %d, or empty", row.lowest, row.highest);
}

bool is_angle(OptionKind kind) { return kind == OptionKind::Latitude || kind == OptionKind::Longitude; }

// The degrees as the file has them; empty when the text is no such angle.
std::string angle_for_file(OptionKind kind, const std::string& text) {
  if (text.empty()) return base::format_text("%f", store::kCoordinateNotSet);
  const bool is_latitude = kind == OptionKind::Latitude;
  const std::optional<double> degrees = geodesy::parse_angle(text);
  const bool wrong_letter = text.find_first_of(is_latitude ? "EWew" : "NSns") != std::string::npos;
  if (!degrees || wrong_letter || std::abs(*degrees) > (is_latitude ? 90 : 180)) return {};
  return base::format_text("%f", *degrees);
}

// One entry a Garmin code.
std::vector<OptionEntry> symbol_entries(const std::string& chosen) {
  std::vector<OptionEntry> entries;
  for (const store::SymbolRow& row : store::kSymbols)
    entries.push_back({std::to_string(row.code), symbol_name(row.code)});
  std::ranges::sort(entries, {}, [](const OptionEntry& entry) { return base::lower_case(entry.label); });
  add_if_missing(entries, chosen, "Symbol " + chosen);
  return entries;
}

}  // namespace

std::string OptionDraft::text(const OptionRow& row) const {
  const std::string text = store::key_text(settings_, row.key).value_or(std::string());
  if (is_angle(row.kind) && base::leading_number(text) >= store::kCoordinateNotSet) return {};
  return text;
}

std::string OptionDraft::text_for_file(const OptionRow& row, const std::string& text, std::string& problem) const {
  switch (row.kind) {
    case OptionKind::Number:
    case OptionKind::LastSlot:
      problem = number_problem(row, text);
      break;
    case OptionKind::Hours:
      problem = hours_problem(row, text);
      break;
    case OptionKind::Latitude:
    case OptionKind::Longitude: {
      const std::string degrees = angle_for_file(row.kind, text);
      if (degrees.empty()) problem = row.kind == OptionKind::Latitude ? "This is no latitude" : "This is no longitude";
      return degrees;
    }
    case OptionKind::Datum:
      if (session_.datums.find(text) == nullptr) problem = "There is no datum of this name";
      break;
    default:
      break;
  }
  return text;
}

std::string OptionDraft::take(const OptionRow& row, const std::string& typed) {
  const std::string text(base::trim_blanks(typed));
  if (text == this->text(row)) return {};
  std::string problem;
  const std::string value = text_for_file(row, text, problem);
  if (!problem.empty()) return problem;
  if (row.key.size() + 1 + value.size() > kLongestLine)
    return base::format_text("This is too long: %d letters at most",
                             static_cast<int>(kLongestLine - row.key.size() - 1));
  if (store::set_key(settings_, row.key, value) != store::KeyResult::Set) return "The file cannot hold this value";
  return {};
}

OptionProblem OptionDraft::contradiction() const {
  if (settings_.SA_LwrRangeHi >= 0 && settings_.SA_LwrRangeHi < settings_.SA_LwrRangeLo)
    return {"SA_LwrRangeHi", "The last slot is before the first one"};
  return {};
}

std::vector<OptionEntry> OptionDraft::entries(const OptionRow& row) const {
  const std::string chosen = text(row);
  std::vector<OptionEntry> entries;
  switch (row.kind) {
    case OptionKind::Symbol:
      return symbol_entries(chosen);
    case OptionKind::Symbol15:
      entries = lowrance_entries(store::kFewLowranceSymbols);
      break;
    case OptionKind::Symbol28:
      entries = lowrance_entries(store::kLowranceSymbols);
      break;
    case OptionKind::Symbol16:
      for (const int code : settings_.G12XL_II_Symbol_Mapping) {
        const int number = static_cast<int>(entries.size());
        entries.push_back({std::to_string(number), numbered(number, code)});
      }
      break;
    default:
      for (const OptionChoice& choice : row.choices)
        entries.push_back({std::string(choice.word), std::string(choice.label)});
      break;
  }
  add_if_missing(entries, chosen, chosen);
  return entries;
}

}  // namespace ui
