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

TEST(PngFile, HoldsHeaderPaletteAndRowsInChunksWithGoodChecksums) {
  Bitmap bitmap(3, 2, Palette{0x102030, 0x405060});
  for (int i = 0; i < 6; ++i) bitmap.set_pixel(i % 3, i / 3, static_cast<std::uint8_t>(i + 1));
  const Bytes file = png_file(bitmap);
  ASSERT_GT(file.size(), 8u);
  EXPECT_EQ(Bytes(file.begin(), file.begin() + 8), (Bytes{137, 80, 78, 71, 13, 10, 26, 10}));

  std::string order;
  std::map<std::string, Bytes> chunks;
  std::size_t at = 8;
  while (at < file.size()) {
    ASSERT_LE(at + 12, file.size());
    const std::size_t size = u32_at(file, at);
    ASSERT_LE(at + 12 + size, file.size());
    const auto type_at = file.begin() + static_cast<std::ptrdiff_t>(at + 4);
    const std::string type(type_at, type_at + 4);
    chunks[type] = Bytes(type_at + 4, type_at + 4 + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(u32_at(file, at + 8 + size), crc32(0, &file[at + 4], static_cast<uInt>(size + 4))) << type;
    order += type;
    at += 12 + size;
  }
  EXPECT_EQ(order, "IHDRPLTEIDATIEND");
  EXPECT_EQ(chunks["IHDR"], (Bytes{0, 0, 0, 3, 0, 0, 0, 2, 4, 3, 0, 0, 0}));
  Bytes palette{0x10, 0x20, 0x30, 0x40, 0x50, 0x60};
  palette.resize(48);
  EXPECT_EQ(chunks["PLTE"], palette);
  EXPECT_TRUE(chunks["IEND"].empty());
  Bytes rows(100);
  uLongf size = 100;
  ASSERT_EQ(uncompress(rows.data(), &size, chunks["IDAT"].data(), static_cast<uLong>(chunks["IDAT"].size())), Z_OK);
  rows.resize(size);
  EXPECT_EQ(rows, (Bytes{0, 0x12, 0x30, 0, 0x45, 0x60}));
}

}  // namespace
}  // namespace picture
