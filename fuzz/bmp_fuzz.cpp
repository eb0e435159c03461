#include <cstdlib>

#include "picture/png.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string problem;
  std::optional<picture::Bitmap> bitmap = picture::Bitmap::read(std::span(data, size), problem);
  if (bitmap.has_value() != problem.empty()) std::abort();
  if (!bitmap) return 0;
  bitmap->rotate_left();
  const picture::Bitmap turned = *bitmap;
  bitmap->rotate_clockwise();
  for (int y = 0; y < bitmap->height(); ++y)
    for (int x = 0; x < bitmap->width(); ++x)
      if (bitmap->pixel(x, y) != turned.pixel(y, bitmap->width() - 1 - x)) std::abort();
  if (picture::png_file(*bitmap).size() < 8 || !picture::Bitmap::read(bitmap->bytes(), problem)) std::abort();
  return 0;
}
