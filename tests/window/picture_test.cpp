#include <wx/clipbrd.h>
#include <wx/menu.h>
#include <wx/testing.h>

#include "tests/window/window_fixture.h"
#include "ui/ports.h"
#include "ui/wx/picture_frame.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

using support::run_events;
using namespace std::chrono_literals;

constexpr int kShow = 40184;

TEST(PicturePlace, IsTheMiddleAsItIsOrAsLargeAsItFits) {
  const wxSize picture(100, 50);
  EXPECT_EQ(picture_place(picture, {300, 250}, false), wxRect(100, 100, 100, 50));
  EXPECT_EQ(picture_place(picture, {300, 250}, true), wxRect(0, 50, 300, 150));
  EXPECT_EQ(picture_place(picture, {400, 100}, true), wxRect(100, 0, 200, 100));
  // Larger than the window: from its corner, to be scrolled; or made smaller.
  EXPECT_EQ(picture_place(picture, {60, 20}, false), wxRect(0, 0, 100, 50));
  EXPECT_EQ(picture_place(picture, {50, 50}, true), wxRect(0, 12, 50, 25));
  EXPECT_EQ(picture_place(picture, {0, 0}, true).GetSize(), wxSize(1, 1));
}

TEST(PictureDrawing, RepeatsPixelsWithoutSmoothing) {
  picture::Bitmap picture(2, 1, {0x000000, 0x123456});
  picture.set_pixel(1, 0, 1);
  const wxImage image = draw_picture(picture, {10, 10, 6, 3}, {12, 11, 3, 1});
  EXPECT_EQ(image.GetSize(), wxSize(3, 1));
  EXPECT_EQ(image.GetRed(0, 0), 0);
  EXPECT_EQ(image.GetRed(1, 0), 0x12);
  EXPECT_EQ(image.GetBlue(2, 0), 0x56);
}

class PictureTest : public support::WindowTest {
 protected:
  PictureFrame& show(int width, int height) {
    open();
    session.picture.emplace(width, height, picture::kGreyPalette);
    for (int i = 0; i < std::min(width, height); ++i) session.picture->set_pixel(i, i, 3);
    EXPECT_TRUE(frame->run(kShow));
    support::wait_until_settled(*frame->picture_frame());
    return *frame->picture_frame();
  }
  // The window manager gives a window its size when it likes.
  static bool comes_to_hold_all(const PictureFrame& window) {
    return run_events(2s, [&] { return wxRect(window.GetClientSize()).Contains(window.place()); });
  }
};

TEST_F(PictureTest, OpensInAWindowThatHoldsIt) {
  PictureFrame& window = show(400, 300);
  EXPECT_EQ(window.place().GetSize(), window.FromDIP(wxSize(400, 300)));
  EXPECT_TRUE(comes_to_hold_all(window));
}

TEST_F(PictureTest, StretchesByTheCommand) {
  PictureFrame& window = show(40, 20);
  EXPECT_EQ(window.place().GetSize(), window.FromDIP(wxSize(40, 20)));
  EXPECT_TRUE(frame->run(kStretchBitmap));
  EXPECT_EQ(window.place().width, window.GetClientSize().x);
  EXPECT_EQ(window.place().height, window.GetClientSize().x / 2);
  EXPECT_TRUE(window.GetMenuBar()->IsChecked(window.GetMenuBar()->FindMenuItem("Picture", "Stretch")));
  EXPECT_TRUE(frame->run(kStretchBitmap));
  EXPECT_EQ(window.place().GetSize(), window.FromDIP(wxSize(40, 20)));
}

TEST_F(PictureTest, ShowsATurnedPictureWhole) {
  PictureFrame& window = show(600, 240);
  EXPECT_TRUE(frame->run(kRotateLeft));
  EXPECT_EQ(window.place().GetSize(), window.FromDIP(wxSize(240, 600)));
  EXPECT_TRUE(comes_to_hold_all(window));
}

TEST_F(PictureTest, ScrollsWhatIsLargerThanTheScreen) {
  PictureFrame& window = show(4000, 3000);
  EXPECT_EQ(window.place().GetTopLeft(), wxPoint(0, 0));
  EXPECT_LT(window.GetClientSize().x, window.place().width);
}

TEST_F(PictureTest, SavesBothTypesOfPicturesAndNothingElse) {
  PictureFrame& window = show(40, 20);
  EXPECT_TRUE(window.save(directory / "screen.bmp"));
  EXPECT_TRUE(window.save(directory / "screen.png"));
  for (const char* name : {"screen.bmp", "screen.png"}) {
    if (std::string(name) == "screen.png" && wxImage::FindHandler(wxBITMAP_TYPE_PNG) == nullptr) continue;
    const wxImage image(wx_path(directory / name));
    ASSERT_TRUE(image.IsOk()) << name;
    EXPECT_EQ(image.GetSize(), wxSize(40, 20)) << name;
    EXPECT_EQ(image.GetRed(5, 5), 0xFF) << name;
    EXPECT_EQ(image.GetRed(5, 6), 0) << name;
  }
  for (const char* name : {"screen.txt", "screen"}) {
    wxTEST_DIALOG(EXPECT_FALSE(window.save(directory / name)), wxExpectModal<wxMessageDialog>(wxID_OK));
    EXPECT_FALSE(std::filesystem::exists(directory / name));
  }
}

TEST_F(PictureTest, PutsItOnTheClipboard) {
  show(40, 20);
  EXPECT_TRUE(frame->run(kCopyBitmap));
  const wxClipboardLocker locker;
  wxBitmapDataObject data;
  ASSERT_TRUE(wxTheClipboard->GetData(data));
  EXPECT_EQ(data.GetBitmap().GetSize(), wxSize(40, 20));
}

TEST_F(PictureTest, ShowsTheReceiversScreen) {
  open();
  choose_port(session, "sim:garmin");
  EXPECT_TRUE(frame->run(40052));
  run_events(300ms);
  ASSERT_NE(frame->picture_frame(), nullptr);
  support::save_screenshot(*frame->picture_frame(), "picture");
  frame->run(kStretchBitmap);
  support::save_screenshot(*frame->picture_frame(), "picture_stretched");
  frame->run(kRotateLeft);
  support::save_screenshot(*frame->picture_frame(), "picture_turned");
}

}  // namespace
}  // namespace ui::wx
