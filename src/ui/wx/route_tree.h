// The routes with their points beneath them, and a box for the selection of each route.
#pragma once

#include <wx/dataview.h>

#include <vector>

#include "ui/wx/list_pane.h"

namespace ui::wx {

class RouteModel;

class RouteTree : public wxDataViewCtrl, public ListPane {
 public:
  RouteTree(wxWindow* parent, Desk& desk);

  [[nodiscard]] wxWindow& window() override { return *this; }
  [[nodiscard]] int columns_width() const override;
  [[nodiscard]] std::vector<ItemRef> highlighted() const override;
  void highlight(const std::vector<ItemRef>& items) override;
  void highlight_all() override { SelectAll(); }
  void show_item(const ItemRef& item) override;
  void show_change(Change change) override;

 private:
  void take_routes();
  void set_titles();

  wxObjectDataPtr<RouteModel> model_;
  std::vector<ItemRef> shown_routes_;
};

}  // namespace ui::wx
