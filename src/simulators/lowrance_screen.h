// The screen of a simulated Lowrance/Eagle unit: the picture as its user sees it, and the planes in its memory.
#pragma once

#include <cstdint>

#include "base/byte_cursor.h"
#include "simulators/lowrance_options.h"

namespace simulators {

// The upright picture, pixels.
struct LowranceScreenSize {
  int width = 0, height = 0;
  friend bool operator==(const LowranceScreenSize&, const LowranceScreenSize&) = default;
};
[[nodiscard]] LowranceScreenSize lowrance_screen_size(const LowranceUnit& unit);

// How dark the upright picture is at a pixel, counted from the top left corner: 0 white, 1 grey (white on units without
// a grey plane), 2 black. It shows a frame, two lines as of text in the top left corner, an arrow up whose right half
// is grey, and a bar of black, grey and white below: turned or mirrored it looks different.
[[nodiscard]] int lowrance_screen_tone(int width, int height, int x, int y);

// One bit a pixel, the leftmost in the highest bit, the top row first. They hold the picture as the unit's rotation
// angle says: turned clockwise once for 90 degrees, upside down for 180, turned left once for 270. What is black is set
// in both; what stands behind the part of a row that is shown is set, though it means nothing.
struct LowrancePlanes {
  base::Bytes black;
  base::Bytes grey;  // empty for units without it
};
[[nodiscard]] LowrancePlanes lowrance_planes(const LowranceUnit& unit);

// Rows of a plane.
[[nodiscard]] int lowrance_plane_rows(const LowranceUnit& unit);

}  // namespace simulators
