#include "ui/wx/option_dialog.h"

#include <wx/statline.h>

#include "ui/wx/save_row.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr int kMargin = 10;
constexpr int kPagesWidth = 660;
constexpr int kPagesHeight = 480;

}  // namespace

OptionDialog::OptionDialog(wxWindow* parent, session::Session& session, const wxString& title,
                           const std::vector<OptionPage>& pages)
    : wxDialog(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      session_(session),
      draft_(session) {
  auto* middle = new wxBoxSizer(wxHORIZONTAL);
  if (pages.size() > 1) {
    list_ = new wxListBox(this, wxID_ANY);
    list_->SetName("pages");
    list_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) { show_page(event.GetSelection()); });
    middle->Add(list_, wxSizerFlags().Expand().Border(wxRIGHT, FromDIP(kMargin)));
  }
  book_ = new wxSimplebook(this);
  for (const OptionPage& page : pages) {
    panels_.push_back(new OptionPanel(book_, session_, draft_, page));
    book_->AddPage(panels_.back(), wx_text(page.title));
    if (list_ != nullptr) list_->Append(wx_text(page.title));
  }
  middle->Add(book_, wxSizerFlags(1).Expand());
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(middle, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(kMargin)));
  sizer->Add(new wxStaticLine(this), wxSizerFlags().Expand());
  sizer->Add(make_save_row(*this, session_, [this] { return TransferDataFromWindow(); }),
             wxSizerFlags().Expand().Border(wxALL, FromDIP(kMargin)));
  SetSizer(sizer);
  show_page(0);
  if (list_ != nullptr) {
    book_->SetMinSize(FromDIP(wxSize(kPagesWidth, kPagesHeight)));
    sizer->SetSizeHints(this);
  } else {
    fit_single_page();
  }
  CentreOnParent();
}

void OptionDialog::fit_single_page() {
  book_->SetMinSize(panels_.front()->GetSizer()->CalcMin());
  GetSizer()->SetSizeHints(this);
}

void OptionDialog::show_page(int page) {
  panels_[static_cast<std::size_t>(page)]->make_fields();
  book_->SetSelection(static_cast<std::size_t>(page));
  if (list_ != nullptr) list_->SetSelection(page);
}

bool OptionDialog::take_panels() {
  int bad_page = wxNOT_FOUND;
  // From the last, so that the first field with something wrong has the focus in the end.
  for (int page = static_cast<int>(panels_.size()) - 1; page >= 0; --page)
    if (!panels_[static_cast<std::size_t>(page)]->take()) bad_page = page;
  if (bad_page != wxNOT_FOUND) {
    show_page(bad_page);
    return false;
  }
  const OptionProblem problem = draft_.contradiction();
  if (problem.text.empty()) return true;
  for (std::size_t page = 0; page < panels_.size(); ++page) {
    if (!panels_[page]->show_problem(problem)) continue;
    show_page(static_cast<int>(page));
    return false;
  }
  return true;  // between settings that are not shown here
}

bool OptionDialog::TransferDataFromWindow() {
  const bool all_good = take_panels();
  if (list_ == nullptr) fit_single_page();  // with the texts of what is wrong
  if (all_good) session_.settings = draft_.settings();
  return all_good;
}

}  // namespace ui::wx
