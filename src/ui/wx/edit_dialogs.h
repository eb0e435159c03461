// The dialogs that edit one item.
#pragma once

#include <wx/window.h>

#include "ui/wx/desk.h"

namespace ui::wx {

// True when the user has changed the item; the desk is told by the caller.
bool edit_item(wxWindow* parent, Desk& desk, const ItemRef& item);
// The same for a new item of the kind 'W', 'I' or 'P'; true when the store has it now.
bool create_item(wxWindow* parent, Desk& desk, char kind);

}  // namespace ui::wx
