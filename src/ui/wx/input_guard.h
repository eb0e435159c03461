// Keeps the program alive while a transfer runs in the one thread there is: windows paint themselves, keys and clicks
// are swallowed, but ESC and closing the main window are noticed.
#pragma once

#include <wx/eventfilter.h>
#include <wx/toplevel.h>

namespace ui::wx {

class InputGuard : public wxEventFilter {
 public:
  explicit InputGuard(wxTopLevelWindow& main_window) : main_window_(main_window) {}
  InputGuard(const InputGuard&) = delete;
  InputGuard& operator=(const InputGuard&) = delete;

  // Takes what waits of events; true when ESC was among them.
  bool take_events();
  // Whether the main window was asked to close since this was asked last.
  bool take_close_request();

  int FilterEvent(wxEvent& event) override;

 private:
  class Taking;

  wxTopLevelWindow& main_window_;
  bool is_taking_ = false;
  bool esc_ = false;
  bool close_ = false;
};

}  // namespace ui::wx
