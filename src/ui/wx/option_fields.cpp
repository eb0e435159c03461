#include "ui/wx/option_fields.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/dirdlg.h>
#include <wx/textctrl.h>

#include <array>

#include "base/system_file.h"
#include "base/text.h"
#include "ui/ports.h"
#include "ui/wx/symbol_choice.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr int kGap = 6;
constexpr int kNumberWidth = 110;
constexpr int kTextWidth = 300;

wxSizer* in_a_line(wxWindow* first, wxWindow* second = nullptr) {
  auto* sizer = new wxBoxSizer(wxHORIZONTAL);
  sizer->Add(first, wxSizerFlags().CentreVertical());
  if (second != nullptr) sizer->Add(second, wxSizerFlags().CentreVertical().Border(wxLEFT, first->FromDIP(kGap)));
  return sizer;
}

wxTextCtrl* text_control(wxWindow* parent, const OptionRow& row, int width) {
  auto* control = new wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition, parent->FromDIP(wxSize(width, -1)));
  control->SetName(wx_text(row.key));
  return control;
}

OptionField text_field(const OptionRow& row, wxTextCtrl* control, wxWindow* beside) {
  return {&row,
          in_a_line(control, beside),
          control,
          control,
          [control] { return record_text(control->GetValue()); },
          [control](const std::string& text) { control->ChangeValue(wx_text(text)); }};
}

OptionField number_field(wxWindow* parent, const OptionRow& row) {
  wxWindow* hint = row.hint.empty() ? nullptr : new wxStaticText(parent, wxID_ANY, wx_text(row.hint));
  return text_field(row, text_control(parent, row, kNumberWidth), hint);
}

OptionField datum_field(wxWindow* parent, const OptionRow& row, const std::function<void()>& choose_datum) {
  auto* button = new wxButton(parent, wxID_ANY, "Choose...");
  button->Bind(wxEVT_BUTTON, [choose_datum](wxCommandEvent&) { choose_datum(); });
  return text_field(row, text_control(parent, row, kTextWidth), button);
}

OptionField directory_field(wxWindow* parent, const OptionRow& row) {
  wxTextCtrl* control = text_control(parent, row, kTextWidth);
  auto* button = new wxButton(parent, wxID_ANY, "Browse...");
  button->Bind(wxEVT_BUTTON, [control, &row](wxCommandEvent&) {
    wxDirDialog dialog(control, wx_text(row.label), control->GetValue());
    if (dialog.ShowModal() == wxID_OK) control->ChangeValue(dialog.GetPath());
  });
  // Names of folders are those of the system, not texts of records.
  return {&row,
          in_a_line(control, button),
          control,
          nullptr,
          [control] { return path_of(control->GetValue()).string(); },
          [control](const std::string& text) { control->ChangeValue(wx_path(base::path_from_text(text))); }};
}

OptionField port_field(wxWindow* parent, const OptionDraft& draft, const OptionRow& row) {
  wxArrayString names;
  for (const PortChoice& choice : port_choices(draft.session())) names.Add(wx_text(choice.name));
  auto* control =
      new wxComboBox(parent, wxID_ANY, "", wxDefaultPosition, parent->FromDIP(wxSize(kTextWidth, -1)), names);
  control->SetName(wx_text(row.key));
  return {&row,
          in_a_line(control),
          control,
          control,
          [control] { return record_text(control->GetValue()); },
          [control](const std::string& text) { control->SetValue(wx_text(text)); }};
}

OptionField flag_field(wxWindow* parent, const OptionRow& row) {
  auto* control = new wxCheckBox(parent, wxID_ANY, wx_text(row.label));
  control->SetName(wx_text(row.key));
  // A flag may have been counted up in the file, or by a command option: that stays while it stays on.
  auto on = std::make_shared<std::string>("1");
  return {&row,
          in_a_line(control),
          control,
          nullptr,
          [control, on] { return control->GetValue() ? *on : std::string("0"); },
          [control, on](const std::string& text) {
            control->SetValue(text != "0");
            if (text != "0") *on = text;
          }};
}

OptionField bits_field(wxWindow* parent, const OptionRow& row) {
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  std::vector<std::pair<wxCheckBox*, int>> boxes;
  int known = 0;
  for (const OptionChoice& choice : row.choices) {
    auto* box = new wxCheckBox(parent, wxID_ANY, wx_text(choice.label));
    box->SetName(wx_text(row.key) + (boxes.empty() ? wxString() : " " + wx_text(choice.word)));
    sizer->Add(box, wxSizerFlags().Border(wxBOTTOM, boxes.empty() ? parent->FromDIP(kGap) : 0));
    boxes.emplace_back(box, static_cast<int>(base::leading_integer(choice.word)));
    known |= boxes.back().second;
  }
  auto others = std::make_shared<int>(0);  // bits that mean nothing stay as they are
  return {&row,
          sizer,
          boxes.front().first,
          nullptr,
          [boxes, others] {
            int value = *others;
            for (const auto& [box, bit] : boxes) value |= box->GetValue() ? bit : 0;
            return std::to_string(value);
          },
          [boxes, others, known](const std::string& text) {
            const int value = static_cast<int>(base::leading_integer(text));
            *others = value & ~known;
            for (const auto& [box, bit] : boxes) box->SetValue((value & bit) != 0);
          }};
}

OptionField last_slot_field(wxWindow* parent, const OptionRow& row) {
  wxTextCtrl* control = text_control(parent, row, kNumberWidth);
  auto* all = new wxCheckBox(parent, wxID_ANY, "up to the last slot");
  all->SetName(wx_text(row.key) + " all");
  all->Bind(wxEVT_CHECKBOX, [control](wxCommandEvent& event) { control->Enable(!event.IsChecked()); });
  auto last = std::make_shared<std::string>(kUpToTheLast);
  return {&row,
          in_a_line(control, all),
          control,
          nullptr,
          [control, all, last] { return all->GetValue() ? *last : record_text(control->GetValue()); },
          [control, all, last](const std::string& text) {
            const bool is_all = text == kUpToTheLast || base::leading_integer(text) < 0;
            if (is_all) *last = text;
            all->SetValue(is_all);
            control->Enable(!is_all);
            control->ChangeValue(is_all ? wxString() : wx_text(text));
          }};
}

// A choice of entries; its get and set are bound to it.
struct EntryChoice {
  wxChoice* control;
  std::vector<OptionEntry> entries;

  EntryChoice(wxWindow* parent, std::vector<OptionEntry> offered) : entries(std::move(offered)) {
    wxArrayString labels;
    for (const OptionEntry& entry : entries) labels.Add(wx_text(entry.label));
    control = new wxChoice(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, labels);
  }
  [[nodiscard]] std::string get() const {
    const int index = control->GetSelection();
    return index == wxNOT_FOUND ? std::string() : entries[static_cast<std::size_t>(index)].text;
  }
  void set(const std::string& text) const {
    const auto place = std::ranges::find(entries, text, &OptionEntry::text);
    control->SetSelection(place == entries.end() ? wxNOT_FOUND : static_cast<int>(place - entries.begin()));
  }
};

OptionField choice_field(wxWindow* parent, const OptionDraft& draft, const OptionRow& row) {
  const auto choice = std::make_shared<EntryChoice>(parent, draft.entries(row));
  choice->control->SetName(wx_text(row.key));
  return {&row,    in_a_line(choice->control),         choice->control,
          nullptr, [choice] { return choice->get(); }, [choice](const std::string& text) { choice->set(text); }};
}

OptionField symbols_field(wxWindow* parent, const OptionDraft& draft, const OptionRow& row) {
  const std::string codes = draft.text(row);
  auto* grid = new wxFlexGridSizer(4, wxSize(parent->FromDIP(2 * kGap), parent->FromDIP(kGap)));
  std::vector<SymbolChoice*> choices;  // children of the parent, as the field is
  for (const std::string_view code : base::split(codes, ',')) {
    const wxString number = std::to_string(choices.size());
    grid->Add(new wxStaticText(parent, wxID_ANY, number), wxSizerFlags().CentreVertical().Right());
    auto* choice = new SymbolChoice(parent, static_cast<int>(base::leading_integer(code)));
    choice->SetName(wx_text(row.key) + (choices.empty() ? wxString() : " " + number));
    choice->SetMinSize(parent->FromDIP(wxSize(190, -1)));
    choice->SetToolTip(wx_text(row.hint));
    grid->Add(choice);
    choices.push_back(choice);
  }
  return {&row,
          grid,
          choices.front(),
          nullptr,
          [choices] {
            std::string text;
            for (const SymbolChoice* choice : choices)
              text += (text.empty() ? "" : ",") + std::to_string(choice->code());
            return text;
          },
          [choices](const std::string& text) {
            const std::vector<std::string_view> pieces = base::split(text, ',');
            for (std::size_t i = 0; i < choices.size() && i < pieces.size(); ++i)
              choices[i]->set_code(static_cast<int>(base::leading_integer(pieces[i])));
          }};
}

}  // namespace

OptionField make_option_field(wxWindow* parent, const OptionDraft& draft, const OptionRow& row,
                              const std::function<void()>& choose_datum) {
  switch (row.kind) {
    case OptionKind::Flag:
      return flag_field(parent, row);
    case OptionKind::Number:
    case OptionKind::Hours:
    case OptionKind::Latitude:
    case OptionKind::Longitude:
      return number_field(parent, row);
    case OptionKind::Text:
      return text_field(row, text_control(parent, row, kTextWidth), nullptr);
    case OptionKind::Bits:
      return bits_field(parent, row);
    case OptionKind::Directory:
      return directory_field(parent, row);
    case OptionKind::Port:
      return port_field(parent, draft, row);
    case OptionKind::Datum:
      return datum_field(parent, row, choose_datum);
    case OptionKind::LastSlot:
      return last_slot_field(parent, row);
    case OptionKind::Symbols16:
      return symbols_field(parent, draft, row);
    default:
      return choice_field(parent, draft, row);
  }
}

}  // namespace ui::wx
