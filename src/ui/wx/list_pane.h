// What the frame of a list asks of the list or tree within it.
#pragma once

#include <wx/window.h>

#include <vector>

#include "ui/wx/desk.h"

namespace ui::wx {

class ListPane {
 public:
  virtual ~ListPane() = default;

  [[nodiscard]] virtual wxWindow& window() = 0;
  // That all columns take together, in pixels.
  [[nodiscard]] virtual int columns_width() const = 0;

  // The rows that commands act on. To highlight some takes it from all others.
  [[nodiscard]] virtual std::vector<ItemRef> highlighted() const = 0;
  virtual void highlight(const std::vector<ItemRef>& items) = 0;
  virtual void highlight_all() = 0;
  // Scrolls the item into sight and highlights it alone.
  virtual void show_item(const ItemRef& item) = 0;

  virtual void show_change(Change change) = 0;
  // Takes the widths of the columns over into the settings.
  virtual void keep_widths() {}
};

}  // namespace ui::wx
