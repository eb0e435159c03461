#include "ui/wx/picture_frame.h"

#include <wx/clipbrd.h>
#include <wx/dcbuffer.h>
#include <wx/display.h>
#include <wx/menu.h>
#include <wx/sizer.h>

#include <algorithm>
#include <cmath>

#include "base/system_file.h"
#include "ui/commands.h"
#include "ui/wx/file_dialogs.h"
#include "ui/wx/help.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

enum MenuId { kSaveItem = wxID_HIGHEST + 1, kCopyItem, kRotateItem, kStretchItem };

// In pixels of a plain screen.
constexpr int kMargin = 16;
const wxSize kSmallestArea(320, 240);
constexpr int kScrollStep = 8;

wxSize size_of(const picture::Bitmap& picture) { return {picture.width(), picture.height()}; }

}  // namespace

wxRect picture_place(wxSize picture, wxSize window, bool stretched) {
  wxSize size = picture;
  if (stretched) {
    const double scale = std::min(double(window.x) / picture.x, double(window.y) / picture.y);
    size = wxSize(std::max(1, int(picture.x * scale)), std::max(1, int(picture.y * scale)));
  }
  return {wxPoint(std::max(0, (window.x - size.x) / 2), std::max(0, (window.y - size.y) / 2)), size};
}

wxImage draw_picture(const picture::Bitmap& picture, const wxRect& place, const wxRect& part) {
  wxImage image(part.GetSize(), false);
  const picture::Palette palette = picture.palette();
  for (int y = 0; y < part.height; ++y) {
    const int row = std::clamp((part.y + y - place.y) * picture.height() / place.height, 0, picture.height() - 1);
    for (int x = 0; x < part.width; ++x) {
      const int column = std::clamp((part.x + x - place.x) * picture.width() / place.width, 0, picture.width() - 1);
      const std::uint32_t colour = palette[picture.pixel(column, row)];
      image.SetRGB(x, y, (colour >> 16) & 0xFF, (colour >> 8) & 0xFF, colour & 0xFF);
    }
  }
  return image;
}

PictureFrame::PictureFrame(wxWindow* parent, Desk& desk, bool stretched)
    : wxFrame(parent, wxID_ANY, "Display Bitmap"),
      desk_(desk),
      stretched_(stretched),
      canvas_(new wxScrolledCanvas(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                   wxHSCROLL | wxVSCROLL | wxFULL_REPAINT_ON_RESIZE)),
      registration_(desk, *this) {
  canvas_->SetBackgroundStyle(wxBG_STYLE_PAINT);
  canvas_->Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(canvas_, 1, wxEXPAND);
  SetSizer(all);
  make_menu();
  refresh();
}

void PictureFrame::make_menu() {
  auto* menu = new wxMenu;
  menu->Append(kSaveItem, "&Save Picture ...\tCtrl+S", "Save the picture as a .png or .bmp file");
  menu->Append(kCopyItem, "&Copy\tCtrl+C", "Put the picture on the clipboard");
  menu->AppendSeparator();
  menu->Append(kRotateItem, "&Rotate Left\tCtrl+L", "Turn the picture to the left");
  menu->AppendCheckItem(kStretchItem, "S&tretch\tCtrl+Z", "Let the picture fill the window");
  menu->AppendSeparator();
  menu->Append(wxID_CLOSE, "C&lose\tEsc");
  auto* bar = new wxMenuBar;
  bar->Append(menu, "&Picture");
  SetMenuBar(bar);
  Bind(
      wxEVT_MENU, [this](wxCommandEvent&) { ask_and_save(); }, kSaveItem);
  Bind(
      wxEVT_MENU, [this](wxCommandEvent&) { desk_.run(kCopyBitmap); }, kCopyItem);
  Bind(
      wxEVT_MENU, [this](wxCommandEvent&) { desk_.run(kRotateLeft); }, kRotateItem);
  Bind(
      wxEVT_MENU,
      [this](wxCommandEvent&) {
        desk_.run(kStretchBitmap);
        refresh();  // the check mark went its own way when the command did not run
      },
      kStretchItem);
  Bind(
      wxEVT_MENU, [this](wxCommandEvent&) { Close(); }, wxID_CLOSE);
}

// Any command may have turned or replaced the picture.
void PictureFrame::show_change(Change) { refresh(); }

void PictureFrame::set_stretched(bool stretched) {
  stretched_ = stretched;
  fitted_ = wxSize();
  refresh();
}

void PictureFrame::refresh() {
  const auto& picture = desk_.session().picture;
  GetMenuBar()->Check(kStretchItem, stretched_);
  for (const int id : {kSaveItem, kCopyItem, kRotateItem}) GetMenuBar()->Enable(id, picture.has_value());
  const bool scrolls = picture && !stretched_;
  canvas_->SetScrollRate(scrolls ? FromDIP(kScrollStep) : 0, scrolls ? FromDIP(kScrollStep) : 0);
  canvas_->SetVirtualSize(scrolls ? FromDIP(size_of(*picture)) : wxSize(0, 0));
  fit_window();
  canvas_->Refresh();
}

// A picture of another size, a turned one for example, gets a window in which all of it is seen.
void PictureFrame::fit_window() {
  const auto& picture = desk_.session().picture;
  if (!picture || stretched_ || fitted_ == size_of(*picture) || IsMaximized() || IsFullScreen()) return;
  fitted_ = size_of(*picture);
  wxSize size = FromDIP(fitted_ + 2 * wxSize(kMargin, kMargin));
  size.IncTo(FromDIP(kSmallestArea));
  size.IncTo(GetClientSize());
  size.DecTo(wxDisplay(this).GetClientArea().GetSize() * 4 / 5);
  SetClientSize(size);
}

wxRect PictureFrame::place() const {
  const auto& picture = desk_.session().picture;
  if (!picture) return {};
  const wxRect place = picture_place(FromDIP(size_of(*picture)), canvas_->GetClientSize(), stretched_);
  return {canvas_->CalcScrolledPosition(place.GetTopLeft()), place.GetSize()};
}

void PictureFrame::paint() {
  wxAutoBufferedPaintDC dc(canvas_);
  dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE)));
  dc.Clear();
  const wxRect whole = place();
  const wxRect seen = whole.Intersect(canvas_->GetClientSize());
  if (seen.IsEmpty()) return;
  // In the screen's own pixels, which are smaller than the toolkit's on fine screens.
  const double scale = canvas_->GetContentScaleFactor();
  const auto pixels = [scale](const wxRect& rect) {
    const auto scaled = [scale](int value) { return static_cast<int>(std::lround(value * scale)); };
    return wxRect(scaled(rect.x), scaled(rect.y), scaled(rect.width), scaled(rect.height));
  };
  const wxImage image = draw_picture(*desk_.session().picture, pixels(whole), pixels(seen));
  dc.DrawBitmap(wxBitmap(image, wxBITMAP_SCREEN_DEPTH, scale), seen.GetTopLeft());
}

void PictureFrame::ask_and_save() {
  if (desk_.is_busy()) return;
  store::Settings& settings = desk_.session().settings;
  FileQuestion question{"Save Picture",
                        base::path_from_text(settings.SaveWorkingDirectory),
                        "screen.png",
                        {{"PNG pictures (*.png)", "*.png"}, {"Bitmaps (*.bmp)", "*.bmp"}},
                        0};
  const std::optional<std::filesystem::path> file = ask_file_to_save(this, question);
  if (file && save(*file)) settings.SaveWorkingDirectory = file->parent_path().string();
}

bool PictureFrame::save(const std::filesystem::path& file) {
  session::Session& session = desk_.session();
  if (!session.files.would_save_bitmap(file)) {
    session.front_end.message_box("Save Picture", "Pictures are saved as .png or .bmp files.");
    return false;
  }
  desk_.display().clear();
  return session.files.save(file, session.text_options());
}

bool copy_picture_to_clipboard(const session::Session& session) {
  if (!session.picture) return false;
  const wxRect all(size_of(*session.picture));
  const wxBitmap bitmap(draw_picture(*session.picture, all, all));
  const wxClipboardLocker locker;
  if (!locker || !wxTheClipboard->SetData(new wxBitmapDataObject(bitmap))) {
    session.front_end.write_line(1, "The clipboard is in use by another program. Try again.");
    return false;
  }
  wxTheClipboard->Flush();  // it stays when this program ends
  return true;
}

}  // namespace ui::wx
