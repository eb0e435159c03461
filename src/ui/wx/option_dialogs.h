// The settings: the property sheet of all of them, the choice of a datum, and what is asked before some commands.
#pragma once

#include <wx/window.h>

#include "ui/windows.h"
#include "ui/wx/desk.h"

namespace ui::wx {

// Each returns true when the user went on; the settings have what was entered then, and the caller tells the desk.
bool show_option_sheet(wxWindow* parent, Desk& desk);
bool choose_datum(wxWindow* parent, Desk& desk);
bool ask_igc_options(wxWindow* parent, Desk& desk);
bool ask_lowrance_options(wxWindow* parent, Desk& desk, Direction direction);

}  // namespace ui::wx
