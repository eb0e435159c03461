// A dialog of settings: one page, or several with a list of them.
#pragma once

#include <wx/dialog.h>
#include <wx/listbox.h>
#include <wx/simplebook.h>

#include <vector>

#include "ui/wx/option_panel.h"

namespace ui::wx {

class OptionDialog : public wxDialog {
 public:
  // The session must outlive the dialog; its settings change only when OK, or Save Configuration, finds all good.
  OptionDialog(wxWindow* parent, session::Session& session, const wxString& title,
               const std::vector<OptionPage>& pages);

  // What OK does before it closes: false, with the first page that has something wrong in front, keeps it open.
  bool TransferDataFromWindow() override;

  [[nodiscard]] int shown_page() const { return book_->GetSelection(); }
  void show_page(int page);

 private:
  void fit_single_page();
  [[nodiscard]] bool take_panels();

  session::Session& session_;
  OptionDraft draft_;
  wxSimplebook* book_;
  wxListBox* list_ = nullptr;  // none where there is one page only
  std::vector<OptionPanel*> panels_;
};

}  // namespace ui::wx
