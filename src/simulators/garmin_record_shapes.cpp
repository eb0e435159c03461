#include "simulators/garmin_record_shapes.h"

#include <algorithm>
#include <array>

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

}  // namespace simulators
