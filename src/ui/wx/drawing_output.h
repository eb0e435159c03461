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

// Writes beside the file and then puts it in its place: a failure (false) leaves what was there.
bool write_png(const wxBitmap& bitmap, const std::filesystem::path& file);

// Asks for the file; `name` is what it offers. A failure is said in a box.
void save_as_png(wxFrame& frame, const wxString& name, const Drawing& drawing, const wxSize& size);

// Asks for the printer and fits the drawing, in the proportions of `size`, onto one page.
void print_drawing(wxFrame& frame, const wxString& title, const Drawing& drawing, const wxSize& size);

}  // namespace ui::wx
