// A page of settings, section by section.
#pragma once

#include <wx/scrolwin.h>

#include <string>
#include <string_view>
#include <vector>

#include "ui/wx/option_fields.h"

namespace ui::wx {

class OptionPanel : public wxScrolledWindow {
 public:
  // Session and draft must outlive the page.
  OptionPanel(wxWindow* parent, session::Session& session, OptionDraft& draft, OptionPage page);

  // Makes the fields when the page is first shown: those of symbols take their time.
  void make_fields();
  // Takes what the fields show into the draft. False when something is wrong, which is said at each such field.
  bool take();
  // Says it at the field and goes there; false when the setting has no field here.
  bool show_problem(const OptionProblem& problem);

 private:
  struct Line {
    OptionField field;
    wxStaticText* problem;  // hidden where there is none
  };

  void add_line(wxSizer& sizer, const OptionRow& row, int label_width);
  [[nodiscard]] std::string take_field(const OptionField& field);
  [[nodiscard]] OptionField* find(std::string_view key);
  void go_to(const Line& line);
  void choose_datum();
  static void set_problem(const Line& line, const std::string& text);

  session::Session& session_;
  OptionDraft& draft_;
  const OptionPage page_;
  std::vector<Line> lines_;
};

}  // namespace ui::wx
