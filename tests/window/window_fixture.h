// A session with its main window, on a real display, and what a user does with them.
#pragma once

#include <gtest/gtest.h>
#include <wx/toplevel.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "apps/system_clock.h"
#include "tests/support/temporary_folder.h"
#include "ui/wx/main_frame.h"

namespace support {

// Lets events happen for this long, or until `enough` says so. What `enough` said last.
bool run_events(std::chrono::milliseconds longest, const std::function<bool()>& enough = {});

// Waits until the window is there, has the focus and has kept its size for a moment: the window manager gives it a
// frame a little later than the focus.
void wait_until_settled(wxTopLevelWindow& window);

// Saves what the screen shows of a window, its frame included, as NAME.png into the folder of screenshots
// (PELORIX_SCREENSHOTS; none: nothing happens).
void save_screenshot(wxWindow& window, const std::string& name);

// Presses a key, with modifiers as the toolkit has them (wxMOD_CONTROL ...), as if on the keyboard: it goes to the
// window that has the focus.
void press(int key, int modifiers = 0);

class WindowTest : public testing::Test {
 protected:
  WindowTest();
  ~WindowTest() override;

  // Makes and shows the main window; before it, settings can be changed.
  void open();
  // What an output line says.
  [[nodiscard]] const std::string& line(int number) const { return display.line(number); }
  [[nodiscard]] std::string status(int field) const;
  [[nodiscard]] std::string title() const;
  // A waypoint at the end of the store.
  void add_waypoint(const std::string& ident, double latitude, double longitude);
  // Fills the store with what the built-in simulated receiver holds.
  void download_everything();

  const TemporaryFolder folder;
  const std::filesystem::path directory = folder.path();  // empty at first; the start directory
  apps::SystemClock clock;
  ui::wx::WindowScreen screen{clock};
  ui::Display display{screen};
  session::Session session{clock, display, {directory, {}, "pelorix"}};
  ui::wx::MainFrame* frame = nullptr;  // nullptr when it was closed
};

}  // namespace support
