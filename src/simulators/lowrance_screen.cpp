#include "simulators/lowrance_screen.h"

#include <cstdlib>
#include <utility>

namespace simulators {

namespace {

constexpr int kWhite = 0, kGrey = 1, kBlack = 2;

// Measures of early screens are given less 1.
int full_measure(const LowranceUnit& unit, int measure) { return unit.screen_type < 2 ? measure + 1 : measure; }
int shown_row_length(const LowranceUnit& unit) { return full_measure(unit, unit.screen_height); }

struct Pixel {
  int x, y;
};
// The pixel of the upright picture that stands at a place in the planes.
Pixel upright(const LowranceUnit& unit, int plane_x, int plane_y) {
  const int last_x = shown_row_length(unit) - 1;
  const int last_y = lowrance_plane_rows(unit) - 1;
  switch (unit.rotate_angle) {
    case 90:
      return {plane_y, last_x - plane_x};
    case 180:
      return {last_x - plane_x, last_y - plane_y};
    case 270:
      return {last_y - plane_y, plane_x};
    default:
      return {plane_x, plane_y};
  }
}

// Everything that is at least as dark as `tone`.
base::Bytes plane_of(const LowranceUnit& unit, int tone) {
  const auto [width, height] = lowrance_screen_size(unit);
  const int rows = lowrance_plane_rows(unit);
  base::Bytes plane(static_cast<std::size_t>(unit.row_length / 8 * rows));
  for (int y = 0; y < rows; ++y) {
    for (int x = 0; x < unit.row_length; ++x) {
      const Pixel pixel = upright(unit, x, y);
      const bool is_shown = x < shown_row_length(unit);
      if (is_shown && lowrance_screen_tone(width, height, pixel.x, pixel.y) < tone) continue;
      std::uint8_t& byte = plane[static_cast<std::size_t>((y * unit.row_length + x) / 8)];
      byte = static_cast<std::uint8_t>(byte | 0x80 >> (x % 8));
    }
  }
  return plane;
}

}  // namespace

int lowrance_plane_rows(const LowranceUnit& unit) { return full_measure(unit, unit.screen_width); }

LowranceScreenSize lowrance_screen_size(const LowranceUnit& unit) {
  LowranceScreenSize size{.width = shown_row_length(unit), .height = lowrance_plane_rows(unit)};
  if (unit.rotate_angle == 90 || unit.rotate_angle == 270) std::swap(size.width, size.height);
  return size;
}

int lowrance_screen_tone(int width, int height, int x, int y) {
  constexpr int kLineHeight = 8, kLetterWidth = 6;
  if (x == 0 || y == 0 || x == width - 1 || y == height - 1) return kBlack;
  const bool is_in_text = x >= 4 && x < width / 2 && y >= 4 && y < 4 + 2 * kLineHeight;
  if (is_in_text && (x - 4) % kLetterWidth < 4 && (y - 4) % kLineHeight < 5) return kBlack;
  const int bar_width = width - 8;
  if (y >= height - height / 8 && y < height - 4 && x >= 4 && x < 4 + bar_width)
    return kBlack - (x - 4) * 3 / bar_width;
  const int below_top = y - height * 3 / 10;
  const int east = x - width / 2;
  if (below_top >= 0 && y < height * 7 / 10 && 2 * std::abs(east) <= below_top) return east < 0 ? kBlack : kGrey;
  return kWhite;
}

LowrancePlanes lowrance_planes(const LowranceUnit& unit) {
  LowrancePlanes planes{.black = plane_of(unit, kBlack), .grey = {}};
  if (unit.screen_type > 0) planes.grey = plane_of(unit, kGrey);
  return planes;
}

}  // namespace simulators
