#include "ui/wx/picture_frame.h"

namespace ui::wx {

PictureFrame::PictureFrame(wxWindow* parent, Desk& desk, bool stretched)
    : wxFrame(parent, wxID_ANY, "Display Bitmap"), desk_(desk), stretched_(stretched), registration_(desk, *this) {}

void PictureFrame::show_change(Change) { Refresh(); }
void PictureFrame::set_stretched(bool stretched) { (void)desk_, stretched_ = stretched; }
bool copy_picture_to_clipboard(const session::Session&) { return false; }

}  // namespace ui::wx
