#include "picture/png.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <map>
#include <string>

namespace picture {
namespace {

using base::Bytes;

std::uint32_t u32_at(const Bytes& file, std::size_t at) {
  return static_cast<std::uint32_t>(file[at] << 24 | file[at + 1] << 16 | file[at + 2] << 8 | file[at + 3]);
}

// The data of each chunk by its type; `order` is that of the types. A checksum that is not right fails the test.
std::map<std::string, Bytes> chunks_of(const Bytes& file, std::string& order) {
  std::map<std::string, Bytes> chunks;
  EXPECT_EQ(Bytes(file.begin(), file.begin() + 8), (Bytes{137, 80, 78, 71, 13, 10, 26, 10}));
  std::size_t at = 8;
  while (at + 12 <= file.size()) {
    const std::size_t size = u32_at(file, at);
    if (at + 12 + size > file.size()) break;
    const auto type_at = file.begin() + static_cast<std::ptrdiff_t>(at + 4);
    const std::string type(type_at, type_at + 4);
    chunks[type] = Bytes(type_at + 4, type_at + 4 + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(u32_at(file, at + 8 + size), crc32(0, &file[at + 4], static_cast<uInt>(size + 4))) << type;
    order += type;
    at += 12 + size;
  }
  EXPECT_EQ(at, file.size());
  return chunks;
}

Bytes unpacked(const Bytes& data) {
  Bytes rows(100);
  uLongf size = 100;
  EXPECT_EQ(uncompress(rows.data(), &size, data.data(), static_cast<uLong>(data.size())), Z_OK);
  rows.resize(size);
  return rows;
}

TEST(PngFile, HoldsHeaderPaletteAndRowsInChunksWithGoodChecksums) {
  Bitmap bitmap(3, 2, Palette{0x102030, 0x405060});
  for (int i = 0; i < 6; ++i) bitmap.set_pixel(i % 3, i / 3, static_cast<std::uint8_t>(i + 1));
  std::string order;
  std::map<std::string, Bytes> chunks = chunks_of(png_file(bitmap), order);
  EXPECT_EQ(order, "IHDRPLTEIDATIEND");
  EXPECT_EQ(chunks["IHDR"], (Bytes{0, 0, 0, 3, 0, 0, 0, 2, 4, 3, 0, 0, 0}));
  Bytes palette{0x10, 0x20, 0x30, 0x40, 0x50, 0x60};
  palette.resize(48);
  EXPECT_EQ(chunks["PLTE"], palette);
  EXPECT_TRUE(chunks["IEND"].empty());
  EXPECT_EQ(unpacked(chunks["IDAT"]), (Bytes{0, 0x12, 0x30, 0, 0x45, 0x60}));
}

TEST(PngFile, HoldsTrueColourWithoutAPalette) {
  std::string order;
  std::map<std::string, Bytes> chunks =
      chunks_of(png_file(2, 2, Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 250, 251, 252}), order);
  EXPECT_EQ(order, "IHDRIDATIEND");
  EXPECT_EQ(chunks["IHDR"], (Bytes{0, 0, 0, 2, 0, 0, 0, 2, 8, 2, 0, 0, 0}));
  EXPECT_EQ(unpacked(chunks["IDAT"]), (Bytes{0, 1, 2, 3, 4, 5, 6, 0, 7, 8, 9, 250, 251, 252}));
}

}  // namespace
}  // namespace picture
