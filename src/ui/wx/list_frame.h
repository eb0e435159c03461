// The list of one kind of items.
#pragma once

#include <wx/frame.h>

#include "ui/wx/desk.h"

namespace ui::wx {

class ListFrame : public wxFrame, public View {
 public:
  // 'W', 'R', 'T', 'I' or 'P'. The desk must outlive the frame.
  ListFrame(wxWindow* parent, Desk& desk, char kind);

  void show_change(Change change) override;
  // Scrolls the item into sight and makes it the current one.
  void show_item(const ItemRef& item);

 private:
  Desk& desk_;
  char kind_;
  Registration registration_;
};

}  // namespace ui::wx
