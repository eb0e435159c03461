#include "ui/wx/symbol_choice.h"

#include <wx/imaglist.h>
#include <wx/sizer.h>

#include "ui/item_texts.h"
#include "ui/wx/symbol_pictures.h"
#include "ui/wx/text.h"

namespace ui::wx {

wxDEFINE_EVENT(kSymbolPicked, wxCommandEvent);

namespace {

constexpr int kPictureSize = 16;

std::vector<PickRow> all_symbols() {
  std::vector<PickRow> rows;
  for (const store::SymbolRow& row : store::kSymbols) rows.push_back({wx_text(symbol_name(row.code)), row.code});
  return rows;
}

}  // namespace

// Virtual, so that all waypoints of a full store can be rows.
class PickDialog::List : public wxListView {
 public:
  List(PickDialog& dialog, bool with_symbols)
      : wxListView(&dialog, wxID_ANY, wxDefaultPosition, dialog.FromDIP(wxSize(320, 360)),
                   wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL | wxLC_NO_HEADER),
        dialog_(dialog),
        with_symbols_(with_symbols) {
    AppendColumn("", wxLIST_FORMAT_LEFT, FromDIP(295));
    if (!with_symbols) return;
    const int size = FromDIP(kPictureSize);
    auto* pictures = new wxImageList(size, size);
    for (const PickRow& row : dialog.rows_) pictures->Add(symbol_bitmap(row.value, size));
    AssignImageList(pictures, wxIMAGE_LIST_SMALL);
  }

 private:
  wxString OnGetItemText(long row, long) const override {
    return dialog_.rows_[dialog_.shown_[static_cast<std::size_t>(row)]].text;
  }
  int OnGetItemImage(long row) const override {
    return with_symbols_ ? static_cast<int>(dialog_.shown_[static_cast<std::size_t>(row)]) : -1;
  }

  const PickDialog& dialog_;
  const bool with_symbols_;
};

PickDialog::PickDialog(wxWindow* parent, const wxString& title, std::vector<PickRow> rows, bool with_symbols)
    : wxDialog(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      rows_(std::move(rows)) {
  auto* text = new wxSearchCtrl(this, wxID_ANY);
  text->SetDescriptiveText("Search");
  list_ = new List(*this, with_symbols);
  const int gap = FromDIP(8);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(text, wxSizerFlags().Expand().Border(wxALL, gap));
  sizer->Add(list_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, gap));
  sizer->Add(CreateStdDialogButtonSizer(wxOK | wxCANCEL), wxSizerFlags().Expand().Border(wxALL, gap));
  SetSizerAndFit(sizer);
  CentreOnParent();
  search("");
  text->Bind(wxEVT_TEXT, [this, text](wxCommandEvent&) { search(text->GetValue()); });
  list_->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { EndModal(wxID_OK); });
  Bind(
      wxEVT_UPDATE_UI, [this](wxUpdateUIEvent& event) { event.Enable(value() >= 0); }, wxID_OK);
}

void PickDialog::search(const wxString& text) {
  const int chosen = value();
  const wxString wanted = text.Lower();
  shown_.clear();
  for (std::size_t i = 0; i < rows_.size(); ++i)
    if (rows_[i].text.Lower().Contains(wanted)) shown_.push_back(i);
  refill();
  select(chosen);
  // What is left over is what was looked for.
  if (shown_.size() == 1) list_->Select(0);
}

void PickDialog::refill() {
  for (long row = list_->GetFirstSelected(); row >= 0; row = list_->GetNextSelected(row)) list_->Select(row, false);
  list_->SetItemCount(static_cast<long>(shown_.size()));
  list_->Refresh();
}

void PickDialog::select(int value) {
  for (std::size_t row = 0; row < shown_.size(); ++row) {
    if (rows_[shown_[row]].value != value) continue;
    list_->Select(static_cast<long>(row));
    list_->Focus(static_cast<long>(row));
    return;
  }
}

int PickDialog::value() const {
  const long row = list_->GetFirstSelected();
  return row >= 0 && row < shown_rows() ? rows_[shown_[static_cast<std::size_t>(row)]].value : -1;
}

SymbolChoice::SymbolChoice(wxWindow* parent, int code)
    : wxButton(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxBU_LEFT) {
  set_code(code);
  Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { pick(); });
}

void SymbolChoice::set_code(int code) {
  code_ = code;
  SetLabel(wx_text(symbol_name(code)));
  SetBitmap(symbol_bitmap(code, FromDIP(kPictureSize)));
  SetBitmapMargins(FromDIP(4), 0);
}

void SymbolChoice::pick() {
  PickDialog dialog(wxGetTopLevelParent(this), "Symbol", all_symbols(), true);
  dialog.select(code_);
  if (dialog.ShowModal() != wxID_OK || dialog.value() < 0) return;
  set_code(dialog.value());
  wxCommandEvent event(kSymbolPicked, GetId());
  event.SetEventObject(this);
  ProcessWindowEvent(event);
}

}  // namespace ui::wx
