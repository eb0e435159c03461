// The picture of a receiver's screen.
#pragma once

#include <wx/frame.h>
#include <wx/image.h>
#include <wx/scrolwin.h>

#include "ui/wx/desk.h"

namespace ui::wx {

class PictureFrame : public wxFrame, public View {
 public:
  PictureFrame(wxWindow* parent, Desk& desk, bool stretched);

  void show_change(Change change) override;
  // Whether the picture fills the window, or each of its pixels is one of the screen's.
  void set_stretched(bool stretched);
  // Writes the picture to a .bmp or .png file. False, after a box, when that fails or the name is another type's.
  bool save(const std::filesystem::path& file);
  // Where the picture stands in what shows it, in the toolkit's pixels; empty where there is none.
  [[nodiscard]] wxRect place() const;

 private:
  void make_menu();
  void ask_and_save();
  void fit_window();
  void refresh();
  void paint();

  Desk& desk_;
  bool stretched_;
  wxScrolledCanvas* canvas_;
  wxSize fitted_;  // the picture for which the window was given its size
  Registration registration_;
};

// Where a picture of a size stands in a window of another: in its middle, as it is or as large as it fits.
[[nodiscard]] wxRect picture_place(wxSize picture, wxSize window, bool stretched);
// A part of the picture when it is drawn in a place, without smoothing; both in the same pixels.
[[nodiscard]] wxImage draw_picture(const picture::Bitmap& picture, const wxRect& place, const wxRect& part);

// Puts the session's picture on the clipboard; false, with the reason on line 1, when the system does not take it.
bool copy_picture_to_clipboard(const session::Session& session);

}  // namespace ui::wx
