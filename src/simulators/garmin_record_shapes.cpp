#include "simulators/garmin_record_shapes.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "base/byte_cursor.h"

namespace simulators {

namespace {

enum class Key { None, Text6, Byte, FirstText };

// Fields of fixed size, then texts of at most so many bytes each, the closing NUL counted.
struct Shape {
  int format;
  std::size_t fixed;
  std::span<const std::size_t> texts;
  Key key;
  std::size_t key_at = 0;
};

constexpr std::array<std::size_t, 1> kOneText{51};
constexpr std::array<std::size_t, 2> kTwoTexts{51, 51};
constexpr std::array<std::size_t, 6> kSixTexts{51, 51, 31, 25, 51, 51};

constexpr std::array kShapes = std::to_array<Shape>({
    {100, 58, {}, Key::Text6},
    {101, 63, {}, Key::Text6},
    {102, 64, {}, Key::Text6},
    {103, 60, {}, Key::Text6},
    {104, 65, {}, Key::Text6},
    {105, 10, kOneText, Key::FirstText},
    {106, 24, kTwoTexts, Key::FirstText},
    {107, 65, {}, Key::Text6},
    {108, 48, kSixTexts, Key::FirstText},
    {109, 52, kSixTexts, Key::FirstText},
    {110, 62, kSixTexts, Key::FirstText},
    {150, 115, {}, Key::Text6},
    {151, 124, {}, Key::Text6},
    {152, 124, {}, Key::Text6},
    {154, 126, {}, Key::Text6},
    {155, 127, {}, Key::Text6},
    {200, 1, {}, Key::Byte},
    {201, 21, {}, Key::Byte},
    {202, 0, kOneText, Key::FirstText},
    {210, 20, kOneText, Key::None},
    {300, 13, {}, Key::None},
    {301, 21, {}, Key::None},
    {302, 25, {}, Key::None},
    {310, 2, kOneText, Key::FirstText},
    {312, 2, kOneText, Key::FirstText},
    {400, 62, {}, Key::Text6},
    {403, 64, {}, Key::Text6},
    {450, 121, {}, Key::Text6, 2},
    {500, 42, {}, Key::None},
    {501, 43, {}, Key::None},
    {550, 43, {}, Key::Byte},
    {551, 44, {}, Key::Byte},
});

constexpr std::int64_t kPole = std::int64_t{1} << 30;  // 90 degrees in semicircles

struct CodedByte {
  std::size_t at;
  bool (*allows)(std::uint8_t value);
};
// Deliberate : hosts in wide use send all ones for a display that nobody chose. The two bits that D109 and D110 have
// for it then hold the one number that is no code, so these are not looked at.
constexpr bool is_display_code(std::uint8_t value) { return value <= 2 || value == 0xFF; }
constexpr bool is_data_type(std::uint8_t value) { return value == 1; }

constexpr std::array kD103Bytes{CodedByte{59, is_display_code}};
constexpr std::array kD108Bytes{CodedByte{2, is_display_code}};
constexpr std::array kD109Bytes{CodedByte{0, is_data_type}};

struct Values {
  int format;
  std::size_t latitude_at;
  std::span<const CodedByte> coded;
};
constexpr std::array kValues = std::to_array<Values>({
    {100, 6, {}},          {101, 6, {}},  {102, 6, {}},         {103, 6, kD103Bytes},  {104, 6, {}},
    {105, 0, {}},          {106, 14, {}}, {107, 6, kD103Bytes}, {108, 24, kD108Bytes}, {109, 24, kD109Bytes},
    {110, 24, kD109Bytes}, {150, 9, {}},  {151, 6, {}},         {152, 6, {}},          {154, 6, {}},
    {155, 6, {}},          {300, 0, {}},  {301, 0, {}},         {302, 0, {}},          {400, 6, {}},
    {403, 6, kD103Bytes},  {450, 11, {}},
});

}  // namespace

bool has_shape_of(int format, std::span<const std::uint8_t> data) {
  const auto shape = std::ranges::find(kShapes, format, &Shape::format);
  if (shape == kShapes.end()) return false;
  base::ByteReader in(data);
  in.skip(shape->fixed);
  for (const std::size_t longest : shape->texts) {
    const std::size_t before = in.remaining();
    (void)in.string();
    if (before - in.remaining() > longest) return false;
  }
  return in.ok() && in.remaining() == 0;
}

bool has_possible_values(int format, std::span<const std::uint8_t> data) {
  const auto row = std::ranges::find(kValues, format, &Values::format);
  if (row == kValues.end()) return true;
  base::ByteReader latitude(data.subspan(std::min(row->latitude_at, data.size())));
  const std::int64_t semicircles = latitude.i32();
  const auto has = [&](const CodedByte& coded) { return coded.at < data.size() && coded.allows(data[coded.at]); };
  return latitude.ok() && std::abs(semicircles) <= kPole && std::ranges::all_of(row->coded, has);
}

std::string record_key(int format, std::span<const std::uint8_t> data) {
  const auto shape = std::ranges::find(kShapes, format, &Shape::format);
  if (shape == kShapes.end()) return {};
  base::ByteReader in(data);
  in.skip(shape->key == Key::FirstText ? shape->fixed : shape->key_at);
  switch (shape->key) {
    case Key::None:
      break;
    case Key::Text6:
      return in.text(6);
    case Key::Byte:
      return {static_cast<char>(in.u8())};
    case Key::FirstText:
      return in.string();
  }
  return {};
}

RecordPlaces::RecordPlaces(int format, std::span<const Packet> records) : format_(format) {
  for (const Packet& packet : records) places_.try_emplace(record_key(format_, packet.data), next_++);
}

std::size_t RecordPlaces::place_for(std::span<const std::uint8_t> data) {
  const auto [own, is_new] = places_.try_emplace(record_key(format_, data), next_);
  if (is_new) ++next_;
  return own->second;
}

void put_record(Packet packet, std::size_t place, std::vector<Packet>& records) {
  if (place < records.size()) {
    records[place] = std::move(packet);
  } else {
    records.push_back(std::move(packet));
  }
}

}  // namespace simulators
