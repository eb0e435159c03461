#include "ui/wx/list_frame.h"

namespace ui::wx {

ListFrame::ListFrame(wxWindow* parent, Desk& desk, char kind)
    : wxFrame(parent, wxID_ANY, "List"), desk_(desk), kind_(kind), registration_(desk, *this) {}

void ListFrame::show_change(Change) { Refresh(); }

void ListFrame::show_item(const ItemRef&) { (void)desk_, (void)kind_; }

}  // namespace ui::wx
