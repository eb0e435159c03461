#include "simulators/garmin_records.h"

#include <algorithm>
#include <cmath>

namespace simulators {

namespace {

using base::ByteWriter;

constexpr float kUnknownLength = 1.0e25F;
constexpr std::uint32_t kUnknownTime = 0xFFFFFFFF;
constexpr std::uint16_t kWaypointDot = 18;
constexpr std::size_t kLongestRecord = 255;

// Both texts of a fixed field and variable texts end at an embedded NUL.
std::string_view until_nul(std::string_view text) { return text.substr(0, text.find('\0')); }
void fixed(ByteWriter& out, std::string_view text, std::size_t size) { out.text(until_nul(text), size); }
void variable(ByteWriter& out, std::string_view text, std::size_t longest_with_nul) {
  out.string(until_nul(text), longest_with_nul - 1);
}

// 2^31 units are 180 degrees. 180 E becomes 180 W, its equal.
std::int32_t semicircles(double degrees) {
  if (!std::isfinite(degrees)) degrees = 0;
  const double units = std::round(std::clamp(degrees, -180.0, 180.0) * 2147483648.0 / 180.0);
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(units)));
}

void position(ByteWriter& out, double latitude, double longitude) {
  out.i32(semicircles(latitude)).i32(semicircles(longitude));
}

float or_unknown(const std::optional<float>& metres) { return metres.value_or(kUnknownLength); }

// Whole metres, 0 where the altitude is not known: these formats have no other word for it.
std::int16_t whole_metres(const std::optional<float>& metres) {
  return static_cast<std::int16_t>(std::lround(std::clamp(metres.value_or(0), -32768.0F, 32767.0F)));
}

// The 16 symbols of D103, D107 and D403, as numbers of the large symbol set.
constexpr std::array<std::uint16_t, 16> kSmallSymbolSet{18,  10, 8,   170, 7,   150, 0,   19,
                                                        177, 14, 178, 151, 179, 171, 156, 8196};

std::uint8_t small_symbol(std::uint16_t symbol) {
  const auto found = std::ranges::find(kSmallSymbolSet, symbol);
  return static_cast<std::uint8_t>(found == kSmallSymbolSet.end() ? 0 : found - kSmallSymbolSet.begin());
}

// 0 symbol and name, 1 symbol, 2 symbol and comment.
std::uint8_t small_display(int display_mode) {
  if (display_mode == 1) return 1;
  return display_mode == 5 ? 2 : 0;
}

std::uint8_t long_display(int display_mode) {
  return static_cast<std::uint8_t>(display_mode == 1 || display_mode == 5 ? display_mode : 3);
}

// 0 default, 1 red, 2 green, 3 blue; the dark kinds count as their colour.
std::uint8_t four_colours(std::uint8_t colour) {
  constexpr std::array<std::uint8_t, 16> kNearest{0, 1, 2, 0, 3, 0, 0, 0, 0, 1, 2, 0, 3, 0, 0, 0};
  return colour < kNearest.size() ? kNearest[colour] : std::uint8_t{0};
}

std::uint8_t plain_class(const SimWaypoint& waypoint) {
  return waypoint.waypoint_class == 255 ? std::uint8_t{0} : waypoint.waypoint_class;
}

// Class numbers of the aviation formats, for the D108 classes 0x40 (airport) to 0x46 in turn.
struct AviationClasses {
  std::uint8_t user, locked;
  std::array<std::uint8_t, 7> points;
};
constexpr AviationClasses kD150Classes{4, 7, {0, 1, 2, 3, 5, 6, 4}};
constexpr AviationClasses kD151Classes{2, 3, {0, 2, 2, 1, 2, 2, 2}};
constexpr AviationClasses kD152Classes{4, 5, {0, 1, 2, 3, 4, 4, 4}};
constexpr AviationClasses kD154Classes{4, 9, {0, 1, 2, 3, 5, 6, 7}};

std::uint8_t aviation_class(const SimWaypoint& waypoint, const AviationClasses& classes) {
  if (waypoint.locked) return classes.locked;
  const unsigned point = waypoint.waypoint_class - 0x40U;
  return point < classes.points.size() ? classes.points[point] : classes.user;
}

const std::string& facility_name(const SimWaypoint& waypoint) {
  return waypoint.name.empty() ? waypoint.facility : waypoint.name;
}

// The start that D100 and most later formats share: 58 bytes.
void common_start(ByteWriter& out, const SimWaypoint& waypoint) {
  fixed(out, waypoint.ident, 6);
  position(out, waypoint.latitude, waypoint.longitude);
  out.u32(0);
  fixed(out, waypoint.comment, 40);
}

void d100(ByteWriter& out, const SimWaypoint& waypoint, int) { common_start(out, waypoint); }

void d101(ByteWriter& out, const SimWaypoint& waypoint, int) {
  common_start(out, waypoint);
  out.f32(waypoint.proximity.value_or(0));
  out.u8(static_cast<std::uint8_t>(waypoint.symbol > 255 ? kWaypointDot : waypoint.symbol));
}

void d102(ByteWriter& out, const SimWaypoint& waypoint, int) {
  common_start(out, waypoint);
  out.f32(waypoint.proximity.value_or(0)).u16(waypoint.symbol);
}

void d103(ByteWriter& out, const SimWaypoint& waypoint, int) {
  common_start(out, waypoint);
  out.u8(small_symbol(waypoint.symbol)).u8(small_display(waypoint.display_mode));
}

void d104(ByteWriter& out, const SimWaypoint& waypoint, int index) {
  d102(out, waypoint, index);
  out.u8(long_display(waypoint.display_mode));
}

void d105(ByteWriter& out, const SimWaypoint& waypoint, int) {
  position(out, waypoint.latitude, waypoint.longitude);
  out.u16(waypoint.symbol);
  variable(out, waypoint.ident, 51);
}

void d106(ByteWriter& out, const SimWaypoint& waypoint, int index) {
  constexpr std::array<std::uint8_t, 13> kUserSubclass{};
  const std::uint8_t kind = plain_class(waypoint);
  if (waypoint.d106_class != 0) {
    out.u8(waypoint.d106_class).bytes(waypoint.d106_subclass);
  } else {
    out.u8(kind).bytes(kind == 0 ? std::span(kUserSubclass) : std::span(waypoint.subclass).first<13>());
  }
  d105(out, waypoint, index);
  variable(out, waypoint.link_ident, 51);
}

void d107(ByteWriter& out, const SimWaypoint& waypoint, int index) {
  d103(out, waypoint, index);
  out.f32(waypoint.proximity.value_or(0)).u8(four_colours(waypoint.colour));
}

// The six texts at the end of D108 and its kin, shortened from the last backwards where they would not fit.
void long_texts(ByteWriter& out, const SimWaypoint& waypoint) {
  struct Text {
    const std::string& text;
    std::size_t longest_with_nul;
  };
  const std::array<Text, 6> texts{{{waypoint.ident, 51},
                                   {waypoint.comment, 51},
                                   {waypoint.facility, 31},
                                   {waypoint.city, 25},
                                   {waypoint.address, 51},
                                   {waypoint.cross_road, 51}}};
  std::size_t nuls_to_come = texts.size();
  for (const Text& each : texts) {
    --nuls_to_come;
    variable(out, each.text, std::min(each.longest_with_nul, kLongestRecord - out.result().size() - nuls_to_come));
  }
}

// From the symbol to the country code, alike in D108, D109 and D110.
void full_middle(ByteWriter& out, const SimWaypoint& waypoint) {
  out.u16(waypoint.symbol).bytes(waypoint.subclass);
  position(out, waypoint.latitude, waypoint.longitude);
  out.f32(or_unknown(waypoint.altitude)).f32(or_unknown(waypoint.depth)).f32(or_unknown(waypoint.proximity));
  fixed(out, waypoint.state, 2);
  fixed(out, waypoint.country, 2);
}

void d108(ByteWriter& out, const SimWaypoint& waypoint, int) {
  out.u8(plain_class(waypoint)).u8(waypoint.colour).u8(small_display(waypoint.display_mode)).u8(0x60);
  full_middle(out, waypoint);
  long_texts(out, waypoint);
}

void d109_start(ByteWriter& out, const SimWaypoint& waypoint, std::uint8_t attributes) {
  const int colour = std::min<int>(waypoint.colour, 0x1F);
  out.u8(1).u8(plain_class(waypoint));
  out.u8(static_cast<std::uint8_t>(colour | small_display(waypoint.display_mode) << 5)).u8(attributes);
  full_middle(out, waypoint);
  out.u32(kUnknownTime);  // estimated time of the leg that follows
}

void d109(ByteWriter& out, const SimWaypoint& waypoint, int) {
  d109_start(out, waypoint, 0x70);
  long_texts(out, waypoint);
}

void d110(ByteWriter& out, const SimWaypoint& waypoint, int) {
  d109_start(out, waypoint, 0x80);
  out.f32(kUnknownLength);  // temperature
  out.u32(waypoint.time == 0 ? kUnknownTime : waypoint.time).u16(0);
  long_texts(out, waypoint);
}

void d150(ByteWriter& out, const SimWaypoint& waypoint, int) {
  fixed(out, waypoint.ident, 6);
  fixed(out, waypoint.country, 2);
  out.u8(aviation_class(waypoint, kD150Classes));
  position(out, waypoint.latitude, waypoint.longitude);
  out.i16(whole_metres(waypoint.altitude));
  fixed(out, waypoint.city, 24);
  fixed(out, waypoint.state, 2);
  fixed(out, facility_name(waypoint), 30);
  fixed(out, waypoint.comment, 40);
}

template <const AviationClasses& Classes>
void d151_or_alike(ByteWriter& out, const SimWaypoint& waypoint, int) {
  common_start(out, waypoint);
  out.f32(waypoint.proximity.value_or(0));
  fixed(out, facility_name(waypoint), 30);
  fixed(out, waypoint.city, 24);
  fixed(out, waypoint.state, 2);
  out.i16(whole_metres(waypoint.altitude));
  fixed(out, waypoint.country, 2);
  out.u8(0).u8(aviation_class(waypoint, Classes));
}

void d154(ByteWriter& out, const SimWaypoint& waypoint, int index) {
  d151_or_alike<kD154Classes>(out, waypoint, index);
  out.u16(waypoint.symbol);
}

void d155(ByteWriter& out, const SimWaypoint& waypoint, int index) {
  d151_or_alike<kD152Classes>(out, waypoint, index);
  out.u16(waypoint.symbol).u8(long_display(waypoint.display_mode));
}

void d400(ByteWriter& out, const SimWaypoint& waypoint, int) {
  common_start(out, waypoint);
  out.f32(waypoint.proximity.value_or(0));
}

void d403(ByteWriter& out, const SimWaypoint& waypoint, int index) {
  d103(out, waypoint, index);
  out.f32(waypoint.proximity.value_or(0));
}

void d450(ByteWriter& out, const SimWaypoint& waypoint, int index) {
  out.i16(static_cast<std::int16_t>(index));
  d150(out, waypoint, index);
  out.f32(waypoint.proximity.value_or(0));
}

struct WaypointFormat {
  int format;
  bool in_waypoint_transfers;
  bool in_proximity_transfers;
  void (*encode)(ByteWriter& out, const SimWaypoint& waypoint, int index);
};

constexpr std::array kWaypointFormats = std::to_array<WaypointFormat>({
    {100, true, false, d100},
    {101, true, true, d101},
    {102, true, true, d102},
    {103, true, false, d103},
    {104, true, true, d104},
    {105, true, false, d105},
    {106, true, false, d106},
    {107, true, true, d107},
    {108, true, true, d108},
    {109, true, true, d109},
    {110, true, true, d110},
    {150, true, false, d150},
    {151, true, true, d151_or_alike<kD151Classes>},
    {152, true, true, d151_or_alike<kD152Classes>},
    {154, true, true, d154},
    {155, true, true, d155},
    {400, false, true, d400},
    {403, false, true, d403},
    {450, false, true, d450},
});

}  // namespace

bool is_waypoint_format(int format) {
  const auto row = std::ranges::find(kWaypointFormats, format, &WaypointFormat::format);
  return row != kWaypointFormats.end() && row->in_waypoint_transfers;
}

bool is_proximity_format(int format) {
  const auto row = std::ranges::find(kWaypointFormats, format, &WaypointFormat::format);
  return row != kWaypointFormats.end() && row->in_proximity_transfers;
}

bool is_route_header_format(int format) { return format >= 200 && format <= 202; }

bool is_track_point_format(int format) { return format >= 300 && format <= 302; }

bool is_almanac_format(int format) { return format == 500 || format == 501 || names_satellite(format); }

bool names_satellite(int format) { return format == 550 || format == 551; }

std::optional<base::Bytes> encode_waypoint(int format, const SimWaypoint& waypoint, int index) {
  const auto row = std::ranges::find(kWaypointFormats, format, &WaypointFormat::format);
  if (row == kWaypointFormats.end()) return std::nullopt;
  ByteWriter out;
  row->encode(out, waypoint, index);
  return out.result();
}

std::optional<base::Bytes> encode_route_header(int format, const SimRoute& route) {
  if (!is_route_header_format(format)) return std::nullopt;
  ByteWriter out;
  if (format == 202) {
    variable(out, route.name, 51);
    return out.result();
  }
  out.u8(static_cast<std::uint8_t>(route.number));
  if (format == 201) fixed(out, route.name, 20);
  return out.result();
}

base::Bytes encode_route_link(const SimRouteLink& link) {
  ByteWriter out;
  out.u16(link.link_class).bytes(link.subclass);
  variable(out, link.ident, 51);
  return out.result();
}

std::optional<base::Bytes> encode_track_header(int format, const SimTrack& track, int index) {
  ByteWriter out;
  if (format == 311) {
    out.u16(static_cast<std::uint16_t>(index));
  } else if (format == 310 || format == 312) {
    out.u8(1).u8(track.colour);
    variable(out, track.name, 51);
  } else {
    return std::nullopt;
  }
  return out.result();
}

std::optional<base::Bytes> encode_track_point(int format, const SimTrackPoint& point, bool starts_segment) {
  if (!is_track_point_format(format)) return std::nullopt;
  ByteWriter out;
  position(out, point.latitude, point.longitude);
  out.u32(point.time == 0 ? kUnknownTime : point.time);
  if (format >= 301) out.f32(or_unknown(point.altitude)).f32(or_unknown(point.depth));
  if (format == 302) out.f32(kUnknownLength);  // temperature
  out.u8(starts_segment ? 1 : 0);
  return out.result();
}

std::optional<base::Bytes> encode_satellite(int format, int index, const std::optional<SimSatellite>& satellite) {
  if (!is_almanac_format(format)) return std::nullopt;
  const SimSatellite orbit = satellite.value_or(SimSatellite{.week = -1});
  ByteWriter out;
  if (names_satellite(format)) out.u8(static_cast<std::uint8_t>(index));
  out.i16(orbit.week).f32(orbit.time_of_applicability).f32(orbit.af0).f32(orbit.af1);
  out.f32(orbit.eccentricity).f32(orbit.sqrt_semi_major_axis).f32(orbit.mean_anomaly).f32(orbit.argument_of_perigee);
  out.f32(orbit.right_ascension).f32(orbit.rate_of_right_ascension).f32(orbit.inclination);
  if (format == 501 || format == 551) out.u8(orbit.health);
  return out.result();
}

}  // namespace simulators
