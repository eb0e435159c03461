#include "garmin/waypoint_values.h"

#include <algorithm>

#include "garmin/record_format.h"
#include "store/symbol_sets.h"
#include "store/symbols.h"

namespace garmin {
namespace {

using store::ItemRecord;
using store::Settings;

constexpr std::int16_t kSymbolOnly = 1;
constexpr std::int16_t kSymbolAndComment = 5;
constexpr std::array kDisplayModes{kSymbolAndName, kSymbolOnly, kSymbolAndComment};

// Deliberate : waypoints number their colours 0 black, 1 red, 2 blue, 3 green, 4 yellow, as the colour words
// of text files do, so red, blue, green and yellow change places with the dark colours 1 to 4. 0 is also what waypoints
// have whose colour nobody chose, and what the default becomes in a text file: it goes to receivers as their default,
// and a black that a receiver has chosen keeps a number of its own. All 16 stay distinct.
constexpr std::uint8_t kChosenBlack = 17;
constexpr std::array<std::uint8_t, 16> kColours{kChosenBlack, 9, 10, 11, 12, 5, 6, 7, 8, 1, 3, 4, 2, 13, 14, 15};
constexpr std::array<std::uint8_t, 4> kFourColours{store::kDefaultColour, 1, 3, 2};

template <typename Table, typename Value>
std::optional<std::uint8_t> index_of(const Table& table, Value value) {
  const auto found = std::ranges::find(table, value);
  if (found == std::ranges::end(table)) return std::nullopt;
  return static_cast<std::uint8_t>(found - std::ranges::begin(table));
}

// Whether the item's class and subclass are such as D108 to D110 have.
bool has_full_class(const ItemRecord& item) { return item.record_type >= 108 && item.record_type <= 110; }

// Whether the item's class and subclass are numbered as in the format, which is 108 for D109 and D110 too.
bool is_of_format(const ItemRecord& item, std::uint16_t format) {
  return item.record_type == format || (format == 108 && has_full_class(item));
}

constexpr std::uint8_t kNone = store::kClassNotSet;
constexpr std::size_t kAviationClasses = 7;  // the rows behind the first
constexpr std::array<std::uint16_t, 6> kClassFormats{108, 150, 151, 152, 154, 155};
using ClassRow = std::array<std::uint8_t, kClassFormats.size()>;
constexpr std::array kClasses{
    //        108    150    151    152    154    155
    ClassRow{0x00, 4, 2, 4, 4, 4},                   // user
    ClassRow{0x40, 0, 0, 0, 0, 0},                   // airport
    ClassRow{0x41, 1, kNone, 1, 1, 1},               // intersection
    ClassRow{0x42, 2, kNone, 2, 2, 2},               // NDB
    ClassRow{0x43, 3, 1, 3, 3, 3},                   // VOR
    ClassRow{0x44, 5, kNone, kNone, 5, kNone},       // runway threshold
    ClassRow{0x45, 6, kNone, kNone, 6, kNone},       // airport intersection
    ClassRow{0x46, kNone, kNone, kNone, 7, kNone},   // airport NDB
    ClassRow{kNone, kNone, kNone, kNone, 8, kNone},  // user, symbol only
    ClassRow{kNone, 7, 3, 5, 9, 5},                  // locked
};

// The column of the table; nothing for a format without classes of these meanings.
std::optional<std::uint8_t> column_of(std::uint16_t format) { return index_of(kClassFormats, format); }

// The row of the item's class; nothing when its meaning is not known.
std::optional<std::size_t> meaning_of(const ItemRecord& item) {
  const std::optional<std::uint8_t> column = column_of(has_full_class(item) ? 108 : item.record_type);
  if (!column || item.waypoint_class == store::kClassNotSet) return std::nullopt;
  for (std::size_t row = 0; row < kClasses.size(); ++row)
    if (kClasses[row][*column] == item.waypoint_class) return row;
  return std::nullopt;
}

template <typename Number>
Number checked(int number, Number most, Number otherwise) {
  return number >= 0 && number <= static_cast<int>(most) ? static_cast<Number>(number) : otherwise;
}

}  // namespace

std::int16_t display_mode(unsigned code) {
  return code < kDisplayModes.size() ? kDisplayModes[code] : kSymbolAndComment;
}

std::uint8_t display_code(std::int16_t mode) {
  constexpr std::uint8_t kCommentCode = 2;
  return mode == 0 ? std::uint8_t{0} : index_of(kDisplayModes, mode).value_or(kCommentCode);
}

std::int16_t display_mode_as_stored(std::uint8_t code) {
  if (code <= kSymbolOnly) return kSymbolOnly;
  return code == kSymbolAndName ? kSymbolAndName : kSymbolAndComment;
}

std::uint8_t display_code_as_stored(std::int16_t mode) {
  return static_cast<std::uint8_t>(display_mode(display_code(mode)));
}

// "Transparent" has no number in the store and counts as the default, like every undefined value.
std::uint8_t colour(unsigned code) { return code < kColours.size() ? kColours[code] : store::kDefaultColour; }

std::optional<std::uint8_t> colour_code(std::uint8_t colour) { return index_of(kColours, colour); }

std::uint8_t colour_of_four(unsigned code) {
  return code < kFourColours.size() ? kFourColours[code] : store::kDefaultColour;
}

std::uint8_t colour_code_of_four(std::uint8_t colour) { return index_of(kFourColours, colour).value_or(0); }

std::uint8_t class_from_d150(std::uint8_t waypoint_class) {
  constexpr std::uint8_t kLocked150 = 7;
  constexpr std::uint8_t kLocked154 = 9;
  return waypoint_class == kLocked150 ? kLocked154 : waypoint_class;
}

std::uint8_t class_number(const ItemRecord& item, std::uint16_t format) {
  if (is_of_format(item, format) && item.waypoint_class != store::kClassNotSet) return item.waypoint_class;
  const std::optional<std::uint8_t> column = column_of(format);
  if (!column) return 0;  // D106: what is not its own can only be a user's
  const std::uint8_t user = kClasses[0][*column];
  const std::uint8_t equal = kClasses[meaning_of(item).value_or(0)][*column];
  return equal == kNone ? user : equal;
}

std::array<std::uint8_t, 18> subclass(const ItemRecord& item, std::uint16_t format) {
  constexpr std::array<std::uint8_t, 18> kBlank{};
  const std::array<std::uint8_t, 18>& of_users = format == 108 ? kPlainSubclass : kBlank;
  const bool is_user = item.waypoint_class == 0 || item.waypoint_class == store::kClassNotSet;
  if (!is_of_format(item, format) || (is_user && item.subclass == kBlank)) return of_users;
  return item.subclass;
}

bool is_aviation_point(const ItemRecord& item) {
  const std::optional<std::size_t> meaning = meaning_of(item);
  return meaning && *meaning >= 1 && *meaning <= kAviationClasses;
}

bool is_aviation_type(std::uint16_t record_type) { return record_type >= 151 && record_type <= 155; }

std::uint8_t symbol_of_16(const ItemRecord& item, const Settings& settings) {
  return store::symbol_of_16(item, settings).value_or(checked<std::uint8_t>(settings.default_G12_icon, 15, 0));
}

std::uint16_t symbol_type(const ItemRecord& item, const Settings& settings, std::uint16_t most) {
  return checked<std::uint16_t>(store::symbol_code(item, settings), most, store::kDotSymbol);
}

}  // namespace garmin
