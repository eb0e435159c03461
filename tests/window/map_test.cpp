#include <wx/image.h>
#include <wx/uiaction.h>

#include <chrono>
#include <cmath>
#include <fstream>

#include "tests/window/window_fixture.h"
#include "ui/wx/map_frame.h"
#include "ui/wx/profile_frame.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

using support::run_events;
using namespace std::chrono_literals;

class MapTest : public support::WindowTest {
 protected:
  MapFrame& open_map() {
    open();
    window = new MapFrame(frame, *frame);
    window->Show();
    window->Raise();
    support::wait_until_settled(*window);
    return *window;
  }
  [[nodiscard]] map::Pixel pixel_of(int waypoint) const {
    return window->canvas().viewport().to_pixel(map::project(session.items.waypoint(waypoint).position));
  }
  void send(wxEventType type, const map::Pixel& at, int wheel = 0, bool shift = false) {
    wxMouseEvent event(type);
    event.SetEventObject(&window->canvas());
    event.SetPosition({wxRound(at.x), wxRound(at.y)});
    event.m_wheelDelta = 120;
    event.m_wheelRotation = wheel;
    event.SetShiftDown(shift);
    window->canvas().HandleWindowEvent(event);
  }
  void click(const map::Pixel& at) {
    send(wxEVT_LEFT_DOWN, at);
    send(wxEVT_LEFT_UP, at);
  }

  MapFrame* window = nullptr;
};

TEST_F(MapTest, ShowsWhatWasDownloaded) {
  open();
  download_everything();
  frame->show_on_map({{'W', 1}});
  run_events(500ms);
  auto* shown = dynamic_cast<MapFrame*>(wxFindWindowByName("map"));
  ASSERT_NE(shown, nullptr);
  support::save_screenshot(*shown, "map_item");
  shown->canvas().show_all();
  run_events(100ms);
  for (int i = 1; i <= session.items.waypoint_count(); ++i) {
    const map::Viewport& viewport = shown->canvas().viewport();
    EXPECT_TRUE(viewport.shows(viewport.to_pixel(map::project(session.items.waypoint(i).position)))) << i;
  }
  support::save_screenshot(*shown, "map");
}

TEST_F(MapTest, AnEmptyMapIsTheWorld) {
  open_map();
  EXPECT_NEAR(window->canvas().viewport().centre().x, 0.5, 1e-9);
  support::save_screenshot(*window, "map_empty");
}

TEST_F(MapTest, AClickSelectsAndADraggedRectangleToo) {
  add_waypoint("ONE", 51, 7);
  add_waypoint("TWO", 51.2, 7.2);
  session.items.select_all('W', false);
  open_map();
  click(pixel_of(1));
  EXPECT_EQ(session.items.waypoint(1).selected, 1);
  click(pixel_of(1));
  EXPECT_EQ(session.items.waypoint(1).selected, 0);
  send(wxEVT_LEFT_DOWN, {1, 1}, 0, true);
  send(wxEVT_MOTION, {300, 300}, 0, true);
  const map::Viewport& viewport = window->canvas().viewport();
  send(wxEVT_LEFT_UP, {viewport.width() - 1, viewport.height() - 1}, 0, true);
  EXPECT_EQ(session.items.selected_count('W'), 2);
}

TEST_F(MapTest, TheWheelZoomsAboutThePointerAndDraggingSelectsNothing) {
  add_waypoint("ONE", 51, 7);
  add_waypoint("TWO", 51.2, 7.2);
  session.items.select_all('W', false);
  open_map();
  const map::Pixel before = pixel_of(1);
  const map::Pixel rounded{std::round(before.x), std::round(before.y)};
  const double scale = window->canvas().viewport().scale();
  send(wxEVT_MOUSEWHEEL, rounded, 120);
  EXPECT_GT(window->canvas().viewport().scale(), scale);
  EXPECT_NEAR(pixel_of(1).x, before.x, 1);
  EXPECT_NEAR(pixel_of(1).y, before.y, 1);
  send(wxEVT_LEFT_DOWN, rounded);
  send(wxEVT_MOTION, {rounded.x + 50, rounded.y - 20});
  send(wxEVT_LEFT_UP, {rounded.x + 50, rounded.y - 20});
  EXPECT_NEAR(pixel_of(1).x, before.x + 50, 2);
  EXPECT_EQ(session.items.selected_count('W'), 0);
}

TEST_F(MapTest, ThePointerIsToldInTheChosenNotation) {
  session.settings.DMSMode = geodesy::Notation::Ddd;
  add_waypoint("HERE", 51, 7);
  open_map();
  // A little to the north: a pixel is whole.
  send(wxEVT_MOTION, {pixel_of(1).x, pixel_of(1).y - 3});
  EXPECT_EQ(window->GetStatusBar()->GetStatusText(0), "Waypoint HERE  N51.0000000 E007.0000000");
  EXPECT_TRUE(window->GetStatusBar()->GetStatusText(1).StartsWith("N51.0")) << window->GetStatusBar()->GetStatusText(1);
}

TEST_F(MapTest, AHundredThousandOfEachAreDrawnFluently) {
  for (int i = 0; i < 100000; ++i) {
    const double angle = i * 0.0005;
    session.items.start_item();
    session.items.CurrentItem.position = {51 + std::sin(angle * 1.3) * (i % 97) * 0.01, 7 + std::cos(angle) * 0.9};
    session.items.CurrentItem.ident = "W" + std::to_string(i);
    session.items.CurrentItem.symbol = 18;
    (void)session.items.push_waypoint(0);
    session.items.start_item();
    session.items.CurrentItem.position = {51 + std::sin(angle) + std::sin(i * 0.1) * 0.01, 7 + std::cos(angle * 0.7)};
    (void)session.items.push_track();
  }
  session.items.select_all('W', false);
  session.items.select_all('T', false);
  open_map();
  const auto time = [&](const char* what) {
    constexpr int kFrames = 10;
    wxBitmap bitmap(1, 1);
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kFrames; ++i)
      bitmap = bitmap_of(window->canvas().drawing(), window->canvas().GetClientSize(), 1);
    const std::chrono::duration<double, std::milli> each = (std::chrono::steady_clock::now() - start) / kFrames;
    RecordProperty(what, std::to_string(each.count()));
    std::printf("%s: %.1f ms a frame\n", what, each.count());
    // Far more than it takes, for a machine that is busy and a build that is not optimised.
    EXPECT_LT(each.count(), 1000) << what;
  };
  time("all");
  support::save_screenshot(*window, "map_full");
  window->canvas().zoom(20);
  time("near");
  support::save_screenshot(*window, "map_full_near");
}

TEST_F(MapTest, APictureFileReplacesTheOldOneOnlyWhenItIsWritten) {
  add_waypoint("ONE", 51, 7);
  open_map();
  const wxBitmap bitmap = bitmap_of(window->canvas().drawing(), wxSize(400, 300), 2);
  const std::filesystem::path file = directory / "map.png";
  std::ofstream(file) << "old";
  ASSERT_TRUE(write_png(bitmap, file));
  if (wxImage::FindHandler(wxBITMAP_TYPE_PNG) != nullptr) {
    EXPECT_EQ(wxImage(wx_path(file)).GetSize(), wxSize(800, 600));
  }
  EXPECT_FALSE(write_png(bitmap, directory / "nowhere" / "map.png"));
  std::filesystem::create_directories(directory / "taken.png" / "inside");
  EXPECT_FALSE(write_png(bitmap, directory / "taken.png"));
  const std::filesystem::directory_iterator files(directory);
  EXPECT_EQ(std::distance(begin(files), end(files)), 2) << "nothing else is left behind";
}

TEST_F(MapTest, TheProfileShowsTheTrackOfAPoint) {
  open();
  download_everything();
  ASSERT_GT(session.items.track_count(), 1);
  frame->show_profile_of(session.items.track_point_count());
  run_events(500ms);
  auto* profile = dynamic_cast<ProfileFrame*>(wxFindWindowByName("profile"));
  ASSERT_NE(profile, nullptr);
  EXPECT_EQ(profile->tracks().GetCount(), static_cast<unsigned>(session.items.track_count()));
  EXPECT_EQ(profile->tracks().GetSelection(), session.items.track_count() - 1);
  EXPECT_EQ(profile->plot().profile().points.back().index, session.items.track_point_count());
  support::save_screenshot(*profile, "profile_last");
  frame->show_profile_of(1);
  EXPECT_TRUE(profile->figures().StartsWith("Length: ")) << profile->figures();
  support::save_screenshot(*profile, "profile");
  profile->show_against(map::Against::Time);
  support::save_screenshot(*profile, "profile_time");
  session.items.clear_tracks();
  frame->tell(Change::Items);
  EXPECT_EQ(profile->tracks().GetCount(), 0u);
  EXPECT_NE(profile->plot().complaint(), "");
}

}  // namespace
}  // namespace ui::wx
