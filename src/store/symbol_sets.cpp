#include "store/symbol_sets.h"

#include <algorithm>
#include <span>
#include <utility>

namespace store {
namespace {

// Garmin codes of the 28 symbols, by their meaning (the list of gpsman). All are different, so that a symbol that came
// from a unit goes back as it was. What the 15 of other units mean is not public; they are taken for the first of
// these.
constexpr std::array<std::int16_t, kLowranceSymbols> kLowranceCodes{
    18,     // dot
    179,    // x mark
    156,    // first aid
    36,     // small dot
    10,     // house
    170,    // car
    8,      // fuel
    155,    // telephone
    11,     // food
    16384,  // airplane
    177,    // exit
    8245,   // tree
    8246,   // mountains
    151,    // camping
    160,    // picnic table
    8233,   // bridge
    16391,  // tree stand
    171,    // deer
    175,    // tracks
    8238,   // many tracks
    14,     // skull
    7,      // fish
    192,    // many fish
    157,    // information
    19,     // wreck
    0,      // anchor
    150,    // boat ramp
    178,    // flag
};

// What stands for a symbol of the 28 in units that have 15.
constexpr std::array<std::uint8_t, kLowranceSymbols> kAmongFew{0,  1, 2, 3,  4, 5, 6, 7, 8, 9, 10, 11, 12, 13,
                                                               14, 0, 4, 11, 1, 1, 1, 3, 3, 0, 1,  3,  3,  10};

// Garmin codes that no unit has, and what is near to them; all others become the dot.
struct NearRange {
  int first, last;
  std::uint8_t symbol;
};
constexpr std::array kNearSymbols{
    NearRange{2, 3, 3},           // diamonds
    NearRange{4, 5, 24},          // diver down
    NearRange{6, 6, 4},           // bank
    NearRange{13, 13, 8},         // bar
    NearRange{15, 16, 3},         // squares
    NearRange{21, 21, 20},        // man overboard
    NearRange{158, 158, 5},       // parking area
    NearRange{159, 159, 11},      // park
    NearRange{161, 161, 11},      // scenic area
    NearRange{162, 162, 12},      // skiing area
    NearRange{164, 164, 15},      // dam
    NearRange{165, 167, 1},       // controlled, danger and restricted areas
    NearRange{172, 173, 4},       // shopping center, lodging
    NearRange{174, 174, 16},      // mine
    NearRange{176, 176, 5},       // truck stop
    NearRange{190, 190, 26},      // dock
    NearRange{191, 191, 25},      // marina
    NearRange{8206, 8207, 5},     // cars
    NearRange{8208, 8208, 8},     // fast food
    NearRange{8209, 8212, 4},     // buildings
    NearRange{8213, 8213, 8},     // pizza
    NearRange{8214, 8214, 4},     // buildings
    NearRange{8215, 8215, 13},    // RV park
    NearRange{8216, 8219, 4},     // buildings
    NearRange{8220, 8220, 6},     // convenience store with fuel
    NearRange{8221, 8221, 4},     // buildings
    NearRange{8234, 8234, 4},     // building
    NearRange{8236, 8237, 4},     // church, civil
    NearRange{8243, 8243, 15},    // tunnel
    NearRange{8251, 8251, 12},    // ski resort
    NearRange{8284, 8286, 27},    // flags
    NearRange{16385, 16390, 9},   // aviation
    NearRange{16392, 16392, 16},  // short tower
    NearRange{16393, 16402, 9},   // aviation
};

// By the number of symbols that the unit says it has: 28, or few.
int size_of_set(int symbols) { return symbols == kLowranceSymbols ? kLowranceSymbols : kFewLowranceSymbols; }

// A number beyond 15 is none of the 16, whatever the set that the item was stored under.
bool is_of_16(const ItemRecord& item) {
  return item.symbol_mode == static_cast<std::uint8_t>(IconSet::G12xl) && item.symbol >= 0 && item.symbol < 16;
}

}  // namespace

int symbol_code(const ItemRecord& item, const Settings& settings) {
  return is_of_16(item) ? settings.G12XL_II_Symbol_Mapping[static_cast<std::size_t>(item.symbol)] : item.symbol;
}

std::optional<std::uint8_t> symbol_of_16(const ItemRecord& item, const Settings& settings) {
  if (is_of_16(item)) return static_cast<std::uint8_t>(item.symbol);
  const auto& codes = settings.G12XL_II_Symbol_Mapping;
  const auto found = std::ranges::find(codes, int{item.symbol});
  if (found == codes.end()) return std::nullopt;
  return static_cast<std::uint8_t>(found - codes.begin());
}

std::uint8_t mode_of_codes(const Settings& settings) {
  const bool are_meant = settings.IconSelector != IconSet::G12xl;
  return static_cast<std::uint8_t>(are_meant ? settings.IconSelector : IconSet::Giii);
}

std::optional<std::int16_t> code_of_lowrance_symbol(int number, int symbols) {
  if (number < 0 || number >= size_of_set(symbols)) return std::nullopt;
  return kLowranceCodes[static_cast<std::size_t>(number)];
}

std::optional<std::uint8_t> exact_lowrance_symbol(int code, int symbols) {
  const auto codes = std::span(kLowranceCodes).first(static_cast<std::size_t>(size_of_set(symbols)));
  const auto found = std::ranges::find(codes, code);
  if (found == codes.end()) return std::nullopt;
  return static_cast<std::uint8_t>(found - codes.begin());
}

std::uint8_t lowrance_symbol(int code, int symbols) {
  std::uint8_t number = 0;
  if (const std::optional<std::uint8_t> exact = exact_lowrance_symbol(code, kLowranceSymbols)) {
    number = *exact;
  } else {
    for (const NearRange& near : kNearSymbols)
      if (code >= near.first && code <= near.last) number = near.symbol;
  }
  return size_of_set(symbols) == kLowranceSymbols ? number : kAmongFew[number];
}

}  // namespace store
