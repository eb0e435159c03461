#include "ui/wx/option_dialogs.h"

namespace ui::wx {

bool show_option_sheet(wxWindow*, Desk&) { return false; }
bool choose_datum(wxWindow*, Desk&) { return false; }
bool ask_igc_options(wxWindow*, Desk&) { return false; }
bool ask_lowrance_options(wxWindow*, Desk&, Direction) { return true; }

}  // namespace ui::wx
