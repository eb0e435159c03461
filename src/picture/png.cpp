#include "picture/png.h"

#include <zlib.h>

#include <array>
#include <new>
#include <string_view>

namespace picture {
namespace {

constexpr std::array<std::uint8_t, 8> kSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr std::uint8_t kBitDepth = 4, kColoursFromPalette = 3;
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

base::Bytes header(const Bitmap& bitmap) {
  base::Bytes data;
  append_u32(data, static_cast<std::size_t>(bitmap.width()));
  append_u32(data, static_cast<std::size_t>(bitmap.height()));
  data.insert(data.end(), {kBitDepth, kColoursFromPalette, 0, 0, 0});  // the only compression and filter, no interlace
  return data;
}

base::Bytes colours(const Bitmap& bitmap) {
  base::Bytes data;
  for (const std::uint32_t colour : bitmap.palette())
    for (const int shift : {16, 8, 0}) data.push_back(static_cast<std::uint8_t>(colour >> shift));
  return data;
}

base::Bytes compressed_rows(const Bitmap& bitmap) {
  base::Bytes rows;
  for (int y = 0; y < bitmap.height(); ++y) {
    rows.push_back(kNoFilter);
    append(rows, bitmap.row(y));
  }
  uLongf size = compressBound(static_cast<uLong>(rows.size()));
  base::Bytes compressed(size);
  // There is room enough, so memory is all that can be missing.
  if (compress2(compressed.data(), &size, rows.data(), static_cast<uLong>(rows.size()), Z_BEST_COMPRESSION) != Z_OK)
    throw std::bad_alloc();
  compressed.resize(size);
  return compressed;
}

}  // namespace

base::Bytes png_file(const Bitmap& bitmap) {
  base::Bytes file(kSignature.begin(), kSignature.end());
  append_chunk(file, "IHDR", header(bitmap));
  append_chunk(file, "PLTE", colours(bitmap));
  append_chunk(file, "IDAT", compressed_rows(bitmap));
  append_chunk(file, "IEND", {});
  return file;
}

}  // namespace picture
