// Pictures as .png files. Layout: ISO/IEC 15948, "Portable Network Graphics (PNG)"; the compression is zlib's.
#pragma once

#include "base/byte_cursor.h"
#include "picture/bitmap.h"

namespace picture {

// The whole file, of 4 bits per pixel with the picture's palette.
[[nodiscard]] base::Bytes png_file(const Bitmap& bitmap);

}  // namespace picture
