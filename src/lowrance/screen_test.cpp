#include "lowrance/screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/lowrance_conversation.h"

namespace lowrance {
namespace {

using base::Bytes;
using testing::ElementsAre;
using testing::HasSubstr;

using Rows = std::vector<std::vector<int>>;

Rows rows_of(const picture::Bitmap& picture) {
  Rows rows;
  for (int y = 0; y < picture.height(); ++y) {
    rows.emplace_back();
    for (int x = 0; x < picture.width(); ++x) rows.back().push_back(picture.pixel(x, y));
  }
  return rows;
}

// Of planes whose rows are `row_length` pixels, `shown` of which the unit shows.
std::optional<Rows> merged(int row_length, int shown, const Bytes& black, const Bytes& grey = {},
                           std::uint8_t angle = 0) {
  ScreenParameters parameters;
  parameters.row_length = row_length;
  parameters.black_size = static_cast<int>(black.size());
  LowrUnitInfo unit;
  unit.ScreenType = 2;
  unit.ScreenHeight = static_cast<std::int16_t>(shown);
  unit.ScreenRotateAngle = angle;
  std::string problem;
  const auto picture = merge_planes(parameters, unit, black, grey, problem);
  EXPECT_EQ(picture.has_value(), problem.empty());
  if (!picture) return std::nullopt;
  return rows_of(*picture);
}

TEST(MergePlanes, TheMostSignificantBitIsTheLeftPixelAndBlackWinsOverGrey) {
  EXPECT_EQ(merged(8, 8, {0x80}), (Rows{{0, 3, 3, 3, 3, 3, 3, 3}}));
  EXPECT_EQ(merged(8, 8, {0x81}, {0xC0}), (Rows{{0, 2, 3, 3, 3, 3, 3, 0}}));
  // A grey plane that is too short has no grey where it ends.
  EXPECT_EQ(merged(4, 4, {0x00}, {}), (Rows{{3, 3, 3, 3}, {3, 3, 3, 3}}));
  EXPECT_EQ(merged(8, 4, {0x00, 0x00}, {0xF0}), (Rows{{2, 2, 2, 2}, {3, 3, 3, 3}}));
}

TEST(MergePlanes, RowsAreCutFromThePlaneAtTheirLengthAndShownAsFarAsTheUnitShowsThem) {
  // 1000 01|11 0000|0001 00|00 0000
  EXPECT_EQ(merged(6, 4, {0x87, 0x01, 0x00}), (Rows{{0, 3, 3, 3}, {0, 0, 3, 3}, {3, 3, 3, 0}, {3, 3, 3, 3}}));
  EXPECT_EQ(merged(3, 400, {0x93}), (Rows{{0, 3, 3}, {0, 3, 3}}));  // 100|100|11, which is no row
}

TEST(MergePlanes, TheHeightOfOldUnitsIsStoredLessOne) {
  const ScreenParameters parameters{8, 0, 1, 0, 0};
  LowrUnitInfo unit;
  unit.ScreenType = 1;
  unit.ScreenHeight = 4;
  std::string problem;
  const auto picture = merge_planes(parameters, unit, Bytes{0}, {}, problem);
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width(), 5);
}

TEST(MergePlanes, ARotatedScreenComesUpright) {
  // An L that leans: its long stroke lies along the first row, its foot goes down on the left.
  const Bytes black{0xF8};
  EXPECT_EQ(merged(4, 4, black), (Rows{{0, 0, 0, 0}, {0, 3, 3, 3}}));
  EXPECT_EQ(merged(4, 4, black, {}, 90), (Rows{{0, 3}, {0, 3}, {0, 3}, {0, 0}}));
  EXPECT_EQ(merged(4, 4, black, {}, 180), (Rows{{3, 3, 3, 0}, {0, 0, 0, 0}}));
  EXPECT_EQ(merged(4, 4, black, {}, 14), (Rows{{0, 0}, {3, 0}, {3, 0}, {3, 0}}));  // 270 in a byte
}

TEST(MergePlanes, MeasuresThatNoPictureHasAreRefused) {
  EXPECT_FALSE(merged(0, 8, {0x80}));
  EXPECT_FALSE(merged(-8, 8, {0x80}));
  EXPECT_FALSE(merged(16, 8, {0x80}));               // not one whole row
  EXPECT_FALSE(merged(8, 0, {0x80}));                // nothing of it shown
  EXPECT_FALSE(merged(1, 1, Bytes(513)));            // 4104 rows
  EXPECT_FALSE(merged(4100, 4100, Bytes(1000)));     // one row of 4100
  EXPECT_TRUE(merged(32767, 4096, Bytes(4096, 1)));  // one row of 4096
}

class ScreenDownload : public support::LowranceConversation {
 protected:
  ScreenDownload() {
    unit_info[kScreenHeightAt] = 7;  // less one
    memory_at = 0x80000;
    memory = Bytes(0x200);
    memory[0] = 0x80;      // black
    memory[0x100] = 0xC0;  // grey
    answer = [this](const Request& request) {
      return request.code == kParameters ? Answer(parameters) : Answer(Bytes{0});
    };
  }
  std::optional<picture::Bitmap> download() { return LowranceScreen(connection()).download(); }
  // Whatever happened, the last that the unit hears is that it may go on.
  void expect_no_picture(const std::string& line_1) {
    EXPECT_FALSE(download());
    EXPECT_THAT(front_end.lines[1], HasSubstr(line_1));
    ASSERT_FALSE(requests.empty());
    EXPECT_EQ(requests.back().code, kUnfreeze);
    EXPECT_FALSE(flags.PortOpen);
    EXPECT_FALSE(flags.UserAbort);
  }

  static constexpr int kParameters = 0x0301, kUnfreeze = 0x0302;
  // Rows of 8 pixels; 200 bytes at 0x80000, 8 bytes at 0x80100.
  Bytes parameters{0, 8, 0, 0x55, 0x55, 0x00, 0x00, 0x08, 0x00, 200, 0, 0x00, 0x01, 0x08, 0x00, 8, 0};
};

TEST_F(ScreenDownload, BothPlanesMakeThePictureAndTheUnitGoesOn) {
  const auto picture = download();
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width(), 8);
  EXPECT_EQ(picture->height(), 200);
  EXPECT_THAT(rows_of(*picture)[0], ElementsAre(0, 2, 3, 3, 3, 3, 3, 3));
  EXPECT_EQ(requests, (std::vector<Request>{{kParameters, {}},
                                            {kReadMemory, {0x00, 0x00, 0x08, 0x00, 160, 0, 0}},
                                            {kReadMemory, {0xA0, 0x00, 0x08, 0x00, 40, 0, 0}},
                                            {kReadMemory, {0x00, 0x01, 0x08, 0x00, 8, 0, 0}},
                                            {kUnfreeze, {}}}));
  EXPECT_EQ(front_end.times_written(4, "00160 Bytes of black plane Read"), 1);
  EXPECT_EQ(front_end.times_written(4, "00200 Bytes of black plane Read"), 1);
  EXPECT_EQ(front_end.lines[4], "00008 Bytes of grey plane Read");
}

TEST_F(ScreenDownload, WithoutAGreyPlaneNoneIsRead) {
  unit_info[kScreenTypeAt] = 0;
  ASSERT_TRUE(download());
  EXPECT_EQ(requests_of(kReadMemory).size(), 2u);
}

TEST_F(ScreenDownload, APlaneThatDoesNotComeWholeMakesNoPicture) {
  is_lost = [](const Request& request) { return request.code == kReadMemory && request.data[4] == 8; };
  expect_no_picture("The grey plane of the screen did not come whole; the old picture stays.");
}

TEST_F(ScreenDownload, EscWhileAPlaneIsReadLetsTheUnitGoOn) {
  front_end.esc = [this] { return requests_of(kReadMemory).size() == 1; };
  expect_no_picture("The black plane of the screen did not come whole");
  EXPECT_EQ(requests_of(kReadMemory).size(), 1u);
  EXPECT_EQ(front_end.times_written(4, "Operator Abort in Memory read for black plane"), 1);
}

TEST_F(ScreenDownload, AUnitWhoseAnswerGotLostMayBeFrozen) {
  is_lost = [](const Request& request) { return request.code == kParameters; };
  expect_no_picture("The unit does not tell where its screen is");
}

TEST_F(ScreenDownload, MeasuresThatMakeNoSenseAreRefusedBeforeAnythingIsRead) {
  parameters[1] = 0;
  expect_no_picture("The unit's screen cannot be drawn: 0 pixels are no length for a row; the old picture stays.");
  EXPECT_TRUE(requests_of(kReadMemory).empty());
}

}  // namespace
}  // namespace lowrance
