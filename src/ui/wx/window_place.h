// Where the main window is, as the configuration keeps it.
#pragma once

#include <wx/gdicmn.h>
#include <wx/window.h>

#include <optional>

#include "session/session.h"

namespace ui::wx {

// Of the main window that the window is, or belongs to; nothing while it is an icon.
[[nodiscard]] std::optional<store::WindowRectangle> main_window_place(const wxWindow& window);

// Whether a screen shows enough of the place to take hold of a window there.
[[nodiscard]] bool is_in_sight(const wxRect& place);

}  // namespace ui::wx
