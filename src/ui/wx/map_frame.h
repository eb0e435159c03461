// The map of what is loaded.
#pragma once

#include <wx/frame.h>

#include <vector>

#include "ui/wx/desk.h"

namespace ui::wx {

class MapFrame : public wxFrame, public View {
 public:
  MapFrame(wxWindow* parent, Desk& desk);

  void show_change(Change change) override;
  // Puts these items into the middle and marks them.
  void show_items(const std::vector<ItemRef>& items);

 private:
  Desk& desk_;
  Registration registration_;
};

}  // namespace ui::wx
