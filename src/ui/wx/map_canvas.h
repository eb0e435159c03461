// The map's drawing and what the pointer and the keys do with it.
#pragma once

#include <wx/bitmap.h>
#include <wx/window.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "ui/wx/desk.h"
#include "ui/wx/drawing_output.h"
#include "ui/wx/map_painter.h"

namespace ui::wx {

class MapCanvas : public wxWindow {
 public:
  // What is under the pointer, if anything, and where that is.
  using Pointer = std::function<void(const std::optional<ItemRef>& item, const geodesy::Position& position)>;

  MapCanvas(wxWindow* parent, Desk& desk, Pointer pointer);

  void show_change(Change change);
  void show_items(const std::vector<ItemRef>& items);
  void show_all();
  // About the middle.
  void zoom(double factor);

  [[nodiscard]] const map::Layers& layers() const { return layers_; }
  void set_layers(const map::Layers& layers);
  [[nodiscard]] const map::Viewport& viewport() const { return viewport_; }
  // What is shown, for paper and files.
  [[nodiscard]] Drawing drawing();

 private:
  void read_items();
  void redraw();
  void render();
  void on_size();
  void on_paint();
  void draw_pointer_marks(wxGraphicsContext& context);
  void on_left_down(wxMouseEvent& event);
  void on_left_up(wxMouseEvent& event);
  void on_motion(wxMouseEvent& event);
  void on_double_click(wxMouseEvent& event);
  void on_context_menu(const map::Pixel& at);
  void on_wheel(wxMouseEvent& event);
  void on_key(wxKeyEvent& event);
  void toggle(const ItemRef& item);
  void end_drag();
  [[nodiscard]] std::optional<ItemRef> item_at(const map::Pixel& at) const;
  [[nodiscard]] bool is_moving() const { return drag_ == Drag::Map; }

  enum class Drag { None, Click, Map, Rectangle };

  Desk& desk_;
  const Pointer pointer_;
  MapPainter painter_;
  map::Scene scene_;
  std::uint64_t revision_ = 0;
  map::Viewport viewport_;
  map::Layers layers_;
  std::vector<map::Point> rings_;  // round what show_items was asked for
  bool shows_all_ = true;          // until the user goes elsewhere
  wxBitmap picture_;               // of the viewport then
  map::Viewport picture_viewport_;
  bool picture_is_old_ = true;
  double milliseconds_ = 0;  // that the picture took
  Drag drag_ = Drag::None;
  map::Pixel drag_from_, drag_to_;
};

}  // namespace ui::wx
