#include "garmin/waypoint_records.h"

#include <array>

#include "store/settings.h"

namespace garmin {
namespace {

using base::ByteReader;
using store::ItemRecord;

constexpr std::int16_t kSymbolOnly = 1;
constexpr std::int16_t kSymbolAndName = 3;
constexpr std::int16_t kSymbolAndComment = 5;

// Display codes of D103, D107 to D110 and D403.
constexpr std::array kDisplayModes{kSymbolAndName, kSymbolOnly, kSymbolAndComment};
std::int16_t display_mode(unsigned code) {
  return code < kDisplayModes.size() ? kDisplayModes[code] : kSymbolAndComment;
}

// D104 and D155 use the store's own codes; 0 is a second "symbol only".
std::int16_t display_mode_as_stored(std::uint8_t code) {
  if (code <= kSymbolOnly) return kSymbolOnly;
  return code == kSymbolAndName ? kSymbolAndName : kSymbolAndComment;
}

// Deliberate : waypoints number their colours 0 black, 1 red, 2 blue, 3 green, 4 yellow, as the colour words
// of text files do, so red, blue, green and yellow change places with the dark colours 1 to 4. All 16 stay distinct.
constexpr std::array<std::uint8_t, 16> kColours{0, 9, 10, 11, 12, 5, 6, 7, 8, 1, 3, 4, 2, 13, 14, 15};
// "Transparent" has no number in the store and counts as the default, like every undefined value.
std::uint8_t colour(unsigned code) { return code < kColours.size() ? kColours[code] : store::kDefaultColour; }

// D107: default, red, green, blue.
constexpr std::array<std::uint8_t, 4> kFourColours{store::kDefaultColour, 1, 3, 2};
std::uint8_t colour_of_four(unsigned code) {
  return code < kFourColours.size() ? kFourColours[code] : store::kDefaultColour;
}

void set_symbol_of_16(ItemRecord& item, std::uint8_t symbol) {
  item.symbol = symbol;
  item.symbol_mode = static_cast<std::uint8_t>(store::IconSet::G12xl);
}

void set_symbol_type(ItemRecord& item, std::uint16_t symbol) {
  item.symbol = static_cast<std::int16_t>(symbol);
  item.symbol_mode = store::kSymbolModeNotGiven;
}

// How receivers draw a waypoint whose format has neither symbol nor display option.
void draw_as_named_dot(ItemRecord& item) {
  set_symbol_of_16(item, 0);
  item.display_mode = kSymbolAndName;
}

void read_distance(ByteReader& in, ItemRecord& item) {
  const float metres = read_metres(in);
  item.proximity_distance = store::is_known(metres) ? metres : 0;
}

template <std::size_t N>
void read_subclass(ByteReader& in, ItemRecord& item) {
  static_assert(N <= std::tuple_size_v<decltype(item.subclass)>);
  std::ranges::copy(in.bytes(N), item.subclass.begin());
}

// Each of the following formats is an earlier one with fields added at its end.
bool decode_d100(ByteReader& in, ItemRecord& item) {
  draw_as_named_dot(item);
  item.ident = in.text(6);
  const bool has_position = read_position(in, item.position);
  in.skip(4);
  item.comment = in.text(40);
  return has_position;
}

bool decode_d400(ByteReader& in, ItemRecord& item) {
  const bool has_position = decode_d100(in, item);
  read_distance(in, item);
  return has_position;
}

bool decode_d101(ByteReader& in, ItemRecord& item) {
  const bool has_position = decode_d400(in, item);
  set_symbol_type(item, in.u8());
  return has_position;
}

bool decode_d102(ByteReader& in, ItemRecord& item) {
  const bool has_position = decode_d400(in, item);
  set_symbol_type(item, in.u16());
  return has_position;
}

bool decode_d104(ByteReader& in, ItemRecord& item) {
  const bool has_position = decode_d102(in, item);
  item.display_mode = display_mode_as_stored(in.u8());
  return has_position;
}

bool decode_d103(ByteReader& in, ItemRecord& item) {
  const bool has_position = decode_d100(in, item);
  set_symbol_of_16(item, in.u8());
  item.display_mode = display_mode(in.u8());
  return has_position;
}

bool decode_d403(ByteReader& in, ItemRecord& item) {
  const bool has_position = decode_d103(in, item);
  read_distance(in, item);
  return has_position;
}

bool decode_d107(ByteReader& in, ItemRecord& item) {
  const bool has_position = decode_d403(in, item);
  item.colour = colour_of_four(in.u8());
  return has_position;
}

bool read_long_ident_place(ByteReader& in, ItemRecord& item) {
  item.detail_kind = store::kLongIdentDetails;
  item.display_mode = kSymbolAndName;
  const bool has_position = read_position(in, item.position);
  set_symbol_type(item, in.u16());
  item.ident = in.string();
  return has_position;
}

bool decode_d105(ByteReader& in, ItemRecord& item) {
  item.record_type = 105;
  return read_long_ident_place(in, item);
}

bool decode_d106(ByteReader& in, ItemRecord& item) {
  item.record_type = 106;
  item.waypoint_class = in.u8();
  read_subclass<13>(in, item);
  const bool has_position = read_long_ident_place(in, item);
  item.link_ident = in.string();
  return has_position;
}

void set_full_class(ItemRecord& item, std::uint8_t waypoint_class) {
  item.record_type = 108;
  item.waypoint_class = waypoint_class;
  item.detail_kind = waypoint_class == 0 ? store::kNoDetails : store::kFullDetails;
}

// Symbol to country, alike in D108, D109 and D110.
bool read_full_place(ByteReader& in, ItemRecord& item) {
  set_symbol_type(item, in.u16());
  read_subclass<18>(in, item);
  const bool has_position = read_position(in, item.position);
  item.altitude = read_metres(in);
  item.depth = read_metres(in);
  read_distance(in, item);
  item.state = in.text(2);
  item.country = in.text(2);
  return has_position;
}

void read_full_texts(ByteReader& in, ItemRecord& item) {
  item.ident = in.string();
  item.comment = in.string();
  item.facility = in.string();
  item.city = in.string();
  item.address = in.string();
  item.cross_road = in.string();
}

bool decode_d108(ByteReader& in, ItemRecord& item) {
  set_full_class(item, in.u8());
  item.colour = colour(in.u8());
  item.display_mode = display_mode(in.u8());
  in.skip(1);  // attributes
  const bool has_position = read_full_place(in, item);
  read_full_texts(in, item);
  return has_position;
}

// Data type to country, alike in D109 and D110.
bool read_packed_place(ByteReader& in, ItemRecord& item) {
  in.skip(1);  // data type
  set_full_class(item, in.u8());
  const unsigned packed = in.u8();  // bits 0 to 4 colour, 5 and 6 display
  item.colour = colour(packed & 0x1F);
  item.display_mode = display_mode(packed >> 5 & 3);
  in.skip(1);  // attributes
  return read_full_place(in, item);
}

bool decode_d109(ByteReader& in, ItemRecord& item) {
  const bool has_position = read_packed_place(in, item);
  in.skip(4);  // time en route
  read_full_texts(in, item);
  return has_position;
}

bool decode_d110(ByteReader& in, ItemRecord& item) {
  const bool has_position = read_packed_place(in, item);
  in.skip(4 + 4);  // time en route, temperature
  item.time = read_time(in);
  in.skip(2);  // categories
  read_full_texts(in, item);
  return has_position;
}

// Bit n is set when class n is a point of the aviation data base.
constexpr unsigned kAviationClasses151 = 0b11;
constexpr unsigned kAviationClasses152 = 0b1111;
constexpr unsigned kAviationClasses154 = 0b1110'1111;

// An altitude of 0 is that of sea level at an aviation point, and that of nobody having set one at a user's.
void set_altitude(ItemRecord& item, std::int16_t metres, unsigned aviation_classes) {
  const bool is_aviation = item.waypoint_class < 8 && (aviation_classes >> item.waypoint_class & 1) != 0;
  if (metres != 0 || is_aviation) item.altitude = metres;
}

bool decode_d150(ByteReader& in, ItemRecord& item) {
  constexpr std::uint8_t kLocked150 = 7;
  constexpr std::uint8_t kLocked154 = 9;
  draw_as_named_dot(item);
  item.record_type = 154;
  item.ident = in.text(6);
  item.country = in.text(2);
  item.waypoint_class = in.u8();
  if (item.waypoint_class == kLocked150) item.waypoint_class = kLocked154;
  const bool has_position = read_position(in, item.position);
  set_altitude(item, in.i16(), kAviationClasses154);
  item.city = in.text(24);
  item.state = in.text(2);
  item.name = in.text(30);
  item.comment = in.text(40);
  return has_position;
}

bool decode_d450(ByteReader& in, ItemRecord& item) {
  in.skip(2);  // index
  const bool has_position = decode_d150(in, item);
  read_distance(in, item);
  return has_position;
}

template <std::uint16_t record_type, unsigned aviation_classes>
bool decode_aviation(ByteReader& in, ItemRecord& item) {
  const bool has_position = decode_d400(in, item);
  item.record_type = record_type;
  item.name = in.text(30);
  item.city = in.text(24);
  item.state = in.text(2);
  const std::int16_t altitude_metres = in.i16();
  item.country = in.text(2);
  in.skip(1);
  item.waypoint_class = in.u8();
  set_altitude(item, altitude_metres, aviation_classes);
  return has_position;
}

bool decode_d154(ByteReader& in, ItemRecord& item) {
  const bool has_position = decode_aviation<154, kAviationClasses154>(in, item);
  set_symbol_type(item, in.u16());
  return has_position;
}

bool decode_d155(ByteReader& in, ItemRecord& item) {
  const bool has_position = decode_aviation<155, kAviationClasses152>(in, item);
  set_symbol_type(item, in.u16());
  item.display_mode = display_mode_as_stored(in.u8());
  return has_position;
}

// Waypoint formats without a distance first, proximity formats that are no waypoint formats last.
constexpr std::array kFormats{
    RecordFormat{100, 58, 58, decode_d100},
    RecordFormat{103, 60, 60, decode_d103},
    RecordFormat{105, 11, kLongestRecord, decode_d105},
    RecordFormat{106, 26, kLongestRecord, decode_d106},
    RecordFormat{150, 115, 115, decode_d150},
    RecordFormat{101, 63, 63, decode_d101},
    RecordFormat{102, 64, 64, decode_d102},
    RecordFormat{104, 65, 65, decode_d104},
    RecordFormat{107, 65, 65, decode_d107},
    RecordFormat{108, 54, kLongestRecord, decode_d108},
    RecordFormat{109, 58, kLongestRecord, decode_d109},
    RecordFormat{110, 68, kLongestRecord, decode_d110},
    RecordFormat{151, 124, 124, decode_aviation<151, kAviationClasses151>},
    RecordFormat{152, 124, 124, decode_aviation<152, kAviationClasses152>},
    RecordFormat{154, 126, 126, decode_d154},
    RecordFormat{155, 127, 127, decode_d155},
    RecordFormat{400, 62, 62, decode_d400},
    RecordFormat{403, 64, 64, decode_d403},
    RecordFormat{450, 121, 121, decode_d450},
};
constexpr std::size_t kWithoutDistance = 5;
constexpr std::size_t kProximityOnly = 3;
static_assert(kFormats[kWithoutDistance].number == 101 && kFormats[kFormats.size() - kProximityOnly].number == 400);

}  // namespace

constinit const std::span<const RecordFormat> kWaypointFormats =
    std::span(kFormats).first(kFormats.size() - kProximityOnly);
constinit const std::span<const RecordFormat> kProximityFormats = std::span(kFormats).subspan(kWithoutDistance);

}  // namespace garmin
