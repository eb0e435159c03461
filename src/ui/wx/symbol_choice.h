// Picks one of a long list, with a search over it; and a button that so picks a waypoint symbol.
#pragma once

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/listctrl.h>
#include <wx/srchctrl.h>

#include <vector>

namespace ui::wx {

struct PickRow {
  wxString text;
  int value = 0;
};

class PickDialog : public wxDialog {
 public:
  // With symbols, the values are their codes and each row has its picture.
  PickDialog(wxWindow* parent, const wxString& title, std::vector<PickRow> rows, bool with_symbols);

  void select(int value);
  // Shows the rows that have the text in them, whatever its letter case.
  void search(const wxString& text);
  // Of the selected row; -1 when none is.
  [[nodiscard]] int value() const;
  [[nodiscard]] int shown_rows() const { return static_cast<int>(shown_.size()); }

 private:
  class List;
  void refill();

  const std::vector<PickRow> rows_;
  std::vector<std::size_t> shown_;  // places in rows_
  List* list_;
};

class SymbolChoice : public wxButton {
 public:
  SymbolChoice(wxWindow* parent, int code);

  void set_code(int code);
  [[nodiscard]] int code() const { return code_; }

 private:
  void pick();

  int code_ = 0;
};

// Sent when the user has picked another symbol.
wxDECLARE_EVENT(kSymbolPicked, wxCommandEvent);

}  // namespace ui::wx
