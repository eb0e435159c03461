#include "tests/window/window_fixture.h"

#include <wx/app.h>
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/evtloop.h>
#include <wx/image.h>
#include <wx/uiaction.h>

#include <cstdlib>
#include <thread>
#include <utility>

#include "ui/ports.h"

namespace support {

bool run_events(std::chrono::milliseconds longest, const std::function<bool()>& enough) {
  const auto end = std::chrono::steady_clock::now() + longest;
  while (true) {
    wxTheApp->Yield(true);
    wxTheApp->ProcessPendingEvents();
    wxTheApp->ProcessIdle();
    if (enough && enough()) return true;
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

void wait_until_settled(wxTopLevelWindow& window) {
  run_events(std::chrono::seconds(5), [&] { return window.IsShownOnScreen() && window.IsActive(); });
  const auto sizes = [&] { return std::pair(window.GetSize(), window.GetClientSize()); };
  for (auto before = sizes();; before = sizes()) {
    run_events(std::chrono::milliseconds(100));
    if (sizes() == before) return;
  }
}

void save_screenshot(wxWindow& window, const std::string& name) {
  const char* folder = std::getenv("PELORIX_SCREENSHOTS");
  if (folder == nullptr) return;
  window.Raise();
  run_events(std::chrono::milliseconds(600));
  std::filesystem::create_directories(folder);
  const wxRect place = window.GetScreenRect();
#ifdef __WXMSW__
  wxBitmap bitmap(place.GetSize());
  wxMemoryDC memory(bitmap);
  wxScreenDC screen;
  ASSERT_TRUE(memory.Blit(wxPoint(0, 0), place.GetSize(), &screen, place.GetPosition())) << name;
  memory.SelectObject(wxNullBitmap);
  ASSERT_TRUE(bitmap.SaveFile(std::string(folder) + "/" + name + ".bmp", wxBITMAP_TYPE_BMP)) << name;
#else
  // The X server's pixels are those that count, whatever the toolkit's scale.
  const double scale = window.GetContentScaleFactor();
  const auto pixels = [scale](int points) { return std::to_string(static_cast<int>(points * scale)); };
  const std::string command = "import -window root -crop " + pixels(place.width) + "x" + pixels(place.height) + "+" +
                              pixels(place.x) + "+" + pixels(place.y) + " +repage '" + folder + "/" + name + ".png'";
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
#endif
}

void press(int key, int modifiers) {
  wxUIActionSimulator simulator;
  simulator.Char(key, modifiers);
  run_events(std::chrono::milliseconds(50));
}

WindowTest::WindowTest() { session.settings.ExitPrompt = 0; }

WindowTest::~WindowTest() {
  if (frame != nullptr) frame->Destroy();
  run_events(std::chrono::milliseconds(0));
}

void WindowTest::open() {
  frame = new ui::wx::MainFrame(session, display, screen);
  frame->Bind(wxEVT_DESTROY, [this](wxWindowDestroyEvent& event) {
    if (event.GetEventObject() == frame) frame = nullptr;
    event.Skip();
  });
  frame->Show();
  frame->Raise();
  wait_until_settled(*frame);
}

std::string WindowTest::status(int field) const {
  return frame->GetStatusBar()->GetStatusText(field - 1).utf8_string();
}

std::string WindowTest::title() const { return frame->GetTitle().utf8_string(); }

void WindowTest::add_waypoint(const std::string& ident, double latitude, double longitude) {
  session.items.start_item();
  session.items.CurrentItem.ident = ident;
  session.items.CurrentItem.position = {latitude, longitude};
  (void)session.items.push_waypoint(0);
}

void WindowTest::download_everything() {
  ui::choose_port(session, "sim:garmin");
  session.settings.ForceExactDupeRemoval = 1;
  ui::run_command(session, display, 40028);
  session.settings.ForceExactDupeRemoval = 0;
}

}  // namespace support
