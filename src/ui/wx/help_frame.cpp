#include "ui/wx/help_frame.h"

#include <wx/button.h>
#include <wx/filename.h>
#include <wx/filesys.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/utils.h>

#include "ui/wx/help.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

// In pixels of a plain screen.
const wxSize kSize(720, 620);
constexpr int kGap = 6;

}  // namespace

HelpFrame::HelpFrame(wxWindow* parent, const std::filesystem::path& manual)
    : wxFrame(parent, wxID_ANY, "Pelorix Manual", wxDefaultPosition, parent->FromDIP(kSize)),
      manual_(wxFileSystem::FileNameToURL(wxFileName(wx_path(manual)))),
      page_(new wxHtmlWindow(this)) {
  SetIcons(program_icons());
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(make_buttons(), 0, wxEXPAND);
  all->Add(page_, 1, wxEXPAND);
  SetSizer(all);
  page_->SetBorders(FromDIP(12));
  page_->SetStandardFonts();
  page_->Bind(wxEVT_HTML_LINK_CLICKED, [](wxHtmlLinkEvent& event) {
    const wxString target = event.GetLinkInfo().GetHref();
    if (target.StartsWith("http:") || target.StartsWith("https:")) {
      wxLaunchDefaultBrowser(target);
    } else {
      event.Skip();
    }
  });
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE) {
      Close();
    } else {
      event.Skip();
    }
  });
  show_contents();
  page_->SetFocus();
}

wxWindow* HelpFrame::make_buttons() {
  auto* panel = new wxPanel(this);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const auto add = [&](const wxString& label, auto action) {
    auto* button = new wxButton(panel, wxID_ANY, label);
    button->Bind(wxEVT_BUTTON, [this, action](wxCommandEvent&) {
      action();
      page_->SetFocus();
    });
    row->Add(button, 0, wxTOP | wxBOTTOM | wxLEFT, FromDIP(kGap));
    return button;
  };
  add("C&ontents", [this] { show_contents(); });
  wxButton* back = add("&Back", [this] { page_->HistoryBack(); });
  wxButton* forward = add("&Forward", [this] { page_->HistoryForward(); });
  row->AddStretchSpacer();
  wxButton* close = add("&Close", [this] { Close(); });
  row->GetItem(close)->SetFlag(wxALL);
  back->Bind(wxEVT_UPDATE_UI, [this](wxUpdateUIEvent& event) { event.Enable(page_->HistoryCanBack()); });
  forward->Bind(wxEVT_UPDATE_UI, [this](wxUpdateUIEvent& event) { event.Enable(page_->HistoryCanForward()); });
  panel->SetSizer(row);
  return panel;
}

void HelpFrame::show_contents() { page_->LoadPage(manual_); }

}  // namespace ui::wx
