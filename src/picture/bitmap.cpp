#include "picture/bitmap.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace picture {
namespace {

constexpr std::uint16_t kType = 19778;  // "BM"
constexpr std::size_t kFileHeaderSize = 14;
constexpr std::uint32_t kInfoHeaderSize = 40;
constexpr std::uint32_t kColours = 16;
constexpr std::uint16_t kBitsPerPixel = 4;
constexpr std::size_t kPaletteAt = kFileHeaderSize + kInfoHeaderSize;
constexpr std::size_t kPixelsAt = kPaletteAt + kColours * 4;
constexpr std::uint8_t kRotatedPadding = 0xFF;

constexpr std::size_t row_size(int width) { return (static_cast<std::size_t>(width) + 1) / 2; }
constexpr std::size_t stride(int width) { return (row_size(width) + 3) / 4 * 4; }

constexpr bool is_side(std::int32_t length) { return length >= 1 && length <= kLongestSide; }

base::Bytes blank_file(int width, int height, const Palette& palette) {
  const auto image_size = static_cast<std::uint32_t>(stride(width) * static_cast<std::size_t>(height));
  base::ByteWriter out;
  out.u16(kType).u32(kPixelsAt + image_size).u16(0).u16(0).u32(kPixelsAt);
  out.u32(kInfoHeaderSize).i32(width).i32(height).u16(1).u16(kBitsPerPixel).u32(0).u32(image_size);
  out.i32(0).i32(0).u32(kColours).u32(kColours);
  for (const std::uint32_t colour : palette) out.u32(colour & 0xFFFFFF);
  base::Bytes file = out.result();
  file.resize(kPixelsAt + image_size);
  return file;
}

}  // namespace

Bitmap::Bitmap(int width, int height, const Palette& palette)
    : width_(width), height_(height), file_(blank_file(width, height, palette)) {}

std::optional<Bitmap> Bitmap::read(std::span<const std::uint8_t> file, std::string& problem) {
  const auto refuse = [&problem](const std::string& why) {
    problem = why;
    return std::nullopt;
  };
  base::ByteReader in(file);
  const std::uint16_t type = in.u16();
  in.skip(8);  // sizes that a file tells of itself are not needed, and often wrong
  const std::uint32_t pixels_at = in.u32();
  const std::uint32_t info_size = in.u32();
  const std::int32_t width = in.i32(), height = in.i32();
  in.skip(2);
  const std::uint16_t bits_per_pixel = in.u16();
  const std::uint32_t compression = in.u32();
  in.skip(12);
  const std::uint32_t colours_used = in.u32();
  in.skip(4);
  if (!in.ok() || type != kType) return refuse("it is not a .bmp file");
  if (info_size < kInfoHeaderSize) return refuse("its header is of another kind");
  if (bits_per_pixel != kBitsPerPixel)
    return refuse(base::format_text("it has %d bits per pixel, and only pictures of 4 bits (16 colours) are read",
                                    bits_per_pixel));
  if (compression != 0) return refuse("it is compressed");
  if (!is_side(width) || !is_side(height))
    return refuse(base::format_text("it is %d by %d pixels, and both must be 1 to %d", width, height, kLongestSide));
  if (colours_used > kColours) return refuse(base::format_text("its palette has %u colours", colours_used));

  in.skip(info_size - kInfoHeaderSize);
  Palette palette{};
  const std::uint32_t colours = colours_used == 0 ? kColours : colours_used;
  for (std::uint32_t i = 0; i < colours; ++i) palette[i] = in.u32();
  const std::size_t image_size = stride(width) * static_cast<std::size_t>(height);
  if (!in.ok() || pixels_at < file.size() - in.remaining() || pixels_at > file.size() ||
      file.size() - pixels_at < image_size)
    return refuse("it ends before its last pixel");
  Bitmap bitmap(width, height, palette);
  std::ranges::copy(file.subspan(pixels_at, image_size), bitmap.file_.begin() + kPixelsAt);
  return bitmap;
}

Palette Bitmap::palette() const {
  base::ByteReader in(bytes().subspan(kPaletteAt));
  Palette palette;
  for (std::uint32_t& colour : palette) colour = in.u32();
  return palette;
}

std::size_t Bitmap::row_at(int y) const {
  return kPixelsAt + stride(width_) * static_cast<std::size_t>(height_ - 1 - y);
}

std::span<const std::uint8_t> Bitmap::row(int y) const { return bytes().subspan(row_at(y), row_size(width_)); }

std::uint8_t Bitmap::pixel(int x, int y) const {
  const std::uint8_t pair = file_[row_at(y) + static_cast<std::size_t>(x / 2)];
  return x % 2 == 0 ? pair >> 4 : pair & 0xF;
}

void Bitmap::set_pixel(int x, int y, std::uint8_t colour) {
  std::uint8_t& pair = file_[row_at(y) + static_cast<std::size_t>(x / 2)];
  const int in_place = x % 2 == 0 ? (pair & 0xF) | (colour & 0xF) << 4 : (pair & 0xF0) | (colour & 0xF);
  pair = static_cast<std::uint8_t>(in_place);
}

void Bitmap::rotate_clockwise() {
  Bitmap turned(height_, width_, palette());
  for (int y = 0; y < turned.height_; ++y) {
    for (int x = 0; x < turned.width_; ++x) turned.set_pixel(x, y, pixel(y, height_ - 1 - x));
    const auto row_begin = turned.file_.begin() + static_cast<std::ptrdiff_t>(turned.row_at(y));
    std::fill(row_begin + static_cast<std::ptrdiff_t>(row_size(turned.width_)),
              row_begin + static_cast<std::ptrdiff_t>(stride(turned.width_)), kRotatedPadding);
  }
  *this = std::move(turned);
}

void Bitmap::rotate_left() {
  Bitmap turned = *this;
  for (int quarter = 0; quarter < 3; ++quarter) turned.rotate_clockwise();
  *this = std::move(turned);
}

}  // namespace picture
