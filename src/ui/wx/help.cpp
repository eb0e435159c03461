#include "ui/wx/help.h"

namespace ui::wx {

bool show_manual(wxWindow*) { return false; }
void show_about(wxWindow*) {}
wxIconBundle program_icons() { return {}; }

}  // namespace ui::wx
