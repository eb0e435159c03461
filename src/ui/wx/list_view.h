// The list of waypoints, track points, events or proximity waypoints: one row an item, with a box for its selection.
#pragma once

#include <wx/listctrl.h>

#include <map>
#include <vector>

#include "ui/lists/item_list.h"
#include "ui/wx/list_pane.h"

namespace ui::wx {

class ListView : public wxListCtrl, public ListPane {
 public:
  // 'W', 'T', 'I' or 'P'.
  ListView(wxWindow* parent, Desk& desk, char kind);

  [[nodiscard]] wxWindow& window() override { return *this; }
  [[nodiscard]] int columns_width() const override;
  [[nodiscard]] std::vector<ItemRef> highlighted() const override;
  void highlight(const std::vector<ItemRef>& items) override;
  void highlight_all() override;
  void show_item(const ItemRef& item) override;
  void show_change(Change change) override;
  void keep_widths() override;

  [[nodiscard]] const lists::ItemList& rows() const { return list_; }

  // By a column, as a click on its title does.
  void sort(int column);

 protected:
  wxString OnGetItemText(long row, long column) const override;
  int OnGetItemColumnImage(long row, long column) const override;
  bool OnGetItemIsChecked(long row) const override;
  wxItemAttr* OnGetItemAttr(long row) const override;

 private:
  void set_widths();
  [[nodiscard]] int fitting_width(int column) const;
  void set_titles();
  void take_rows();
  void select(long row, bool selected);
  [[nodiscard]] long current() const { return GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_FOCUSED); }
  void make_current(long row);

  Desk& desk_;
  char kind_;
  lists::ItemList list_;
  std::vector<int> given_widths_;  // of the columns as they were made; others are the user's choice
  // Pictures are drawn when a row that shows them comes into sight.
  mutable wxImageList images_;
  mutable std::map<int, int> image_of_symbol_;
  mutable wxItemAttr deleted_;
};

}  // namespace ui::wx
