#include "store/symbols.h"

#include <algorithm>

#include "base/text.h"

namespace store {
namespace {

static_assert(std::ranges::is_sorted(kSymbols, {}, &SymbolRow::code));

}  // namespace

const SymbolRow* find_symbol(std::int16_t code) {
  const auto row = std::ranges::lower_bound(kSymbols, code, {}, &SymbolRow::code);
  return row == kSymbols.end() || row->code != code ? nullptr : &*row;
}

std::optional<std::int16_t> symbol_of_gpx_name(std::string_view name) {
  if (name.empty()) return std::nullopt;
  for (const SymbolRow& row : kSymbols)
    if (base::equal_ignoring_case(row.gpx_name, name)) return row.code;
  return std::nullopt;
}

std::optional<std::int16_t> symbol_of_ozi_number(int number) {
  for (const SymbolRow& row : kSymbols)
    if (row.ozi_number >= 0 && row.ozi_number == number) return row.code;
  return std::nullopt;
}

}  // namespace store
