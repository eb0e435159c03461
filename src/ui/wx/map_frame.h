// The map of what is loaded.
#pragma once

#include <wx/frame.h>

#include <vector>

#include "ui/wx/desk.h"
#include "ui/wx/map_canvas.h"

namespace ui::wx {

class MapFrame : public wxFrame, public View {
 public:
  MapFrame(wxWindow* parent, Desk& desk);

  void show_change(Change change) override;
  // Puts these items into the middle and marks them.
  void show_items(const std::vector<ItemRef>& items);

  [[nodiscard]] MapCanvas& canvas() { return *canvas_; }

 private:
  void make_menu();
  void show_pointer(const std::optional<ItemRef>& item, const geodesy::Position& position);

  Desk& desk_;
  MapCanvas* canvas_ = nullptr;
  Registration registration_;
};

}  // namespace ui::wx
