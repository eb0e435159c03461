#include "ui/wx/edit_dialogs.h"

namespace ui::wx {

bool edit_item(wxWindow*, Desk&, const ItemRef&) { return false; }
bool create_item(wxWindow*, Desk&, char) { return false; }

}  // namespace ui::wx
