#include "ui/wx/window_place.h"

#include <wx/display.h>
#include <wx/frame.h>

namespace ui::wx {

std::optional<store::WindowRectangle> main_window_place(const wxWindow& window) {
  const wxWindow* main = &window;
  while (main->GetParent() != nullptr) main = main->GetParent();
  const auto* frame = dynamic_cast<const wxFrame*>(main);
  if (frame == nullptr || frame->IsIconized()) return std::nullopt;
  const wxRect place = frame->GetRect();
  return store::WindowRectangle{place.x, place.y, place.width, place.height};
}

bool is_in_sight(const wxRect& place) {
  constexpr int kEnough = 80;
  for (unsigned i = 0; i < wxDisplay::GetCount(); ++i) {
    const wxRect seen = wxDisplay(i).GetClientArea().Intersect(place);
    if (seen.width >= kEnough && seen.height >= kEnough) return true;
  }
  return false;
}

}  // namespace ui::wx
