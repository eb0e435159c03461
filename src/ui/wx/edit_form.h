// The controls of a form: one row for each field, with what is to be said of it beside.
#pragma once

#include <wx/bookctrl.h>
#include <wx/stattext.h>

#include <string_view>
#include <vector>

#include "ui/editing/item_form.h"

namespace ui::wx {

// Every change goes into the form at once, and shows how it was understood.
class EditForm {
 public:
  // The form must outlive this; the controls are children of the parent.
  EditForm(wxWindow* parent, ItemForm& form);

  // To be put into a sizer: the pages, or the only one.
  [[nodiscard]] wxWindow* window() const { return window_; }
  // Says what is wrong beside each field, and goes to the first that has a problem. True when none has.
  bool show_problems(const std::vector<std::string>& problems);

  // To be called when the dialog is shown: typing goes into the first field then.
  void focus_first() { rows_.front().control->SetFocus(); }

  [[nodiscard]] wxWindow* control(std::string_view id) const { return rows_[form_.find(id)].control; }
  // What stands beside a field now.
  [[nodiscard]] wxString message(std::string_view id) const;

 private:
  struct Row {
    wxWindow* control = nullptr;
    wxStaticText* message = nullptr;  // beside: problems, and notes where they have no place of their own
    wxStaticText* below = nullptr;    // of positions: how they were understood
    int page = 0;
  };

  wxWindow* make_page(wxWindow* parent, int page);
  wxWindow* make_control(wxWindow* parent, std::size_t field);
  void on_change(std::size_t field, std::string text);
  void show_verdict(std::size_t field, const std::string& problem, const std::string& note);
  void update_layout();

  ItemForm& form_;
  std::vector<Row> rows_;
  wxBookCtrlBase* book_ = nullptr;
  wxWindow* window_ = nullptr;
};

}  // namespace ui::wx
