#include "formats/ozi_symbols.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "store/symbols.h"

namespace formats {
namespace {

using store::IconSet;
using store::Settings;

constexpr int kDotInGarminSet = 70;  // OziExplorer's number of store::kDotSymbol

// Garmin codes of Lowrance's 28 icons, by their meaning (the list of gpsman); the 15 are taken for the first of them.
constexpr std::array<int, 28> kLowranceCodes{18,  179,  156,  36,  10,  170,  8,     155, 11,  16384,
                                             177, 8245, 8246, 151, 160, 8233, 16391, 171, 175, 8238,
                                             14,  7,    192,  157, 19,  0,    150,   178};

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

// One of the four sets: G12xl, Giii (which stands for all with Garmin codes), Lei15 or Lei28.
IconSet set_of_mode(int symbol_mode, const Settings& settings) {
  const store::Family family = settings.GPS;
  switch (static_cast<IconSet>(symbol_mode)) {
    case IconSet::G12xl:
      return IconSet::G12xl;
    case IconSet::Lei15: {
      const bool is_meant =
          family == store::Family::Lowrance || (family != store::Family::Garmin && is_on(IconSet::Lei15, settings));
      return is_meant ? IconSet::Lei15 : IconSet::Giii;
    }
    case IconSet::Lei28:
      return family == store::Family::Garmin && settings.IconSelector == IconSet::Lei28 ? IconSet::Giii
                                                                                        : IconSet::Lei28;
    default:
      return IconSet::Giii;
  }
}

IconSet own_set(const Settings& settings) { return set_of_mode(static_cast<int>(settings.IconSelector), settings); }

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

// Garmin codes by the numbers of a set other than Giii.
std::span<const int> codes_of(IconSet set, const Settings& settings) {
  if (set == IconSet::G12xl) return settings.G12XL_II_Symbol_Mapping;
  return std::span(kLowranceCodes).first(set == IconSet::Lei15 ? 15 : 28);
}

bool has_number(IconSet set, long long number, const Settings& settings) {
  return set != IconSet::Giii && number >= 0 && std::cmp_less(number, codes_of(set, settings).size());
}

std::optional<int> number_of_code(IconSet set, int code, const Settings& settings) {
  const std::span<const int> codes = codes_of(set, settings);
  const auto found = std::ranges::find(codes, code);
  return found == codes.end() ? std::nullopt : std::optional(static_cast<int>(found - codes.begin()));
}

int default_symbol(IconSet set, const Settings& settings) {
  switch (set) {
    case IconSet::G12xl:
      return settings.default_G12_icon;
    case IconSet::Lei15:
      return settings.default_LEI15_icon;
    case IconSet::Lei28:
      return settings.default_LEI28_icon;
    default:
      return settings.default_GPSIII_icon;
  }
}

// A symbol in its set.
struct Symbol {
  IconSet set;
  int number;
};

Symbol symbol_of_number(IconSet set, std::optional<long long> number, const Settings& settings) {
  if (set == IconSet::Giii && number && *number >= 0 && std::cmp_less(*number, kGarminCodes.size()))
    return {set, kGarminCodes[static_cast<std::size_t>(*number)]};
  if (number && has_number(set, *number, settings)) return {set, static_cast<int>(*number)};
  return {set, default_symbol(set, settings)};
}

// The same symbol in the user's own set where that has it. Where not, it stays as it is, or becomes a Garmin code if
// its set does not count for the user.
Symbol in_own_set(Symbol symbol, IconSet own, const Settings& settings) {
  if (symbol.set == own) return symbol;
  int code = symbol.number;
  if (has_number(symbol.set, symbol.number, settings))
    code = codes_of(symbol.set, settings)[static_cast<std::size_t>(symbol.number)];
  if (own == IconSet::Giii) return {own, code};
  const std::optional<int> number = number_of_code(own, code, settings);
  if (number) return {own, *number};
  return set_of_mode(static_cast<int>(symbol.set), settings) == symbol.set ? symbol : Symbol{IconSet::Giii, code};
}

}  // namespace

OziSymbol ozi_symbol(const store::ItemRecord& item, const Settings& settings) {
  const IconSet own = set_of_mode(item.symbol_mode, settings);
  const IconSet wanted = set_of_file(settings);
  int code = item.symbol;
  if (has_number(own, item.symbol, settings)) {
    if (own == wanted) return {item.symbol};
    code = codes_of(own, settings)[static_cast<std::size_t>(item.symbol)];
  }
  if (wanted != IconSet::Giii) {
    const std::optional<int> number = number_of_code(wanted, code, settings);
    return {number.value_or(0), number.has_value()};
  }
  const store::SymbolRow* const row =
      std::in_range<std::int16_t>(code) ? store::find_symbol(static_cast<std::int16_t>(code)) : nullptr;
  if (row == nullptr || row->ozi_number < 0) return {kDotInGarminSet, false};
  return {row->ozi_number};
}

void set_ozi_symbol(store::ItemRecord& item, std::optional<long long> number, const Settings& settings) {
  const IconSet own = own_set(settings);
  const Symbol symbol = in_own_set(symbol_of_number(set_of_file(settings), number, settings), own, settings);
  item.symbol = std::in_range<std::int16_t>(symbol.number) ? static_cast<std::int16_t>(symbol.number) : std::int16_t{0};
  // Of the sets with Garmin codes the one that the user has chosen.
  const bool is_chosen = symbol.set == IconSet::Giii && settings.IconSelector >= IconSet::Giii;
  item.symbol_mode = static_cast<std::uint8_t>(is_chosen ? settings.IconSelector : symbol.set);
}

}  // namespace formats
