// A small picture of each waypoint symbol, drawn: none are shipped.
#pragma once

#include <wx/bitmap.h>
#include <wx/graphics.h>

namespace ui::wx {

// Draws the symbol of a Garmin code into the square of this size whose upper left corner is given. A code that is no
// symbol gives a plain dot.
void draw_symbol(wxGraphicsContext& context, int code, double left, double top, double size);

// The same on a transparent ground; size in pixels of the screen.
[[nodiscard]] wxBitmap symbol_bitmap(int code, int size);

}  // namespace ui::wx
