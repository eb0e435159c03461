#include "ui/wx/window_screen.h"

#include <wx/choicdlg.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/statusbr.h>
#include <wx/utils.h>

#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr int kReadinessField = 1;  // counted from 0
constexpr std::chrono::milliseconds kBetweenTakings{10};

}  // namespace

void WindowScreen::attach(wxFrame& frame) {
  frame_ = &frame;
  guard_ = std::make_unique<InputGuard>(frame);
  auto* panel = new wxPanel(&frame, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS, "output lines");
  auto* column = new wxBoxSizer(wxVERTICAL);
  for (wxStaticText*& line : lines_) {
    line = new wxStaticText(panel, wxID_ANY, " ", wxDefaultPosition, wxDefaultSize,
                            wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    column->Add(line, 1, wxEXPAND | wxLEFT | wxRIGHT, frame.FromDIP(8));
  }
  panel->SetSizer(column);
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(panel, 1, wxEXPAND);
  frame.SetSizer(all);
  wxStatusBar* bar = frame.CreateStatusBar(3);
  make_room_for_hints(false);
  gauge_ = new wxGauge(bar, wxID_ANY, 1, wxDefaultPosition, wxDefaultSize, wxGA_HORIZONTAL | wxGA_SMOOTH);
  gauge_->Hide();
  bar->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    place_gauge();
    event.Skip();
  });
}

void WindowScreen::make_room_for_hints(bool room) {
  static constexpr std::array<int, 3> kUsual{-4, -4, -3}, kForHints{-20, -1, -1};  // negative: in proportion
  const std::array<int, 3>& widths = room ? kForHints : kUsual;
  frame_->GetStatusBar()->SetStatusWidths(static_cast<int>(widths.size()), widths.data());
}

void WindowScreen::detach() {
  frame_ = nullptr;
  gauge_ = nullptr;
  lines_.fill(nullptr);
}

void WindowScreen::begin_command() { close_agreed_ = false; }

void WindowScreen::end_command() {
  if (!is_polling_) return;
  is_polling_ = false;
  enable_menus(true);
}

void WindowScreen::enable_menus(bool enabled) {
  if (frame_ == nullptr || frame_->GetMenuBar() == nullptr) return;
  wxMenuBar& bar = *frame_->GetMenuBar();
  for (std::size_t i = 0; i < bar.GetMenuCount(); ++i) bar.EnableTop(i, enabled);
}

void WindowScreen::place_gauge() {
  wxRect place;
  if (gauge_ != nullptr && frame_->GetStatusBar()->GetFieldRect(kReadinessField, place)) {
    if (place.width <= 0 || place.height <= 0) return;  // not laid out yet
    const int height = gauge_->GetBestSize().y;
    gauge_->SetSize(place.x, place.y + (place.height - height) / 2, place.width, height);
  }
}

void WindowScreen::set_readiness(const wxString& text) {
  readiness_ = text;
  if (frame_ != nullptr && !gauge_->IsShown()) frame_->SetStatusText(text, kReadinessField);
}

void WindowScreen::paint_line(int line, std::string_view text) {
  wxStaticText* label = lines_[static_cast<std::size_t>(line) - 1];
  if (label == nullptr) return;
  const wxString shown = wx_text(text);
  label->SetLabelText(shown);  // a mnemonic is nothing that a message has
  // What does not fit can still be read.
  label->SetToolTip(label->GetTextExtent(shown).x > label->GetSize().x ? shown : wxString());
}

void WindowScreen::paint_status(int field, std::string_view text) {
  if (frame_ != nullptr) frame_->SetStatusText(wx_text(text), field - 1);
}

void WindowScreen::paint_title(std::string_view text) {
  if (frame_ != nullptr) frame_->SetTitle(wx_text(text));
}

void WindowScreen::paint_progress(int step, int steps) {
  if (gauge_ == nullptr) return;
  const bool is_shown = gauge_->IsShown();
  if (steps > 0) {
    if (gauge_->GetRange() != steps) gauge_->SetRange(steps);
    gauge_->SetValue(step);
  }
  if (is_shown == (steps > 0)) return;
  gauge_->Show(steps > 0);
  frame_->SetStatusText(steps > 0 ? wxString() : readiness_, kReadinessField);
  place_gauge();
  if (steps > 0) {
    wxBeginBusyCursor();
  } else {
    wxEndBusyCursor();
  }
}

void WindowScreen::show_box(std::string_view title, std::string_view text) {
  wxMessageBox(wx_text(text), wx_text(title), wxOK | wxICON_EXCLAMATION, frame_);
}

bool WindowScreen::ask(std::string_view title, std::string_view question) {
  return wxMessageBox(wx_text(question), wx_text(title), wxYES_NO | wxICON_QUESTION, frame_) == wxYES;
}

bool WindowScreen::choose(std::string_view title, std::span<base::Choice> choices) {
  wxArrayString labels;
  wxArrayInt chosen;
  for (const base::Choice& choice : choices) {
    if (choice.chosen) chosen.Add(static_cast<int>(labels.size()));
    labels.Add(wx_text(choice.label));
  }
  wxMultiChoiceDialog dialog(frame_, "What shall be written?", wx_text(title), labels);
  dialog.SetSelections(chosen);
  if (dialog.ShowModal() != wxID_OK) return false;
  for (base::Choice& choice : choices) choice.chosen = false;
  for (const int index : dialog.GetSelections()) choices[static_cast<std::size_t>(index)].chosen = true;
  return true;
}

void WindowScreen::beep() { wxBell(); }

bool WindowScreen::take_abort_request() {
  if (guard_ == nullptr || frame_ == nullptr) return false;
  // Painting costs more than asking, and is asked for with every byte that does not come.
  const std::chrono::microseconds now = clock_.monotonic();
  if (is_polling_ && now - last_taken_ < kBetweenTakings) return false;
  if (!is_polling_) {
    is_polling_ = true;
    enable_menus(false);
    lines_.front()->GetParent()->SetFocus();
  }
  const bool esc = guard_->take_events();
  last_taken_ = clock_.monotonic();
  if (guard_->take_close_request() && !close_agreed_) {
    close_agreed_ = ask("Program Exit", "A transfer is running. Do you really wish to abort it and exit?");
    return esc || close_agreed_;
  }
  return esc;
}

}  // namespace ui::wx
