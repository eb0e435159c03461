#include "ui/wx/drawing_output.h"

#include <wx/dcmemory.h>
#include <wx/filedlg.h>
#include <wx/image.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/print.h>
#include <wx/printdlg.h>

#include <memory>

#include "base/safe_file.h"
#include "session/session.h"
#include "ui/wx/file_dialogs.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

// Paper shows more than a screen.
constexpr double kPrintFactor = 3;
constexpr int kMarginMillimetres = 15;

class DrawingPrintout : public wxPrintout {
 public:
  DrawingPrintout(const wxString& title, wxBitmap bitmap) : wxPrintout(title), bitmap_(std::move(bitmap)) {}

  bool OnPrintPage(int page) override {
    if (page != 1) return false;
    // A finger's breadth of white all round.
    wxPageSetupDialogData margins;
    margins.SetMarginTopLeft(wxPoint(kMarginMillimetres, kMarginMillimetres));
    margins.SetMarginBottomRight(wxPoint(kMarginMillimetres, kMarginMillimetres));
    FitThisSizeToPageMargins(bitmap_.GetSize(), margins);
    GetDC()->DrawBitmap(bitmap_, 0, 0);
    return true;
  }
  bool HasPage(int page) override { return page == 1; }
  void GetPageInfo(int* least, int* most, int* from, int* to) override { *least = *most = *from = *to = 1; }

 private:
  wxBitmap bitmap_;
};

// Asks for the file. A failure is said in a box.
void save_as_png(wxFrame& frame, const wxString& name, const Drawing& drawing, const wxSize& size) {
  FileQuestion question{"Save as PNG", {}, record_text(name.Lower() + ".png"), {{"PNG pictures (*.png)", "*.png"}}, 0};
  const std::optional<std::filesystem::path> file = ask_file_to_save(&frame, question);
  if (!file) return;
  if (!write_png(bitmap_of(drawing, size, frame.GetContentScaleFactor()), *file))
    wxMessageBox(wx_path(*file) + " could not be written.", "Save as PNG", wxOK | wxICON_ERROR, &frame);
}

// Asks for the printer and fits the drawing, in the proportions of `size`, onto one page.
void print_drawing(wxFrame& frame, const wxString& title, const Drawing& drawing, const wxSize& size) {
  wxPrintDialogData data;
  data.EnablePageNumbers(false);
  wxPrinter printer(&data);
  DrawingPrintout printout(title, bitmap_of(drawing, size, kPrintFactor));
  if (!printer.Print(&frame, &printout, true) && wxPrinter::GetLastError() == wxPRINTER_ERROR)
    wxMessageBox(title + " could not be printed.", "Print", wxOK | wxICON_ERROR, &frame);
}

}  // namespace

wxBitmap bitmap_of(const Drawing& drawing, const wxSize& size, double factor) {
  wxBitmap bitmap(wxRound(size.x * factor), wxRound(size.y * factor), 24);
  wxMemoryDC dc(bitmap);
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  context->Scale(factor, factor);
  drawing(*context, size.x, size.y);
  return bitmap;
}

bool write_png(const wxBitmap& bitmap, const std::filesystem::path& file) {
  const wxImage image = bitmap.ConvertToImage();
  if (!image.IsOk()) return false;
  const std::size_t size = std::size_t{3} * static_cast<std::size_t>(image.GetWidth() * image.GetHeight());
  const base::Bytes png = picture::png_file(image.GetWidth(), image.GetHeight(), {image.GetData(), size});
  return base::save_file(file, {reinterpret_cast<const char*>(png.data()), png.size()}).empty();
}

wxMenu* make_drawing_menu(wxFrame& frame, const wxString& name, const Drawing& drawing, const wxWindow& canvas) {
  auto* menu = new wxMenu;
  const auto add = [&](int id, const wxString& label, auto action) {
    frame.Bind(
        wxEVT_MENU, [action](wxCommandEvent&) { action(); }, menu->Append(id, label)->GetId());
  };
  add(wxID_ANY, "&Save as PNG...\tCtrl+S",
      [=, &frame, &canvas] { save_as_png(frame, name, drawing, canvas.GetClientSize()); });
  add(wxID_ANY, "&Print...\tCtrl+P",
      [=, &frame, &canvas] { print_drawing(frame, name, drawing, canvas.GetClientSize()); });
  menu->AppendSeparator();
  add(wxID_CLOSE, "&Close\tCtrl+W", [&frame] { frame.Close(); });
  return menu;
}

}  // namespace ui::wx
