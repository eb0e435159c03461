// Drawings that windows show, as picture files and on paper.
#pragma once

#include <wx/bitmap.h>
#include <wx/frame.h>
#include <wx/graphics.h>

#include <filesystem>
#include <functional>

namespace ui::wx {

// Draws all of a picture of this size into the context.
using Drawing = std::function<void(wxGraphicsContext& context, double width, double height)>;

// The drawing of a size, each of its units `factor` pixels of the bitmap.
[[nodiscard]] wxBitmap bitmap_of(const Drawing& drawing, const wxSize& size, double factor);

// False when it cannot be written; what was there is then as it was.
bool write_png(const wxBitmap& bitmap, const std::filesystem::path& file);

// A menu that saves and prints what the canvas shows, and closes the frame. "NAME.png" is what it offers as a file.
[[nodiscard]] wxMenu* make_drawing_menu(wxFrame& frame, const wxString& name, const Drawing& drawing,
                                        const wxWindow& canvas);

}  // namespace ui::wx
