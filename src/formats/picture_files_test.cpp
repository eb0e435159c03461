#include "formats/picture_files.h"

#include "tests/support/format_fixture.h"

namespace formats {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class PictureFiles : public support::FormatTest {
 protected:
  PictureFiles() { context.picture = &screen; }
  std::optional<picture::Bitmap> screen;
};

TEST_F(PictureFiles, ComeBackAsTheyWereSaved) {
  screen.emplace(2, 1, picture::kGreyPalette);
  screen->set_pixel(1, 0, 2);
  const std::string file = write_with(write_bmp);
  EXPECT_THAT(file, StartsWith("BM"));
  EXPECT_EQ(file.substr(118), std::string("\x02\0\0\0", 4));
  screen.reset();
  EXPECT_EQ(read_with(read_bmp, file), 1);
  EXPECT_EQ(write_with(write_bmp), file);
  EXPECT_THAT(write_with(write_png), StartsWith("\x89PNG"));
}

TEST_F(PictureFiles, ThatAreNoneLeaveTheOldPicture) {
  screen.emplace(2, 1, picture::kGreyPalette);
  EXPECT_EQ(read_with(read_bmp, "BM, but no picture"), -1);
  EXPECT_TRUE(screen);
  EXPECT_EQ(front_end.boxes.back(),
            (std::pair<std::string, std::string>("FileReadError", "Error reading file a file")));
  EXPECT_THAT(front_end.lines[3], HasSubstr("it is not a .bmp file"));
}

TEST_F(PictureFiles, AreNotWrittenWithoutAPicture) {
  for (const Writer writer : {write_bmp, write_png}) {
    std::string text;
    base::TextOutput out([&text](std::string_view block) { text += block; });
    EXPECT_FALSE(writer(context, options, out));
    out.flush();
    EXPECT_EQ(text, "");
  }
  EXPECT_EQ(front_end.times_written(1, "Save aborted -- No picture of a receiver's screen to save!"), 2);
}

}  // namespace
}  // namespace formats
