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

// A file is in the numbers of the record's own symbol set where its setting is on, else of the first set that is on,
// its own family's before the other's. The own set is the one that symbol_mode names, with two exceptions: the
// Lowrance sets, of which one is the start value of IconSelector, do not count for a user of a Garmin receiver, and
// LEI15 only for a user of a Lowrance receiver or of its setting. A number that the own set does not have is a Garmin
// code.
[[nodiscard]] OziSymbol ozi_symbol(const store::ItemRecord& item, const store::Settings& settings);

// The reverse, for the set that IconSelector names: sets symbol and symbol_mode. No number, or one that the set does
// not have, gives the set's default symbol.
void set_ozi_symbol(store::ItemRecord& item, std::optional<long long> number, const store::Settings& settings);

}  // namespace formats
