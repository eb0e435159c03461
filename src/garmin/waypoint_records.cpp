#include "garmin/waypoint_records.h"

#include <array>
#include <cmath>
#include <limits>

#include "garmin/record_fields.h"
#include "garmin/waypoint_values.h"

namespace garmin {
namespace {

using store::ItemRecord;

class WaypointReading : public ItemReading {
 public:
  using ItemReading::ItemReading;

  void comment() { text(&ItemRecord::comment); }
  void distance(float) {
    const float metres = read_metres();
    item_.proximity_distance = store::is_known(metres) ? metres : 0;
  }

  void symbol_of_16() { set_symbol_of_16(in_.u8()); }
  void symbol_type() { set_symbol_type(in_.u16()); }
  void symbol_type_byte() { set_symbol_type(in_.u8()); }
  void display() { item_.display_mode = display_mode(in_.u8()); }
  void display_as_stored() { item_.display_mode = display_mode_as_stored(in_.u8()); }
  void colour_of_four() { item_.colour = garmin::colour_of_four(in_.u8()); }
  void colour() { item_.colour = garmin::colour(in_.u8()); }
  void display_and_colour() {
    const unsigned packed = in_.u8();
    item_.colour = garmin::colour(packed & 0x1F);
    item_.display_mode = display_mode(packed >> 5 & 3);
  }

  // How receivers draw a waypoint whose format has neither symbol nor display option.
  void drawn_as_named_dot() {
    set_symbol_of_16(0);
    item_.display_mode = kSymbolAndName;
  }
  void long_ident_details(std::uint16_t format) {
    item_.record_type = format;
    item_.detail_kind = store::kLongIdentDetails;
    item_.display_mode = kSymbolAndName;
  }
  void class_of(std::uint16_t format) {
    item_.waypoint_class = in_.u8();
    item_.record_type = format;
    if (format == 108) item_.detail_kind = item_.waypoint_class == 0 ? store::kNoDetails : store::kFullDetails;
    if (format != 150) return;
    item_.record_type = 154;
    item_.waypoint_class = class_from_d150(item_.waypoint_class);
  }
  void subclass_of(std::uint16_t, std::size_t size) { std::ranges::copy(in_.bytes(size), item_.subclass.begin()); }

  void whole_metres() { item_.altitude = in_.i16(); }
  // An altitude of 0 is that of sea level at an aviation point, and that of nobody having set one at a user's.
  void users_have_no_altitude_zero() {
    if (item_.altitude == 0 && !is_aviation_point(item_)) item_.altitude = store::kNotKnown;
  }
  void index() { in_.skip(2); }

 private:
  void set_symbol_of_16(std::uint8_t symbol) {
    item_.symbol = symbol;
    item_.symbol_mode = static_cast<std::uint8_t>(store::IconSet::G12xl);
  }
  void set_symbol_type(std::uint16_t symbol) {
    item_.symbol = static_cast<std::int16_t>(symbol);
    item_.symbol_mode = store::kSymbolModeNotGiven;
  }
};

class WaypointWriting : public ItemWriting {
 public:
  WaypointWriting(base::ByteWriter& out, const ItemRecord& item, const store::Settings& settings)
      : ItemWriting(out, item, settings) {
    // The one text has two names: it goes out in the one that the format has.
    if (!is_aviation_type(item.record_type)) {
      if (item_.name.empty()) item_.name = item.facility;
    } else if (item_.facility.empty()) {
      item_.facility = item.name;
    }
  }

  void comment() { out_.text(receiver_comment(item_.comment, Letters::Capitals), item_.comment.longest()); }
  void distance(float none) {
    const float metres = item_.proximity_distance;
    out_.f32(metres != 0 && store::is_known(metres) && std::isfinite(metres) ? metres : none);
  }

  void symbol_of_16() { out_.u8(garmin::symbol_of_16(item_, settings_)); }
  void symbol_type() { out_.u16(garmin::symbol_type(item_, settings_, 0xFFFF)); }
  void symbol_type_byte() { out_.u8(static_cast<std::uint8_t>(garmin::symbol_type(item_, settings_, 0xFF))); }
  void display() { out_.u8(display_code(item_.display_mode)); }
  void display_as_stored() { out_.u8(display_code_as_stored(item_.display_mode)); }
  void colour_of_four() { out_.u8(colour_code_of_four(item_.colour)); }
  void colour() { out_.u8(colour_code(item_.colour).value_or(255)); }
  void display_and_colour() {
    // The default of D109. D110 has the 16 colours and "transparent" alone; a value that it does not define is better
    // than waypoints that cannot be seen.
    constexpr unsigned kDefault = 0x1F;
    const unsigned colour = colour_code(item_.colour).value_or(kDefault);
    out_.u8(static_cast<std::uint8_t>(unsigned{display_code(item_.display_mode)} << 5 | colour));
  }

  void drawn_as_named_dot() {}
  void long_ident_details(std::uint16_t) {}
  void class_of(std::uint16_t format) { out_.u8(class_number(item_, format)); }
  void subclass_of(std::uint16_t format, std::size_t size) {
    const std::array<std::uint8_t, 18> sent = subclass(item_, format);
    out_.bytes(std::span(sent).first(size));
  }

  void whole_metres() {
    using Metres = std::numeric_limits<std::int16_t>;
    const float metres = item_.altitude;
    const bool is_known = store::is_known(metres) && std::isfinite(metres);
    out_.i16(is_known
                 ? static_cast<std::int16_t>(std::clamp(std::round(metres), float{Metres::min()}, float{Metres::max()}))
                 : std::int16_t{0});
  }
  void users_have_no_altitude_zero() {}
  void index() { out_.u16(static_cast<std::uint16_t>(item_.number)); }
};

// The layouts. Many are an earlier one with fields added at its end.

constexpr float kNoDistance = 0;  // D108 to D110 have kNotKnownToReceivers instead

constexpr auto d100 = [](auto& fields) {
  fields.drawn_as_named_dot();
  fields.ident(6);
  fields.position();
  fields.not_kept_u32(0);
  fields.comment();
};

constexpr auto d400 = [](auto& fields) {
  d100(fields);
  fields.distance(kNoDistance);
};

constexpr auto d101 = [](auto& fields) {
  d400(fields);
  fields.symbol_type_byte();
};

constexpr auto d102 = [](auto& fields) {
  d400(fields);
  fields.symbol_type();
};

constexpr auto d104 = [](auto& fields) {
  d102(fields);
  fields.display_as_stored();
};

constexpr auto d103 = [](auto& fields) {
  d100(fields);
  fields.symbol_of_16();
  fields.display();
};

constexpr auto d403 = [](auto& fields) {
  d103(fields);
  fields.distance(kNoDistance);
};

constexpr auto d107 = [](auto& fields) {
  d403(fields);
  fields.colour_of_four();
};

constexpr auto d105 = [](auto& fields) {
  fields.long_ident_details(105);
  fields.position();
  fields.symbol_type();
  fields.ident();
};

constexpr auto d106 = [](auto& fields) {
  fields.class_of(106);
  fields.subclass_of(106, 13);
  fields.long_ident_details(106);
  fields.position();
  fields.symbol_type();
  fields.ident();
  fields.texts(&ItemRecord::link_ident);
};

// Symbol to country, alike in D108, D109 and D110.
constexpr auto full_place = [](auto& fields) {
  fields.symbol_type();
  fields.subclass_of(108, 18);
  fields.position();
  fields.metres(&ItemRecord::altitude);
  fields.metres(&ItemRecord::depth);
  fields.distance(kNotKnownToReceivers);
  fields.text(&ItemRecord::state);
  fields.text(&ItemRecord::country);
};

constexpr auto full_texts = [](auto& fields) {
  fields.ident();
  fields.texts(&ItemRecord::comment, &ItemRecord::facility, &ItemRecord::city, &ItemRecord::address,
               &ItemRecord::cross_road);
};

constexpr auto d108 = [](auto& fields) {
  fields.class_of(108);
  fields.colour();
  fields.display();
  fields.not_kept_u8(0x60);  // attributes
  full_place(fields);
  full_texts(fields);
};

constexpr auto d109 = [](auto& fields) {
  fields.not_kept_u8(1);  // data type
  fields.class_of(108);
  fields.display_and_colour();
  fields.not_kept_u8(0x70);  // attributes
  full_place(fields);
  fields.not_kept_u32(kNoTime);  // time en route
  full_texts(fields);
};

constexpr auto d110 = [](auto& fields) {
  fields.not_kept_u8(1);  // data type
  fields.class_of(108);
  fields.display_and_colour();
  fields.not_kept_u8(0x80);  // attributes
  full_place(fields);
  fields.not_kept_u32(kNoTime);               // time en route
  fields.not_kept_f32(kNotKnownToReceivers);  // temperature
  fields.time(kNoTime);
  fields.not_kept_u16(0);  // categories
  full_texts(fields);
};

constexpr auto d150 = [](auto& fields) {
  fields.drawn_as_named_dot();
  fields.ident(6);
  fields.text(&ItemRecord::country);
  fields.class_of(150);
  fields.position();
  fields.whole_metres();
  fields.text(&ItemRecord::city);
  fields.text(&ItemRecord::state);
  fields.text(&ItemRecord::name);
  fields.comment();
  fields.users_have_no_altitude_zero();
};

constexpr auto d450 = [](auto& fields) {
  fields.index();
  d150(fields);
  fields.distance(kNoDistance);
};

// D151, D152 and the beginning of D154 and D155.
template <std::uint16_t format>
constexpr auto aviation = [](auto& fields) {
  d400(fields);
  fields.text(&ItemRecord::name);
  fields.text(&ItemRecord::city);
  fields.text(&ItemRecord::state);
  fields.whole_metres();
  fields.text(&ItemRecord::country);
  fields.not_kept_u8(0);
  fields.class_of(format);
  fields.users_have_no_altitude_zero();
};

constexpr auto d154 = [](auto& fields) {
  aviation<154>(fields);
  fields.symbol_type();
};

constexpr auto d155 = [](auto& fields) {
  aviation<155>(fields);
  fields.symbol_type();
  fields.display_as_stored();
};

constexpr NameRule kShort{6, Letters::Capitals};
constexpr NameRule kLong{50, Letters::Ascii};

template <typename Layout>
constexpr RecordFormat row(std::uint16_t number, std::size_t shortest, std::size_t longest, NameRule name,
                           Layout layout) {
  return row_of<WaypointReading, WaypointWriting>(number, shortest, longest, name, layout);
}

// Waypoint formats without a distance first, proximity formats that are no waypoint formats last.
constexpr std::array kFormats{
    row(100, 58, 58, kShort, d100),
    row(103, 60, 60, kShort, d103),
    row(105, 11, kLongestRecord, kLong, d105),
    row(106, 26, kLongestRecord, kLong, d106),
    row(150, 115, 115, kShort, d150),
    row(101, 63, 63, kShort, d101),
    row(102, 64, 64, kShort, d102),
    row(104, 65, 65, kShort, d104),
    row(107, 65, 65, kShort, d107),
    row(108, 54, kLongestRecord, kLong, d108),
    row(109, 58, kLongestRecord, kLong, d109),
    row(110, 68, kLongestRecord, kLong, d110),
    row(151, 124, 124, kShort, aviation<151>),
    row(152, 124, 124, kShort, aviation<152>),
    row(154, 126, 126, kShort, d154),
    row(155, 127, 127, kShort, d155),
    row(400, 62, 62, kShort, d400),
    row(403, 64, 64, kShort, d403),
    row(450, 121, 121, kShort, d450),
};
constexpr std::size_t kWithoutDistance = 5;
constexpr std::size_t kProximityOnly = 3;
static_assert(kFormats[kWithoutDistance].number == 101 && kFormats[kFormats.size() - kProximityOnly].number == 400);

}  // namespace

constinit const std::span<const RecordFormat> kWaypointFormats =
    std::span(kFormats).first(kFormats.size() - kProximityOnly);
constinit const std::span<const RecordFormat> kProximityFormats = std::span(kFormats).subspan(kWithoutDistance);

}  // namespace garmin
