#include "picture/png.h"

#include <zlib.h>

#include <array>
#include <new>
#include <string_view>

namespace picture {
namespace {

constexpr std::array<std::uint8_t, 8> kSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
// Bits of a sample and what a sample is, as the header has them.
struct PixelFormat {
  std::uint8_t bits, colours;
};
constexpr PixelFormat kFromPalette{4, 3}, kTrueColour{8, 2};
constexpr std::uint8_t kNoFilter = 0;

void append(base::Bytes& to, std::span<const std::uint8_t> bytes) { to.insert(to.end(), bytes.begin(), bytes.end()); }

// Big-endian, as all numbers are in this format.
void append_u32(base::Bytes& to, std::size_t value) {
  for (const int shift : {24, 16, 8, 0}) to.push_back(static_cast<std::uint8_t>(value >> shift));
}

// A chunk: size of the data, type, data, checksum of type and data.
void append_chunk(base::Bytes& file, std::string_view type, std::span<const std::uint8_t> data) {
  append_u32(file, data.size());
  const std::size_t begin = file.size();
  file.insert(file.end(), type.begin(), type.end());
  append(file, data);
  append_u32(file, crc32_z(0, file.data() + begin, file.size() - begin));
}

base::Bytes header(int width, int height, const PixelFormat& format) {
  base::Bytes data;
  append_u32(data, static_cast<std::size_t>(width));
  append_u32(data, static_cast<std::size_t>(height));
  data.insert(data.end(), {format.bits, format.colours, 0, 0, 0});  // the only compression and filter, no interlace
  return data;
}

base::Bytes colours(const Bitmap& bitmap) {
  base::Bytes data;
  for (const std::uint32_t colour : bitmap.palette())
    for (const int shift : {16, 8, 0}) data.push_back(static_cast<std::uint8_t>(colour >> shift));
  return data;
}

void append_row(base::Bytes& rows, std::span<const std::uint8_t> row) {
  rows.push_back(kNoFilter);
  append(rows, row);
}

base::Bytes compressed(const base::Bytes& rows) {
  uLongf size = compressBound(static_cast<uLong>(rows.size()));
  base::Bytes data(size);
  // There is room enough, so memory is all that can be missing.
  if (compress2(data.data(), &size, rows.data(), static_cast<uLong>(rows.size()), Z_BEST_COMPRESSION) != Z_OK)
    throw std::bad_alloc();
  data.resize(size);
  return data;
}

// `palette` is empty in true colour.
base::Bytes file_of(const base::Bytes& header, const base::Bytes& palette, const base::Bytes& rows) {
  base::Bytes file(kSignature.begin(), kSignature.end());
  append_chunk(file, "IHDR", header);
  if (!palette.empty()) append_chunk(file, "PLTE", palette);
  append_chunk(file, "IDAT", compressed(rows));
  append_chunk(file, "IEND", {});
  return file;
}

}  // namespace

base::Bytes png_file(const Bitmap& bitmap) {
  base::Bytes rows;
  for (int y = 0; y < bitmap.height(); ++y) append_row(rows, bitmap.row(y));
  return file_of(header(bitmap.width(), bitmap.height(), kFromPalette), colours(bitmap), rows);
}

base::Bytes png_file(int width, int height, std::span<const std::uint8_t> rgb) {
  const std::size_t row_size = 3 * static_cast<std::size_t>(width);
  base::Bytes rows;
  rows.reserve((1 + row_size) * static_cast<std::size_t>(height));
  for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y)
    append_row(rows, rgb.subspan(y * row_size, row_size));
  return file_of(header(width, height, kTrueColour), {}, rows);
}

}  // namespace picture
