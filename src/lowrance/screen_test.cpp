#include "lowrance/screen.h"

#include "base/text.h"
#include "tests/support/lowrance_conversation.h"

namespace lowrance {
namespace {

class ScreenDownload : public support::LowranceConversation {
 protected:
  // Rows of 6 pixels, of which the unit shows 4; a black plane of 200 bytes at 0x80000, a grey one of 1 at 0x80100.
  ScreenDownload() {
    memory_at = 0x80000;
    memory = hex("87 01");
    memory.resize(0x200);
    memory[0x100] = 0xC0;
    set_screen(6, 200, 3);
    answer = [this](const Request& request) { return request.code == 0x0301 ? parameters : Bytes{0}; };
  }
  // The height is that of a row, less 1.
  void set_screen(int row_length, int black_size, int height) {
    set_info(kScreenHeightAt, height);
    parameters = hex(base::format_text("00 %02X%02X 5555 00000800 %02X%02X 00010800 0100", row_length & 0xFF,
                                       row_length >> 8 & 0xFF, black_size & 0xFF, black_size >> 8));
  }
  std::optional<picture::Bitmap> download() {
    begin();
    return LowranceScreen(connection()).download();
  }

  Bytes parameters;
};

TEST_F(ScreenDownload, BothPlanesMakeThePictureAndTheUnitGoesOn) {
  const auto picture = download();
  ASSERT_TRUE(picture);
  EXPECT_EQ(sent(), hex("0301  0008 00000800 A000 00  0008 A0000800 2800 00  0008 00010800 0100 00  0302"));
  EXPECT_EQ(front_end.line_writes, (std::vector<std::pair<int, std::string>>{{4, "00160 Bytes of black plane Read"},
                                                                             {4, "00200 Bytes of black plane Read"},
                                                                             {4, "00001 Bytes of grey plane Read"}}));
  ASSERT_EQ(picture->width(), 4);
  ASSERT_EQ(picture->height(), 266);  // and 4 bits, which are no row
  std::string rows;
  for (int y = 0; y < 4; ++y, rows += ' ')
    for (int x = 0; x < 4; ++x) rows += std::to_string(picture->pixel(x, y));
  // 1000 01|11 0000|0001 00|00 0000, and 11|00 0000 where there is no black
  EXPECT_EQ(rows, "0233 0033 3330 3333 ");

  set_screen(6, 200, 400);
  unit_info[kScreenTypeAt] = 0;  // no grey plane
  const auto wide = download();
  ASSERT_TRUE(wide);
  EXPECT_EQ(wide->width(), 6);
  EXPECT_EQ(requests_of(kReadMemory).size(), 2U);
}

TEST_F(ScreenDownload, MeasuresThatNoPictureHasAreRefusedBeforeAnythingIsRead) {
  struct Row {
    int row_length, black_size, height;
    std::string problem;
  };
  for (const Row& row : {Row{0, 1, 7, "0 pixels are no length for a row"},
                         {-8, 1, 7, "-8 pixels are no length for a row"},
                         {16, 1, 7, "0 rows of 8 pixels are no size for it"},
                         {8, 1, -1, "1 rows of 0 pixels are no size for it"},
                         {1, 513, 0, "4104 rows of 1 pixels are no size for it"},
                         {4100, 1000, 4099, "1 rows of 4100 pixels are no size for it"}}) {
    set_screen(row.row_length, row.black_size, row.height);
    EXPECT_FALSE(download());
    EXPECT_EQ(front_end.lines[1], "The unit's screen cannot be drawn: " + row.problem + "; the old picture stays.");
    EXPECT_EQ(sent(), hex("0301 0302"));
  }
}

}  // namespace
}  // namespace lowrance
