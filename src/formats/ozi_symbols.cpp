#include "formats/ozi_symbols.h"

#include <algorithm>
#include <array>
#include <utility>

#include "store/symbol_sets.h"
#include "store/symbols.h"

namespace formats {
namespace {

using store::IconSet;
using store::Settings;

constexpr int kDotInGarminSet = 70;  // OziExplorer's number of store::kDotSymbol

// Garmin codes by OziExplorer number.
constexpr auto kGarminCodes = [] {
  std::array<std::int16_t, 155> codes{};
  codes.fill(-1);
  for (const store::SymbolRow& row : store::kSymbols)
    if (row.ozi_number >= 0) codes[static_cast<std::size_t>(row.ozi_number)] = row.code;
  return codes;
}();
static_assert(std::ranges::count(kGarminCodes, -1) == 0);

bool is_on(IconSet set, const Settings& settings) {
  switch (set) {
    case IconSet::G12xl:
      return settings.SA_Ozi_to_12 != 0;
    case IconSet::Lei15:
      return settings.SA_Ozi_to_LEI15 != 0;
    case IconSet::Lei28:
      return settings.SA_Ozi_to_LEI28 != 0;
    default:
      return settings.SA_Ozi_to_GIII != 0;
  }
}

// The user's own set, of four: G12xl, Giii (which stands for all with Garmin codes), Lei15 or Lei28.
IconSet own_set(const Settings& settings) {
  const store::Family family = settings.GPS;
  switch (settings.IconSelector) {
    case IconSet::G12xl:
      return IconSet::G12xl;
    case IconSet::Lei15: {
      // It stands there before anybody has chosen.
      const bool is_meant =
          family == store::Family::Lowrance || (family != store::Family::Garmin && is_on(IconSet::Lei15, settings));
      return is_meant ? IconSet::Lei15 : IconSet::Giii;
    }
    case IconSet::Lei28:
      return family == store::Family::Garmin ? IconSet::Giii : IconSet::Lei28;
    default:
      return IconSet::Giii;
  }
}

// The one set that all of a file is in, written or read: whoever reads it knows but one.
IconSet set_of_file(const Settings& settings) {
  const IconSet own = own_set(settings);
  static constexpr std::array kGarminFirst{IconSet::Giii, IconSet::G12xl, IconSet::Lei28, IconSet::Lei15};
  static constexpr std::array kLowranceFirst{IconSet::Lei28, IconSet::Lei15, IconSet::Giii, IconSet::G12xl};
  if (is_on(own, settings)) return own;
  const bool is_lowrance = own == IconSet::Lei15 || own == IconSet::Lei28;
  for (const IconSet set : is_lowrance ? kLowranceFirst : kGarminFirst)
    if (is_on(set, settings)) return set;
  return own;
}

int lowrance_symbols(IconSet set) {
  return set == IconSet::Lei15 ? store::kFewLowranceSymbols : store::kLowranceSymbols;
}

// What stands for a number that the set lacks, and for none.
int default_code(IconSet set, const Settings& settings) {
  switch (set) {
    case IconSet::G12xl: {
      const auto number = static_cast<std::size_t>(std::clamp(settings.default_G12_icon, 0, 15));
      return settings.G12XL_II_Symbol_Mapping[number];
    }
    case IconSet::Lei15:
      return store::code_of_lowrance_symbol(settings.default_LEI15_icon, lowrance_symbols(set))
          .value_or(store::kDotSymbol);
    case IconSet::Lei28:
      return store::code_of_lowrance_symbol(settings.default_LEI28_icon, lowrance_symbols(set))
          .value_or(store::kDotSymbol);
    default:
      return settings.default_GPSIII_icon;
  }
}

// The Garmin code of a number of the set; nothing where the set has no such number.
std::optional<int> code_of(IconSet set, long long number, const Settings& settings) {
  constexpr long long kMost = 255;
  if (number < 0 || number > kMost) return std::nullopt;
  const auto index = static_cast<std::size_t>(number);
  switch (set) {
    case IconSet::Giii:
      return index < kGarminCodes.size() ? std::optional<int>(kGarminCodes[index]) : std::nullopt;
    case IconSet::G12xl:
      return index < settings.G12XL_II_Symbol_Mapping.size() ? std::optional(settings.G12XL_II_Symbol_Mapping[index])
                                                             : std::nullopt;
    default:
      return store::code_of_lowrance_symbol(static_cast<int>(number), lowrance_symbols(set));
  }
}

}  // namespace

OziSymbol ozi_symbol(const store::ItemRecord& item, const Settings& settings) {
  const IconSet wanted = set_of_file(settings);
  const int code = store::symbol_code(item, settings);
  if (wanted != IconSet::Giii) {
    const std::optional<std::uint8_t> number = wanted == IconSet::G12xl
                                                   ? store::symbol_of_16(item, settings)
                                                   : store::exact_lowrance_symbol(code, lowrance_symbols(wanted));
    return {number.value_or(std::uint8_t{0}), number.has_value()};
  }
  const store::SymbolRow* const row =
      std::in_range<std::int16_t>(code) ? store::find_symbol(static_cast<std::int16_t>(code)) : nullptr;
  if (row == nullptr || row->ozi_number < 0) return {kDotInGarminSet, false};
  return {row->ozi_number};
}

void set_ozi_symbol(store::ItemRecord& item, std::optional<long long> number, const Settings& settings) {
  const IconSet set = set_of_file(settings);
  std::optional<int> code = number ? code_of(set, *number, settings) : std::nullopt;
  const bool is_known = code.has_value();
  if (!code) code = default_code(set, settings);
  item.symbol = std::in_range<std::int16_t>(*code) ? static_cast<std::int16_t>(*code) : std::int16_t{0};
  item.symbol_mode = store::mode_of_codes(settings);
  if (own_set(settings) != IconSet::G12xl) return;
  // Its numbers are kept as they are, also those that stand for the same code as another.
  const bool is_of_16 = set == IconSet::G12xl;
  const int default_number = settings.default_G12_icon;
  const std::optional<std::uint8_t> same = store::symbol_of_16(item, settings);
  if (!is_of_16 && !same) return;
  item.symbol = static_cast<std::int16_t>(!is_of_16 ? *same : is_known ? *number : default_number);
  item.symbol_mode = static_cast<std::uint8_t>(IconSet::G12xl);
}

}  // namespace formats
