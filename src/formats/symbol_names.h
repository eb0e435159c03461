// Names of symbols for files that have no numbers for them.
#pragma once

#include <string_view>

#include "store/item_record.h"
#include "store/settings.h"

namespace formats {

// The name that GPX files call the record's symbol by. Symbols of the set of 16 are those that the settings map them
// to. Empty for a symbol without name, and for icons of events.
[[nodiscard]] std::string_view symbol_name(const store::ItemRecord& item, const store::Settings& settings);

}  // namespace formats
