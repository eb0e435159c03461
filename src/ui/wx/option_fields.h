// The control, or the controls, for one setting.
#pragma once

#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textentry.h>

#include <functional>

#include "ui/options/option_draft.h"

namespace ui::wx {

struct OptionField {
  const OptionRow* row = nullptr;
  wxSizer* sizer = nullptr;  // with all that belongs to it; its first control carries the key as its name
  wxWindow* control = nullptr;
  wxTextEntry* entry = nullptr;  // where free text is typed
  // The value as OptionDraft has it.
  std::function<std::string()> get;
  std::function<void(const std::string&)> set;
};

// `choose_datum` is what the button beside a datum does.
[[nodiscard]] OptionField make_option_field(wxWindow* parent, const OptionDraft& draft, const OptionRow& row,
                                            const std::function<void()>& choose_datum);

}  // namespace ui::wx
