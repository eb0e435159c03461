// The picture of a receiver's screen.
#pragma once

#include <wx/frame.h>

#include "ui/wx/desk.h"

namespace ui::wx {

class PictureFrame : public wxFrame, public View {
 public:
  PictureFrame(wxWindow* parent, Desk& desk, bool stretched);

  void show_change(Change change) override;
  // Whether the picture fills the window, or each of its pixels is one of the screen's.
  void set_stretched(bool stretched);

 private:
  Desk& desk_;
  bool stretched_;
  Registration registration_;
};

// Puts the session's picture on the clipboard; false when the system does not take it.
bool copy_picture_to_clipboard(const session::Session& session);

}  // namespace ui::wx
