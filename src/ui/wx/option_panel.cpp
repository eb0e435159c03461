#include "ui/wx/option_panel.h"

#include <algorithm>

#include "ui/wx/datum_dialog.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr int kMargin = 12;
constexpr int kGap = 6;

// A flag says itself what it is, and the sixteen symbols have their heading.
bool has_label(const OptionRow& row) { return row.kind != OptionKind::Flag && row.kind != OptionKind::Symbols16; }

wxStaticText* bold_text(wxWindow* parent, const wxString& text) {
  auto* control = new wxStaticText(parent, wxID_ANY, text);
  control->SetFont(control->GetFont().Bold());
  return control;
}

int widest_label(const wxWindow& window, const OptionPage& page) {
  int width = 0;
  for (const OptionRow* row : page.rows)
    if (has_label(*row)) width = std::max(width, window.GetTextExtent(wx_text(row->label) + ":").x);
  return width;
}

}  // namespace

OptionPanel::OptionPanel(wxWindow* parent, session::Session& session, OptionDraft& draft, OptionPage page)
    : wxScrolledWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxVSCROLL | wxTAB_TRAVERSAL),
      session_(session),
      draft_(draft),
      page_(std::move(page)) {
  SetScrollRate(0, FromDIP(10));
}

void OptionPanel::make_fields() {
  if (!lines_.empty()) return;
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  const int label_width = widest_label(*this, page_);
  std::string_view section;
  for (const OptionRow* row : page_.rows) {
    if (row->section != section) {
      section = row->section;
      sizer->Add(bold_text(this, wx_text(section)), wxSizerFlags().Border(wxTOP | wxLEFT | wxRIGHT, FromDIP(kMargin)));
    }
    add_line(*sizer, *row, label_width);
  }
  sizer->AddSpacer(FromDIP(kMargin));
  SetSizer(sizer);
  FitInside();
}

void OptionPanel::add_line(wxSizer& sizer, const OptionRow& row, int label_width) {
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  line->AddSpacer(FromDIP(2 * kMargin));
  if (has_label(row)) {
    auto* label = new wxStaticText(this, wxID_ANY, wx_text(row.label) + ":");
    label->SetMinSize(wxSize(label_width, -1));
    line->Add(label, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kMargin)));
  }
  OptionField field = make_option_field(this, draft_, row, [this] { choose_datum(); });
  field.set(draft_.text(row));
  if (!row.hint.empty()) field.control->SetToolTip(wx_text(row.hint));
  line->Add(field.sizer, wxSizerFlags().CentreVertical());
  wxStaticText* problem = bold_text(this, "");
  problem->SetName(wx_text(row.key) + " problem");
  problem->Hide();
  sizer.Add(line, wxSizerFlags().Border(wxTOP | wxRIGHT, FromDIP(kGap)));
  sizer.Add(problem, wxSizerFlags().Border(wxLEFT, FromDIP(3 * kMargin) + (has_label(row) ? label_width : 0)));
  lines_.push_back({std::move(field), problem});
}

void OptionPanel::set_problem(const Line& line, const std::string& text) {
  line.problem->SetLabel(text.empty() ? wxString() : wx_text(text + "."));
  line.problem->Show(!text.empty());
}

std::string OptionPanel::take_field(const OptionField& field) {
  const std::string text = field.get();
  if (field.entry != nullptr && wx_text(text) != field.entry->GetValue()) {
    field.entry->ChangeValue(wx_text(text));
    return "Letters that files of receivers cannot hold were replaced: is it right now?";
  }
  return draft_.take(*field.row, text);
}

bool OptionPanel::take() {
  if (lines_.empty()) return true;
  const Line* first_bad = nullptr;
  for (const Line& line : lines_) {
    const std::string problem = take_field(line.field);
    set_problem(line, problem);
    if (!problem.empty() && first_bad == nullptr) first_bad = &line;
  }
  FitInside();
  if (first_bad != nullptr) go_to(*first_bad);
  return first_bad == nullptr;
}

void OptionPanel::go_to(const Line& line) {
  line.field.control->SetFocus();
  // The focus scrolls to the field; what is said of it stands below.
  int unit = 0, first = 0;
  GetScrollPixelsPerUnit(nullptr, &unit);
  GetViewStart(nullptr, &first);
  const int hidden = line.problem->GetRect().GetBottom() + FromDIP(kGap) - GetClientSize().y;
  if (hidden > 0 && unit > 0) Scroll(0, first + hidden / unit + 1);
}

bool OptionPanel::show_problem(const OptionProblem& problem) {
  const auto line = std::ranges::find_if(lines_, [&](const Line& one) { return one.field.row->key == problem.key; });
  if (line == lines_.end()) return false;
  set_problem(*line, problem.text);
  FitInside();
  go_to(*line);
  return true;
}

OptionField* OptionPanel::find(std::string_view key) {
  const auto line = std::ranges::find_if(lines_, [&](const Line& one) { return one.field.row->key == key; });
  return line == lines_.end() ? nullptr : &line->field;
}

void OptionPanel::choose_datum() {
  OptionField* datum = find("externaldatum");
  OptionField* notation = find("DMSMode");
  store::Settings shown;
  (void)store::set_key(shown, "externaldatum", datum->get());
  (void)store::set_key(shown, "DMSMode", notation->get());
  DatumDialog dialog(this, session_, {shown.externaldatum, shown.DMSMode});
  if (dialog.ShowModal() != wxID_OK && !dialog.was_saved()) return;
  shown.externaldatum = dialog.choice().datum;
  shown.DMSMode = dialog.choice().notation;
  datum->set(shown.externaldatum);
  notation->set(store::key_text(shown, "DMSMode").value_or(""));
}

}  // namespace ui::wx
