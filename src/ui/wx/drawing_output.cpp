#include "ui/wx/drawing_output.h"

#include <wx/dcmemory.h>
#include <wx/filedlg.h>
#include <wx/log.h>
#include <wx/msgdlg.h>
#include <wx/print.h>
#include <wx/printdlg.h>

#include <memory>

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
  const wxLogNull quiet;  // the caller says it
  std::filesystem::path part = file;
  part += ".part";
  std::error_code error;
  if (!bitmap.SaveFile(wx_path(part), wxBITMAP_TYPE_PNG)) {
    std::filesystem::remove(part, error);
    return false;
  }
  std::filesystem::rename(part, file, error);
  if (!error) return true;
  std::error_code ignored;
  std::filesystem::remove(part, ignored);
  return false;
}

void save_as_png(wxFrame& frame, const wxString& name, const Drawing& drawing, const wxSize& size) {
  FileQuestion question{"Save as PNG", {}, record_text(name), {{"PNG pictures (*.png)", "*.png"}}, 0};
  const std::optional<std::filesystem::path> file = ask_file_to_save(&frame, question);
  if (!file) return;
  if (!write_png(bitmap_of(drawing, size, frame.GetContentScaleFactor()), *file))
    wxMessageBox(wx_path(*file) + " could not be written.", "Save as PNG", wxOK | wxICON_ERROR, &frame);
}

void print_drawing(wxFrame& frame, const wxString& title, const Drawing& drawing, const wxSize& size) {
  wxPrintDialogData data;
  data.EnablePageNumbers(false);
  wxPrinter printer(&data);
  DrawingPrintout printout(title, bitmap_of(drawing, size, kPrintFactor));
  if (!printer.Print(&frame, &printout, true) && wxPrinter::GetLastError() == wxPRINTER_ERROR)
    wxMessageBox(title + " could not be printed.", "Print", wxOK | wxICON_ERROR, &frame);
}

}  // namespace ui::wx
