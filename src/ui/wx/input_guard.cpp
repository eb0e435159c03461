#include "ui/wx/input_guard.h"

#include <wx/app.h>
#include <wx/evtloop.h>

#include <utility>

namespace ui::wx {

// The filter stands only as long as events are taken, whatever comes of them.
class InputGuard::Taking {
 public:
  explicit Taking(InputGuard& guard) : guard_(guard) {
    guard_.is_taking_ = true;
    wxEvtHandler::AddFilter(&guard_);
  }
  ~Taking() {
    wxEvtHandler::RemoveFilter(&guard_);
    guard_.is_taking_ = false;
  }
  Taking(const Taking&) = delete;
  Taking& operator=(const Taking&) = delete;

 private:
  InputGuard& guard_;
};

bool InputGuard::take_events() {
  wxEventLoopBase* loop = wxEventLoopBase::GetActive();
  if (loop == nullptr || loop->IsYielding() || is_taking_) return false;
  const Taking taking(*this);
  loop->YieldFor(wxEVT_CATEGORY_ALL);
  return std::exchange(esc_, false);
}

bool InputGuard::take_close_request() { return std::exchange(close_, false); }

int InputGuard::FilterEvent(wxEvent& event) {
  const wxEventType type = event.GetEventType();
  if (type == wxEVT_CLOSE_WINDOW) {
    close_ = close_ || event.GetEventObject() == &main_window_;
    auto& close = static_cast<wxCloseEvent&>(event);
    if (close.CanVeto()) close.Veto();
    return Event_Processed;
  }
  if (type == wxEVT_CHAR_HOOK || type == wxEVT_KEY_DOWN) {
    esc_ = esc_ || static_cast<wxKeyEvent&>(event).GetKeyCode() == WXK_ESCAPE;
    return Event_Processed;
  }
  const bool is_input = (event.GetEventCategory() & wxEVT_CATEGORY_USER_INPUT) != 0;
  return is_input ? Event_Processed : Event_Skip;
}

}  // namespace ui::wx
