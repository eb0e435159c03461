// The program's icon: a compass card with its needle. packaging/pelorix.svg shows the same.
#pragma once

#include <wx/image.h>

namespace ui::wx {

// With transparent corners; `size` in pixels.
[[nodiscard]] wxImage draw_program_icon(int size);

}  // namespace ui::wx
