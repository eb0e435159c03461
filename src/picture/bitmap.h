// A picture of 16 colours, held in memory as the .bmp file that it is saved as, so that nothing is left to do to save
// it or to put it on a clipboard. Layout: the structures BITMAPFILEHEADER, BITMAPINFOHEADER and RGBQUAD of Windows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "base/byte_cursor.h"

namespace picture {

using Palette = std::array<std::uint32_t, 16>;  // 0xRRGGBB

// Receivers' screens in shades of grey: black, dark grey, light grey, white.
inline constexpr Palette kGreyPalette{0x000000, 0x636363, 0xB5B5B5, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF,
                                      0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF};

inline constexpr int kLongestSide = 4096;  // pixels

class Bitmap {
 public:
  // All pixels have colour 0. Both sides are 1 to kLongestSide pixels.
  Bitmap(int width, int height, const Palette& palette);

  // The contents of a .bmp file of 4 bits per pixel without compression; otherwise nothing, and the problem in words.
  [[nodiscard]] static std::optional<Bitmap> read(std::span<const std::uint8_t> file, std::string& problem);

  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }
  [[nodiscard]] Palette palette() const;
  // The index in the palette; x from the left, y from the top.
  [[nodiscard]] std::uint8_t pixel(int x, int y) const;
  void set_pixel(int x, int y, std::uint8_t colour);
  // A row from the top, two pixels a byte, the left one in the high nibble.
  [[nodiscard]] std::span<const std::uint8_t> row(int y) const;

  // Turns the picture by 90 degrees. Without the memory for it std::bad_alloc is thrown, and nothing has changed.
  void rotate_clockwise();
  void rotate_left();

  // The .bmp file: 14 bytes of file header, 40 of info header, 64 of palette, then the rows from the bottom, each
  // padded to a multiple of 4 bytes.
  [[nodiscard]] std::span<const std::uint8_t> bytes() const { return file_; }

 private:
  [[nodiscard]] std::size_t row_at(int y) const;

  int width_;
  int height_;
  base::Bytes file_;
};

}  // namespace picture
