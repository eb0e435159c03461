// Pictures as .png files. Layout: ISO/IEC 15948, "Portable Network Graphics (PNG)"; the compression is zlib's.
#pragma once

#include <cstdint>
#include <span>

#include "base/byte_cursor.h"
#include "picture/bitmap.h"

namespace picture {

// The whole file, of 4 bits per pixel with the picture's palette.
[[nodiscard]] base::Bytes png_file(const Bitmap& bitmap);

// The whole file of a picture in true colour: `rgb` are its rows from the top, red, green and blue a byte each. The
// sides are at least 1.
[[nodiscard]] base::Bytes png_file(int width, int height, std::span<const std::uint8_t> rgb);

}  // namespace picture
