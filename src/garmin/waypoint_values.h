// Values that waypoint formats encode differently: display options, colours, classes and symbols, as the store has
// them and as the formats do.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "store/item_record.h"
#include "store/settings.h"

namespace garmin {

inline constexpr std::int16_t kSymbolAndName = 3;  // the display mode of items that have none

// The store's display mode (1 symbol, 3 symbol and name, 5 symbol and comment) of the codes 1, 0, 2 of D103, D107 to
// D110 and D403; other codes are the last. Back, no mode (0) is symbol and name.
[[nodiscard]] std::int16_t display_mode(unsigned code);
[[nodiscard]] std::uint8_t display_code(std::int16_t mode);
// D104 and D155 use the store's own codes; 0 is a second "symbol only".
[[nodiscard]] std::int16_t display_mode_as_stored(std::uint8_t code);
[[nodiscard]] std::uint8_t display_code_as_stored(std::int16_t mode);

// The store's colour of the codes 0 to 15 of D108, D109 and D110; kDefaultColour for others. Back, nothing for that
// one, and for items whose colour nobody chose (0).
[[nodiscard]] std::uint8_t colour(unsigned code);
[[nodiscard]] std::optional<std::uint8_t> colour_code(std::uint8_t colour);
// D107: default, red, green, blue.
[[nodiscard]] std::uint8_t colour_of_four(unsigned code);
[[nodiscard]] std::uint8_t colour_code_of_four(std::uint8_t colour);

// Classes are numbered by the format, and in the store by the format that record_type names, 110, 109 and 108 being
// the same. D150 numbers them like D154 but for "locked", and the store has them as D154 does.
[[nodiscard]] std::uint8_t class_from_d150(std::uint8_t waypoint_class);
// The class of the item as the format numbers it: that of the same meaning, and "user" where there is none.
[[nodiscard]] std::uint8_t class_number(const store::ItemRecord& item, std::uint16_t format);
// Whether the item's class is one of an aviation data base.
[[nodiscard]] bool is_aviation_point(const store::ItemRecord& item);
// Whether the record type is one of D151 to D155, which have names but no facilities.
[[nodiscard]] bool is_aviation_type(std::uint16_t record_type);
// The subclass that goes out beside it in D106 (13 bytes of it) or D108 to D110 (as format 108): the item's own where
// it is of that format, else that of a user waypoint.
[[nodiscard]] std::array<std::uint8_t, 18> subclass(const store::ItemRecord& item, std::uint16_t format);

// The item's symbol as a number of the enumeration 0 to 15 of D103, D107 and D403, and as a symbol_type. The two sets
// are converted by the setting G12XL_II_Symbol_Mapping; what has no equal becomes default_G12_icon, and a symbol_type
// below 0 or beyond `most` the dot 18.
[[nodiscard]] std::uint8_t symbol_of_16(const store::ItemRecord& item, const store::Settings& settings);
[[nodiscard]] std::uint16_t symbol_type(const store::ItemRecord& item, const store::Settings& settings,
                                        std::uint16_t most);

}  // namespace garmin
