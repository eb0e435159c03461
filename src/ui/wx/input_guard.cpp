#include "ui/wx/input_guard.h"

#include <wx/app.h>
#include <wx/evtloop.h>

#include <utility>

namespace ui::wx {

bool InputGuard::take_events() {
  wxEventLoopBase* loop = wxEventLoopBase::GetActive();
  if (loop == nullptr || loop->IsYielding() || is_taking_) return false;
  is_taking_ = true;
  wxEvtHandler::AddFilter(this);
  loop->YieldFor(wxEVT_CATEGORY_ALL);
  wxEvtHandler::RemoveFilter(this);
  is_taking_ = false;
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
