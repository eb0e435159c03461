#include "formats/symbol_names.h"

#include <utility>

#include "store/symbols.h"

namespace formats {
namespace {

bool is_lowrance_set(store::IconSet set, const store::Settings& settings) {
  return settings.GPS == store::Family::Lowrance && (set == store::IconSet::Lei15 || set == store::IconSet::Lei28);
}

}  // namespace

std::string_view symbol_name(const store::ItemRecord& item, const store::Settings& settings) {
  const auto set = static_cast<store::IconSet>(item.symbol_mode);
  if (item.kind == 'I' || is_lowrance_set(set, settings)) return {};
  int code = item.symbol;
  const auto& codes_of_16 = settings.G12XL_II_Symbol_Mapping;
  if (set == store::IconSet::G12xl && code >= 0 && std::cmp_less(code, codes_of_16.size()))
    code = codes_of_16[static_cast<std::size_t>(code)];
  if (!std::in_range<std::int16_t>(code)) return {};
  const store::SymbolRow* const row = store::find_symbol(static_cast<std::int16_t>(code));
  return row == nullptr ? std::string_view() : row->gpx_name;
}

std::uint8_t mode_of_named_symbols(const store::Settings& settings) {
  const store::IconSet set = settings.IconSelector;
  const bool has_codes = set != store::IconSet::G12xl && !is_lowrance_set(set, settings);
  return static_cast<std::uint8_t>(has_codes ? set : store::IconSet::Giii);
}

}  // namespace formats
