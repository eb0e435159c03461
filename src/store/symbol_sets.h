// Symbols across the sets of receiver models. In the stores a symbol is a Garmin code (store/symbols.h) whatever the
// record's symbol mode, but for the 16 of the GPS 12XL family: there mode G12xl with a number below 16 means the number
// in that set. Lowrance/Eagle units have 28 symbols, or 15 of the same.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "store/item_record.h"
#include "store/settings.h"

namespace store {

// The Garmin code of the item's symbol.
[[nodiscard]] int symbol_code(const ItemRecord& item, const Settings& settings);
// The number of that symbol among the 16; nothing when it is none of them.
[[nodiscard]] std::optional<std::uint8_t> symbol_of_16(const ItemRecord& item, const Settings& settings);
// The symbol mode for items whose symbol is a Garmin code: the chosen set, unless its numbers mean something else.
[[nodiscard]] std::uint8_t mode_of_codes(const Settings& settings);

inline constexpr int kLowranceSymbols = 28;     // of units that have the large set
inline constexpr int kFewLowranceSymbols = 15;  // of all others

// The Garmin code of a unit's symbol, of the set of so many; nothing for a number that the set does not have.
[[nodiscard]] std::optional<std::int16_t> code_of_lowrance_symbol(int number, int symbols);
// The unit's symbol of the same meaning, or one near to it; 0, the dot, where there is none.
[[nodiscard]] std::uint8_t lowrance_symbol(int code, int symbols);
// The unit's symbol of exactly that meaning.
[[nodiscard]] std::optional<std::uint8_t> exact_lowrance_symbol(int code, int symbols);

}  // namespace store
