#include <wx/testing.h>

#include "tests/window/window_fixture.h"
#include "ui/ports.h"

namespace ui::wx {
namespace {

using support::run_events;
using namespace std::chrono_literals;

class MainFrameTest : public support::WindowTest {};

TEST_F(MainFrameTest, StartsWithItsTitleAndReadiness) {
  open();
  EXPECT_EQ(title(), "Pelorix -- GPS ? COM1 - 0 -- W:0 T:0 (TP:0) E:0 P:0 R:0");
  EXPECT_EQ(status(2), "Ready -- GPS is UNKNOWN");
  support::save_screenshot(*frame, "main");
}

TEST_F(MainFrameTest, DownloadsFromTheSimulatedReceiver) {
  open();
  choose_port(session, "sim:garmin");
  EXPECT_EQ(status(2), "Ready -- GPS is Garmin");
  EXPECT_TRUE(frame->run(40028));
  EXPECT_GT(session.items.waypoint_count(), 0);
  EXPECT_EQ(line(3), "Waypoint download completed");
  support::save_screenshot(*frame, "main_downloaded");
}

}  // namespace
}  // namespace ui::wx
