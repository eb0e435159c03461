// Names of symbols for files that have no numbers for them.
#pragma once

#include <cstdint>
#include <string_view>

#include "store/item_record.h"
#include "store/settings.h"

namespace formats {

// The name that GPX files call the record's symbol by. Symbols of the set of 16 are those that the settings map them
// to. Empty for a symbol without name, for icons of events, and for those of the other family of receivers.
[[nodiscard]] std::string_view symbol_name(const store::ItemRecord& item, const store::Settings& settings);

// The symbol mode of a symbol that came by its name: the user's where that set has the maker's codes, else one that
// has. (Lowrance sets count as such for users of other receivers, as one of them is the start value of IconSelector.)
[[nodiscard]] std::uint8_t mode_of_named_symbols(const store::Settings& settings);

}  // namespace formats
