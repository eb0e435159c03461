#include "ui/wx/map_frame.h"

namespace ui::wx {

MapFrame::MapFrame(wxWindow* parent, Desk& desk)
    : wxFrame(parent, wxID_ANY, "Map"), desk_(desk), registration_(desk, *this) {}

void MapFrame::show_change(Change) { Refresh(); }
void MapFrame::show_items(const std::vector<ItemRef>&) { (void)desk_; }

}  // namespace ui::wx
