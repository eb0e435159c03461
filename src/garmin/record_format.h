// What all record tables share: a row for each data format (D-number), and the one way in which a record is decoded,
// encoded or refused. Layouts after the maker's published interface document: little-endian, without padding.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "base/byte_cursor.h"
#include "garmin/receiver_text.h"
#include "store/item_record.h"
#include "store/settings.h"

namespace garmin {

inline constexpr std::size_t kLongestRecord = 255;  // data bytes that one packet can hold
// Those of a packet that comes back whole: with its frame it has 254 bytes, the most that are received here.
inline constexpr std::size_t kLongestEncoded = 248;

// The subclass of points and links that are none of a map's.
inline constexpr std::array<std::uint8_t, 18> kPlainSubclass{0,    0,    0,    0,    0,    0,    0xFF, 0xFF, 0xFF,
                                                             0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

// One data format. Lengths are in data bytes; they differ only where the format ends in texts with a closing NUL.
template <typename Record>
struct FormatOf {
  std::uint16_t number;  // 108 for D108
  std::size_t shortest;  // every text empty
  std::size_t longest;
  NameRule name;  // of the ident that receivers know the item by
  // Both are false when the record has no position. The settings say which symbols stand for each other.
  bool (*decode)(base::ByteReader& in, Record& record);
  bool (*encode)(base::ByteWriter& out, const Record& record, const store::Settings& settings);
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

// The data bytes of a record of a format, kLongestEncoded at most: longer texts are cut, the last first. The ident
// comes made by receiver_name and goes out as it is, other texts are put in the receiver's letters here. Nothing for a
// number without a row and for a record whose position no receiver can have (see ItemWriting::position).
template <typename Record>
[[nodiscard]] std::optional<base::Bytes> encode_record(std::type_identity_t<std::span<const FormatOf<Record>>> formats,
                                                       std::uint16_t number, const Record& record,
                                                       const store::Settings& settings) {
  const FormatOf<Record>* format = find_format(formats, number);
  base::ByteWriter out;
  if (format == nullptr || !format->encode(out, record, settings)) return std::nullopt;
  return out.result();
}

}  // namespace garmin
