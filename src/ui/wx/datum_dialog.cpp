#include "ui/wx/datum_dialog.h"

#include <wx/statline.h>

#include <algorithm>

#include "base/text.h"
#include "ui/options/datum_search.h"
#include "ui/wx/save_row.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr int kMargin = 10;
constexpr int kGap = 6;

wxStaticText* named_text(wxWindow* parent, const char* name) {
  auto* text = new wxStaticText(parent, wxID_ANY, "");
  text->SetName(name);
  return text;
}

}  // namespace

DatumDialog::DatumDialog(wxWindow* parent, session::Session& session, const DatumChoice& chosen)
    : wxDialog(parent, wxID_ANY, "Datum", wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      session_(session),
      choice_(chosen),
      names_(sorted_datums(session.datums)),
      notations_(OptionDraft(session).entries(*find_option("DMSMode"))) {
  auto* middle = new wxBoxSizer(wxHORIZONTAL);
  middle->Add(make_list(), wxSizerFlags(1).Expand().Border(wxRIGHT, FromDIP(2 * kMargin)));
  middle->Add(make_preview(), wxSizerFlags(1).Expand());
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(middle, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(kMargin)));
  sizer->Add(new wxStaticLine(this), wxSizerFlags().Expand());
  const auto take = [this] {
    take_over();
    was_saved_ = true;
    return true;
  };
  sizer->Add(make_save_row(*this, session_, take), wxSizerFlags().Expand().Border(wxALL, FromDIP(kMargin)));
  SetSizer(sizer);
  show_preview();
  narrow();
  sizer->SetSizeHints(this);
  CentreOnParent();
  search_->SetFocus();
}

wxSizer* DatumDialog::make_list() {
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  search_ = new wxTextCtrl(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
  search_->SetName("datum search");
  search_->SetHint("Search: any part of the name");
  search_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { narrow(); });
  search_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { go_into_list(); });
  search_->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_DOWN) {
      go_into_list();
    } else {
      event.Skip();
    }
  });
  list_ = new wxListBox(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(280, 320)));
  list_->SetName("datums");
  list_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { take_selection(); });
  list_->Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { AcceptAndClose(); });
  sizer->Add(search_, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(kGap)));
  sizer->Add(list_, wxSizerFlags(1).Expand());
  return sizer;
}

wxSizer* DatumDialog::make_preview() {
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  const auto add = [&](wxWindow* window, int space_above) {
    sizer->AddSpacer(FromDIP(space_above));
    sizer->Add(window, wxSizerFlags().Expand());
  };
  wxArrayString labels;
  for (const OptionEntry& entry : notations_) labels.Add(wx_text(entry.label));
  notation_ = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, labels);
  notation_->SetName("notation");
  store::Settings current;
  current.DMSMode = choice_.notation;
  const std::string word = store::key_text(current, "DMSMode").value_or("");
  notation_->SetSelection(
      static_cast<int>(std::ranges::find(notations_, word, &OptionEntry::text) - notations_.begin()));
  notation_->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) {
    store::Settings chosen;
    (void)store::set_key(chosen, "DMSMode", notations_[static_cast<std::size_t>(event.GetSelection())].text);
    choice_.notation = chosen.DMSMode;
    show_preview();
  });
  const PreviewPlace place = preview_place(session_, choice_.notation);
  const std::string origin = place.origin.empty() ? "type one" : place.origin;
  position_ = new wxTextCtrl(this, wxID_ANY, wx_text(place.text));
  position_->SetName("preview position");
  position_->SetHint("For example 51.5 -0.12");
  position_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { show_preview(); });
  datum_label_ = named_text(this, "datum label");
  shifted_ = named_text(this, "shifted position");
  shifted_->SetFont(shifted_->GetFont().Bold().Larger());
  distance_ = named_text(this, "shift distance");

  add(new wxStaticText(this, wxID_ANY, "Notation:"), 0);
  add(notation_, kGap);
  add(new wxStaticText(this, wxID_ANY, "A position in WGS-84 (" + wx_text(origin) + "):"), 3 * kMargin);
  add(position_, kGap);
  add(datum_label_, 2 * kMargin);
  add(shifted_, kGap);
  add(distance_, kGap);
  return sizer;
}

void DatumDialog::narrow() {
  shown_names_ = matching_datums(names_, record_text(search_->GetValue()));
  wxArrayString texts;
  for (const std::string& name : shown_names_) texts.Add(wx_text(name));
  list_->Set(texts);
  const auto is_chosen = [this](const std::string& name) { return base::equal_ignoring_case(name, choice_.datum); };
  auto place = std::ranges::find_if(shown_names_, is_chosen);
  // Whoever searches means the first of what is found; an unknown datum of the settings stays until then.
  if (place == shown_names_.end() && !search_->IsEmpty()) place = shown_names_.begin();
  if (place != shown_names_.end()) {
    list_->SetSelection(static_cast<int>(place - shown_names_.begin()));
    list_->EnsureVisible(list_->GetSelection());
    take_selection();
  }
  if (wxWindow* ok = FindWindow(wxID_OK); ok != nullptr) ok->Enable(!shown_names_.empty());
}

void DatumDialog::take_selection() {
  const int index = list_->GetSelection();
  if (index == wxNOT_FOUND) return;
  choice_.datum = shown_names_[static_cast<std::size_t>(index)];
  show_preview();
}

void DatumDialog::go_into_list() {
  if (shown_names_.empty()) return;
  if (list_->GetSelection() == wxNOT_FOUND) list_->SetSelection(0);
  take_selection();
  list_->SetFocus();
}

void DatumDialog::show_preview() {
  std::string problem;
  const auto preview =
      preview_datum(session_, choice_.datum, choice_.notation, record_text(position_->GetValue()), problem);
  datum_label_->SetLabel("In " + wx_text(choice_.datum) + ":");
  if (preview) {
    shifted_->SetLabel(wx_text(preview->position.first + "  " + preview->position.second));
    distance_->SetLabel(wx_text(base::format_text("%.1f m from there", preview->metres)));
  } else {
    shifted_->SetLabel("");
    distance_->SetLabel(position_->IsEmpty() ? wxString() : wx_text(problem));
  }
  Layout();
}

void DatumDialog::take_over() {
  session_.settings.externaldatum = choice_.datum;
  session_.settings.DMSMode = choice_.notation;
}

}  // namespace ui::wx
