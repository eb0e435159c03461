#include "ui/wx/edit_form.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <array>

#include "base/text.h"
#include "ui/wx/symbol_choice.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr std::array kPageNames{"General", "Garmin Details"};
constexpr int kMessageWidth = 230;
constexpr int kFieldWidth = 400;

// Readable on the ground of the theme.
wxColour problem_colour() {
  return wxSystemSettings::GetAppearance().IsUsingDarkBackground() ? wxColour(255, 138, 128) : wxColour(183, 28, 28);
}

std::string upper_first(std::string text) {
  if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 'a' + 'A');
  return text;
}

wxString choice_name(const FieldChoice& choice) {
  return choice.name.empty() ? wxString::Format("(%d)", choice.value)
                             : wxString::FromUTF8(choice.name.data(), choice.name.size());
}

}  // namespace

EditForm::EditForm(wxWindow* parent, ItemForm& form) : form_(form), rows_(form.fields().size()) {
  const auto& fields = form_.fields();
  const bool has_pages = std::ranges::any_of(fields, [](const auto& field) { return field.row->page > 0; });
  if (has_pages) {
    book_ = new wxNotebook(parent, wxID_ANY);
    window_ = book_;
    for (std::size_t page = 0; page < kPageNames.size(); ++page)
      book_->AddPage(make_page(book_, static_cast<int>(page)), kPageNames[page]);
  } else {
    window_ = make_page(parent, 0);
  }
  for (std::size_t i = 0; i < fields.size(); ++i) show_verdict(i, {}, form_.judge(i).note);
}

wxWindow* EditForm::make_page(wxWindow* parent, int page) {
  auto* panel = new wxPanel(parent);
  auto* grid = new wxFlexGridSizer(3, panel->FromDIP(wxSize(10, 6)));
  grid->AddGrowableCol(1, 1);
  const auto& fields = form_.fields();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const auto& field = fields[i];
    if (field.row->page != page) continue;
    const bool is_flag = field.row->kind == FieldKind::Flag;
    // Made before its control, as screen readers and mnemonics expect it.
    grid->Add(new wxStaticText(panel, wxID_ANY, is_flag ? wxString() : wxString::FromUTF8(field.label) + ":"),
              wxSizerFlags().CentreVertical());
    Row& row = rows_[i];
    row.page = page;
    row.control = make_control(panel, i);
    grid->Add(row.control, wxSizerFlags().Expand().CentreVertical());
    row.message = new wxStaticText(panel, wxID_ANY, "");
    row.message->SetMinSize(panel->FromDIP(wxSize(kMessageWidth, -1)));
    grid->Add(row.message, wxSizerFlags().CentreVertical());
    if (field.row->kind != FieldKind::Position) continue;
    row.below = new wxStaticText(panel, wxID_ANY, "");
    grid->AddSpacer(0);
    grid->Add(row.below);
    grid->AddSpacer(0);
  }
  auto* border = new wxBoxSizer(wxVERTICAL);
  border->Add(grid, wxSizerFlags(1).Expand().Border(wxALL, panel->FromDIP(10)));
  panel->SetSizer(border);
  return panel;
}

wxWindow* EditForm::make_control(wxWindow* parent, std::size_t field) {
  const ItemForm::Field& shown = form_.fields()[field];
  const wxString text = wxString::FromUTF8(shown.text);
  const auto value = static_cast<int>(base::leading_integer(shown.text));
  switch (shown.row->kind) {
    case FieldKind::Flag: {
      auto* box = new wxCheckBox(parent, wxID_ANY, wxString::FromUTF8(shown.label));
      box->SetValue(value != 0);
      box->Bind(wxEVT_CHECKBOX, [this, field](wxCommandEvent& e) { on_change(field, e.IsChecked() ? "1" : "0"); });
      return box;
    }
    case FieldKind::Choice: {
      auto* list = new wxChoice(parent, wxID_ANY);
      for (const FieldChoice& choice : shown.choices) {
        list->Append(choice_name(choice));
        if (choice.value == value) list->SetSelection(static_cast<int>(list->GetCount()) - 1);
      }
      list->Bind(wxEVT_CHOICE, [this, field](wxCommandEvent& event) {
        const auto& choices = form_.fields()[field].choices;
        on_change(field, std::to_string(choices[static_cast<std::size_t>(event.GetSelection())].value));
      });
      return list;
    }
    case FieldKind::Symbol: {
      auto* button = new SymbolChoice(parent, value);
      button->Bind(kSymbolPicked,
                   [this, field, button](wxCommandEvent&) { on_change(field, std::to_string(button->code())); });
      return button;
    }
    default: {
      auto* entry = new wxTextCtrl(parent, wxID_ANY, text);
      entry->SetMinSize(parent->FromDIP(wxSize(kFieldWidth, -1)));
      entry->Bind(wxEVT_TEXT,
                  [this, field, entry](wxCommandEvent&) { on_change(field, entry->GetValue().utf8_string()); });
      return entry;
    }
  }
}

void EditForm::on_change(std::size_t field, std::string text) {
  form_.set_text(field, std::move(text));
  // Nobody is told off for half a word: problems wait for the OK button, but those that were put right go.
  show_verdict(field, {}, form_.judge(field).note);
  update_layout();
}

void EditForm::show_verdict(std::size_t field, const std::string& problem, const std::string& note) {
  const Row& row = rows_[field];
  if (row.below != nullptr) row.below->SetLabelText(wxString::FromUTF8(note.empty() ? note : "= " + note));
  const bool has_problem = !problem.empty();
  const std::string text = has_problem ? upper_first(problem) : row.below == nullptr ? note : std::string();
  row.message->SetForegroundColour(has_problem ? problem_colour()
                                               : wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
  row.message->SetLabelText(wxString::FromUTF8(text));
  row.message->Wrap(row.message->FromDIP(kMessageWidth));
}

void EditForm::update_layout() {
  wxWindow* top = wxGetTopLevelParent(window_);
  for (const Row& row : rows_) row.control->GetParent()->Layout();
  const wxSize needed = top->GetSizer() == nullptr ? wxSize() : top->GetSizer()->ComputeFittingWindowSize(top);
  wxSize size = top->GetSize();
  size.IncTo(needed);
  if (size != top->GetSize()) top->SetSize(size);
}

bool EditForm::show_problems(const std::vector<std::string>& problems) {
  for (std::size_t i = 0; i < rows_.size(); ++i) show_verdict(i, problems[i], form_.judge(i).note);
  update_layout();
  const auto first = std::ranges::find_if(problems, [](const std::string& problem) { return !problem.empty(); });
  if (first == problems.end()) return true;
  const Row& row = rows_[static_cast<std::size_t>(first - problems.begin())];
  if (book_ != nullptr) book_->SetSelection(static_cast<std::size_t>(row.page));
  row.control->SetFocus();
  return false;
}

wxString EditForm::message(std::string_view id) const {
  wxString text = rows_[form_.find(id)].message->GetLabelText();
  text.Replace("\n", " ");
  return text;
}

}  // namespace ui::wx
