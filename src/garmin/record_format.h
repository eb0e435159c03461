// What all record tables share: a row for each data format (D-number), and the one way in which a received
// record is decoded or refused. Layouts after the maker's published interface document: little-endian, without padding.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "base/byte_cursor.h"
#include "geodesy/position.h"
#include "store/garmin_time.h"
#include "store/item_record.h"

namespace garmin {

inline constexpr std::size_t kLongestRecord = 255;  // data bytes that one packet can hold

// One data format. Lengths are in data bytes; they differ only where the format ends in texts with a closing NUL.
template <typename Record>
struct FormatOf {
  std::uint16_t number;  // 108 for D108
  std::size_t shortest;  // every text empty
  std::size_t longest;
  bool (*decode)(base::ByteReader& in, Record& record);  // false: the record has no position
};
using RecordFormat = FormatOf<store::ItemRecord>;

enum class Decoded { Ok, UnknownFormat, WrongLength, NoPosition };

struct DecodeResult {
  Decoded outcome = Decoded::Ok;
  std::string refusal;  // one line for the user; empty when the record was decoded
  explicit operator bool() const { return outcome == Decoded::Ok; }
};

// The row of a D-number; nullptr when there is none.
template <typename Format>
[[nodiscard]] const Format* find_format(std::span<const Format> formats, std::uint16_t number) {
  const auto row = std::ranges::find(formats, number, &Format::number);
  return row == formats.end() ? nullptr : &*row;
}

// Decodes the data bytes of one packet on top of `record`, which comes in with nothing known
// (store::blank_item) and stays untouched when the record is refused. A refusal names the packet, the format
// and, for a record that is shorter or longer than its format, both lengths.
template <typename Record>
[[nodiscard]] DecodeResult decode_record(std::type_identity_t<std::span<const FormatOf<Record>>> formats,
                                         std::uint16_t number, std::string_view packet_name,
                                         std::span<const std::uint8_t> data, Record& record) {
  const auto refused = [&](Decoded outcome, const std::string& why) {
    return DecodeResult{outcome, std::string(packet_name) + " D" + std::to_string(number) + why + ": record refused"};
  };
  const auto wrong_length = [&](const char* relation, std::size_t length) {
    return refused(Decoded::WrongLength,
                   ": " + std::to_string(data.size()) + " bytes" + relation + std::to_string(length));
  };
  const FormatOf<Record>* format = find_format(formats, number);
  if (format == nullptr) return refused(Decoded::UnknownFormat, " is an unknown data format");
  const bool fixed_length = format->shortest == format->longest;
  if (fixed_length && data.size() != format->shortest) return wrong_length(" instead of ", format->shortest);
  if (data.size() < format->shortest) return wrong_length(", needs at least ", format->shortest);
  if (data.size() > format->longest) return wrong_length(", at most ", format->longest);

  base::ByteReader in(data);
  Record decoded = record;
  const bool has_position = format->decode(in, decoded);
  if (!in.ok()) return wrong_length(", needs at least ", data.size() + 1);  // a text without its NUL
  if (in.remaining() > 0) return wrong_length(" instead of ", data.size() - in.remaining());
  if (!has_position) return refused(Decoded::NoPosition, " has no position");
  record = decoded;
  return {};
}

// Latitude and longitude in semicircles, 2^31 of them to 180 degrees; the degrees are exact. A latitude
// beyond a pole is how receivers mark a position that they do not have: false, and `position` stays as it was.
[[nodiscard]] inline bool read_position(base::ByteReader& in, geodesy::Position& position) {
  constexpr std::int32_t kPole = 1 << 30;
  constexpr double kDegrees = 180.0 / 2147483648.0;
  const std::int32_t latitude = in.i32();
  const std::int32_t longitude = in.i32();
  if (latitude < -kPole || latitude > kPole) return false;
  position = {latitude * kDegrees, longitude * kDegrees};
  return true;
}

// An altitude or depth in metres. "Not known" (1.0e24 or more) stays as received; what is no number is not known.
[[nodiscard]] inline float read_metres(base::ByteReader& in) {
  const float metres = in.f32();
  return std::isfinite(metres) ? metres : store::kNotKnown;
}

// A time; the three values that receivers send for "none" become the store's 0.
[[nodiscard]] inline store::GarminTime read_time(base::ByteReader& in) {
  const std::uint32_t seconds = in.u32();
  if (seconds == 0x7FFFFFFF || seconds == 0xFFFFFFFF) return {};
  return {seconds};
}

}  // namespace garmin
