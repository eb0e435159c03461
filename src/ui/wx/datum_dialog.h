// The choice of a datum and a notation: all datums with a search, and what a position becomes in the one chosen.
#pragma once

#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/listbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <string>
#include <vector>

#include "session/session.h"
#include "ui/options/option_draft.h"

namespace ui::wx {

struct DatumChoice {
  std::string datum;
  geodesy::Notation notation = geodesy::Notation::Dmm;
};

class DatumDialog : public wxDialog {
 public:
  // The session must outlive the dialog.
  DatumDialog(wxWindow* parent, session::Session& session, const DatumChoice& chosen);

  // The datum that is highlighted in the list, or was last.
  [[nodiscard]] const DatumChoice& choice() const { return choice_; }
  // Whether the user has saved a choice meanwhile, whatever came of the dialog afterwards.
  [[nodiscard]] bool was_saved() const { return was_saved_; }
  // Puts the choice into the session's settings.
  void take_over();

 private:
  [[nodiscard]] wxSizer* make_list();
  [[nodiscard]] wxSizer* make_preview();
  void narrow();
  void take_selection();
  void show_preview();
  void go_into_list();

  session::Session& session_;
  DatumChoice choice_;
  bool was_saved_ = false;
  const std::vector<std::string> names_;
  const std::vector<OptionEntry> notations_;
  std::vector<std::string> shown_names_;
  wxTextCtrl* search_ = nullptr;
  wxListBox* list_ = nullptr;
  wxChoice* notation_ = nullptr;
  wxTextCtrl* position_ = nullptr;
  wxStaticText* datum_label_ = nullptr;
  wxStaticText* shifted_ = nullptr;
  wxStaticText* distance_ = nullptr;
};

}  // namespace ui::wx
