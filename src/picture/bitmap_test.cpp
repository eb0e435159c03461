#include "picture/bitmap.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace picture {
namespace {

using base::Bytes;

const Palette kColours{0x102030, 0x405060};

// Three by two pixels: 1 2 3 above 4 5 6.
Bitmap three_by_two() {
  Bitmap bitmap(3, 2, kColours);
  for (int i = 0; i < 6; ++i) bitmap.set_pixel(i % 3, i / 3, static_cast<std::uint8_t>(i + 1));
  return bitmap;
}

// The same as a file, written down by hand.
Bytes three_by_two_file() {
  Bytes file{'B',  'M',  126,  0, 0,    0,    0,    0, 0, 0, 118, 0, 0,  0,                     //
             40,   0,    0,    0, 3,    0,    0,    0, 2, 0, 0,   0, 1,  0, 4, 0, 0,  0, 0, 0,  //
             8,    0,    0,    0, 0,    0,    0,    0, 0, 0, 0,   0, 16, 0, 0, 0, 16, 0, 0, 0,  //
             0x30, 0x20, 0x10, 0, 0x60, 0x50, 0x40, 0};
  file.resize(118);
  file.insert(file.end(), {0x45, 0x60, 0, 0, 0x12, 0x30, 0, 0});
  return file;
}

Bytes bytes_of(const Bitmap& bitmap) { return {bitmap.bytes().begin(), bitmap.bytes().end()}; }

std::string pixels_of(const Bitmap& bitmap) {
  std::string text;
  for (int y = 0; y < bitmap.height(); ++y) {
    for (int x = 0; x < bitmap.width(); ++x) text += static_cast<char>('0' + bitmap.pixel(x, y));
    text += '/';
  }
  return text;
}

TEST(Bitmap, IsABmpFileInMemory) { EXPECT_EQ(bytes_of(three_by_two()), three_by_two_file()); }

TEST(Bitmap, SizesCountThePaddingOfRows) {
  for (const auto& [width, stride] : {std::pair{1, 4}, {8, 4}, {9, 8}, {64, 32}, {66, 36}, {160, 80}})
    EXPECT_EQ(Bitmap(width, 3, kGreyPalette).bytes().size(), static_cast<std::size_t>(118 + 3 * stride)) << width;
}

TEST(Bitmap, TurnsClockwiseAndPadsWithOnes) {
  Bitmap bitmap = three_by_two();
  bitmap.rotate_clockwise();
  EXPECT_EQ(pixels_of(bitmap), "41/52/63/");
  const Bytes file = bytes_of(bitmap);
  EXPECT_EQ(Bytes(file.begin() + 2, file.begin() + 6), (Bytes{130, 0, 0, 0}));
  EXPECT_EQ(Bytes(file.begin() + 18, file.begin() + 26), (Bytes{2, 0, 0, 0, 3, 0, 0, 0}));
  EXPECT_EQ(Bytes(file.begin() + 118, file.end()),
            (Bytes{0x63, 255, 255, 255, 0x52, 255, 255, 255, 0x41, 255, 255, 255}));
  EXPECT_EQ(bitmap.palette(), kColours);
}

TEST(Bitmap, TurnsLeftByThreeQuarters) {
  Bitmap bitmap = three_by_two();
  bitmap.rotate_left();
  EXPECT_EQ(pixels_of(bitmap), "36/25/14/");
}

TEST(Bitmap, IsItselfAfterFourQuarters) {
  Bitmap bitmap = three_by_two();
  for (int i = 0; i < 4; ++i) bitmap.rotate_clockwise();
  EXPECT_EQ(pixels_of(bitmap), "123/456/");
  EXPECT_EQ(bitmap.bytes().size(), three_by_two_file().size());
}

TEST(ReadBitmap, GivesBackWhatWasSavedToTheByte) {
  Bytes file = three_by_two_file();
  file[121] = 0xFF;  // padding
  std::string problem;
  const std::optional<Bitmap> bitmap = Bitmap::read(file, problem);
  ASSERT_TRUE(bitmap) << problem;
  EXPECT_EQ(pixels_of(*bitmap), "123/456/");
  EXPECT_EQ(bytes_of(*bitmap), file);
}

TEST(ReadBitmap, TakesLongerHeadersAndShorterPalettesOfOtherPrograms) {
  Bytes file = three_by_two_file();
  file[10] = 70 + 4;  // pixels follow two colours and 12 bytes more of header
  file[14] = 52;
  file[46] = 2;
  file.erase(file.begin() + 62, file.begin() + 118);
  file.insert(file.begin() + 54, 12, 0xEE);
  std::string problem;
  const std::optional<Bitmap> bitmap = Bitmap::read(file, problem);
  ASSERT_TRUE(bitmap) << problem;
  EXPECT_EQ(pixels_of(*bitmap), "123/456/");
  EXPECT_EQ(bitmap->palette(), kColours);
}

TEST(ReadBitmap, RefusesWhatIsNoSuchPictureAndSaysWhy) {
  struct Case {
    std::size_t at;
    Bytes bytes;
    std::string_view problem;
  };
  for (const Case& wrong : {Case{0, {'M', 'Z'}, "it is not a .bmp file"},
                            {14, {12, 0, 0, 0}, "its header is of another kind"},
                            {28, {8, 0}, "it has 8 bits per pixel, and only pictures of 4 bits (16 colours) are read"},
                            {30, {2}, "it is compressed"},
                            {18, {0, 0, 0, 0}, "it is 0 by 2 pixels, and both must be 1 to 4096"},
                            {18, {1, 16, 0, 0}, "it is 4097 by 2 pixels, and both must be 1 to 4096"},
                            {22, {0, 0, 0, 0x80}, "it is 3 by -2147483648 pixels, and both must be 1 to 4096"},
                            {46, {17, 0, 0, 0}, "its palette has 17 colours"},
                            {46, {0xFF, 0xFF, 0xFF, 0xFF}, "its palette has 4294967295 colours"},
                            {14, {0xFF, 0xFF, 0xFF, 0xFF}, "it ends before its last pixel"},
                            {10, {117, 0, 0, 0}, "it ends before its last pixel"},
                            {10, {119, 0, 0, 0}, "it ends before its last pixel"},
                            {10, {0xFF, 0xFF, 0xFF, 0xFF}, "it ends before its last pixel"},
                            {18, {0, 16, 0, 0}, "it ends before its last pixel"}}) {
    Bytes file = three_by_two_file();
    std::ranges::copy(wrong.bytes, file.begin() + static_cast<std::ptrdiff_t>(wrong.at));
    std::string problem;
    EXPECT_FALSE(Bitmap::read(file, problem));
    EXPECT_EQ(problem, wrong.problem);
  }
}

TEST(ReadBitmap, RefusesEveryFileThatEndsEarly) {
  const Bytes file = three_by_two_file();
  std::string problem;
  for (std::size_t size = 0; size < file.size(); ++size)
    EXPECT_FALSE(Bitmap::read(std::span(file).first(size), problem)) << size;
}

}  // namespace
}  // namespace picture
