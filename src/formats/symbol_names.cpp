#include "formats/symbol_names.h"

#include <utility>

#include "store/symbol_sets.h"
#include "store/symbols.h"

namespace formats {

std::string_view symbol_name(const store::ItemRecord& item, const store::Settings& settings) {
  if (item.kind == 'I') return {};
  const int code = store::symbol_code(item, settings);
  if (!std::in_range<std::int16_t>(code)) return {};
  const store::SymbolRow* const row = store::find_symbol(static_cast<std::int16_t>(code));
  return row == nullptr ? std::string_view() : row->gpx_name;
}

}  // namespace formats
