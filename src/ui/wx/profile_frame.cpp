#include "ui/wx/profile_frame.h"

namespace ui::wx {

ProfileFrame::ProfileFrame(wxWindow* parent, Desk& desk)
    : wxFrame(parent, wxID_ANY, "Profile"), desk_(desk), registration_(desk, *this) {}

void ProfileFrame::show_change(Change) { Refresh(); }
void ProfileFrame::show_track_of(int) { (void)desk_; }

}  // namespace ui::wx
