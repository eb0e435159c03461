// The routes as the tree asks for them: items that name a route or one of its points, and their texts.
#pragma once

#include <wx/dataview.h>

#include "ui/lists/route_list.h"
#include "ui/wx/desk.h"

namespace ui::wx {

class RouteModel : public wxDataViewModel {
 public:
  // The box stands in a column of its own, before those of lists::RouteField.
  static constexpr unsigned int kBoxColumn = 0;
  static constexpr unsigned int kFirstField = 1;

  explicit RouteModel(Desk& desk) : desk_(desk), list_(desk.session()) {}

  [[nodiscard]] lists::RouteList& list() { return list_; }
  [[nodiscard]] static wxDataViewItem item_of(const ItemRef& ref);
  [[nodiscard]] static ItemRef ref_of(const wxDataViewItem& item);

  unsigned int GetColumnCount() const override { return kFirstField + lists::kRouteFields; }
  wxString GetColumnType(unsigned int column) const override;
  void GetValue(wxVariant& value, const wxDataViewItem& item, unsigned int column) const override;
  bool SetValue(const wxVariant& value, const wxDataViewItem& item, unsigned int column) override;
  bool HasValue(const wxDataViewItem& item, unsigned int column) const override;
  bool GetAttr(const wxDataViewItem& item, unsigned int column, wxDataViewItemAttr& attributes) const override;
  bool HasContainerColumns(const wxDataViewItem&) const override { return true; }
  wxDataViewItem GetParent(const wxDataViewItem& item) const override;
  bool IsContainer(const wxDataViewItem& item) const override;
  unsigned int GetChildren(const wxDataViewItem& item, wxDataViewItemArray& children) const override;

 private:
  Desk& desk_;
  lists::RouteList list_;
};

}  // namespace ui::wx
