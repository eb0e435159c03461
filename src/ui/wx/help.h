// The manual, the about box and the program's icon.
#pragma once

#include <wx/iconbndl.h>
#include <wx/window.h>

#include "ui/wx/desk.h"

namespace ui::wx {

// Opens the manual's window; false, after a box, when the manual is not where the program is.
bool show_manual(wxWindow* parent);
void show_about(wxWindow* parent);
// Drawn, in the sizes that systems ask for.
[[nodiscard]] wxIconBundle program_icons();

}  // namespace ui::wx
