// Symbols of records as OziExplorer numbers them: from 0 within the symbol set of the receiver that is chosen there
// (OziExplorer help, file formats). Which set that is the four SA_Ozi_to_... settings say.
#pragma once

#include <optional>

#include "store/item_record.h"
#include "store/settings.h"

namespace formats {

struct OziSymbol {
  int number = 0;
  bool is_exact = true;  // false: the set of the file has no such symbol, and this is its plain dot
};

// All of a file is in the numbers of one set: the user's own (IconSelector) where its setting is on, else the first
// set that is on, its own family's before the other's. The Lowrance sets are nobody's own with a Garmin receiver, and
// LEI15, the start value of IconSelector, only with a Lowrance one or where its setting is on.
[[nodiscard]] OziSymbol ozi_symbol(const store::ItemRecord& item, const store::Settings& settings);

// The reverse: sets symbol and symbol_mode. No number, or one that the set does not have, gives the set's default
// symbol.
void set_ozi_symbol(store::ItemRecord& item, std::optional<long long> number, const store::Settings& settings);

}  // namespace formats
