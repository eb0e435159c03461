#include "ui/wx/symbol_pictures.h"

#include <wx/dcmemory.h>
#include <wx/image.h>

#include <memory>

namespace ui::wx {

void draw_symbol(wxGraphicsContext& context, int, double left, double top, double size) {
  context.SetBrush(*wxBLUE_BRUSH);
  context.DrawEllipse(left + size / 4, top + size / 4, size / 2, size / 2);
}

wxBitmap symbol_bitmap(int code, int size) {
  wxImage image(size, size);
  image.InitAlpha();
  std::fill_n(image.GetAlpha(), static_cast<std::size_t>(size) * static_cast<std::size_t>(size), '\0');
  std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
  draw_symbol(*context, code, 0, 0, size);
  context->Flush();
  context.reset();
  return wxBitmap(image);
}

}  // namespace ui::wx
