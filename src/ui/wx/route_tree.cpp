#include "ui/wx/route_tree.h"

#include <algorithm>
#include <array>

#include "ui/wx/route_model.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

using lists::RouteField;

// In pixels of a plain screen.
constexpr int kBoxWidth = 30;
constexpr std::array<int, lists::kRouteFields> kWidths{220, 95, 110, 85, 180};
// So many routes are shown with all their points at first; of more an overview.
constexpr std::size_t kFewRoutes = 10;

wxDataViewItemArray items_of(const std::vector<ItemRef>& refs) {
  wxDataViewItemArray items;
  for (const ItemRef& ref : refs) items.push_back(RouteModel::item_of(ref));
  return items;
}

}  // namespace

RouteTree::RouteTree(wxWindow* parent, Desk& desk)
    : wxDataViewCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_MULTIPLE | wxDV_ROW_LINES),
      model_(new RouteModel(desk)) {
  AssociateModel(model_.get());
  AppendToggleColumn("", RouteModel::kBoxColumn, wxDATAVIEW_CELL_ACTIVATABLE, FromDIP(kBoxWidth));
  for (std::size_t i = 0; i < kWidths.size(); ++i) {
    const unsigned int column = RouteModel::kFirstField + static_cast<unsigned int>(i);
    const int width = FromDIP(kWidths[i]);
    const auto field = static_cast<RouteField>(i);
    if (field == RouteField::Name) {
      SetExpanderColumn(AppendIconTextColumn("", column, wxDATAVIEW_CELL_INERT, width));
    } else {
      AppendTextColumn("", column, wxDATAVIEW_CELL_INERT, width,
                       field == RouteField::Leg ? wxALIGN_RIGHT : wxALIGN_LEFT);
    }
  }
  set_titles();
  shown_routes_ = model_->list().routes();
  if (shown_routes_.size() <= kFewRoutes)
    for (const ItemRef& route : shown_routes_) Expand(RouteModel::item_of(route));
  if (!shown_routes_.empty()) Select(RouteModel::item_of(shown_routes_.front()));
  Bind(wxEVT_DATAVIEW_ITEM_VALUE_CHANGED, [&desk](wxDataViewEvent&) { desk.tell(Change::Selection); });
}

void RouteTree::set_titles() {
  for (std::size_t i = 0; i < kWidths.size(); ++i)
    GetColumn(RouteModel::kFirstField + static_cast<unsigned int>(i))
        ->SetTitle(wx_text(model_->list().title(static_cast<RouteField>(i))));
}

int RouteTree::columns_width() const {
  int width = FromDIP(kBoxWidth);
  for (const int column : kWidths) width += FromDIP(column);
  return width;
}

std::vector<ItemRef> RouteTree::highlighted() const {
  wxDataViewItemArray items;
  GetSelections(items);
  std::vector<ItemRef> refs;
  for (const wxDataViewItem& item : items) refs.push_back(RouteModel::ref_of(item));
  return refs;
}

void RouteTree::highlight(const std::vector<ItemRef>& items) { SetSelections(items_of(items)); }

void RouteTree::show_item(const ItemRef& item) {
  if (!model_->list().has(item)) return;
  const wxDataViewItem place = RouteModel::item_of(item);
  if (item.point != 0) Expand(RouteModel::item_of({'R', item.index, 0}));
  highlight({item});
  SetCurrentItem(place);
  EnsureVisible(place);
}

// What was open stays open, and what is still there stays highlighted.
void RouteTree::take_routes() {
  std::vector<ItemRef> open = shown_routes_;
  std::erase_if(open, [this](const ItemRef& route) { return !IsExpanded(RouteModel::item_of(route)); });
  std::vector<ItemRef> lit = highlighted();
  const wxDataViewItem top = GetTopItem();
  const auto has_gone = [this](const ItemRef& ref) { return !model_->list().has(ref); };
  std::erase_if(open, has_gone);
  std::erase_if(lit, has_gone);
  model_->Cleared();
  shown_routes_ = model_->list().routes();
  for (const ItemRef& route : open) Expand(RouteModel::item_of(route));
  highlight(lit);
  if (top.IsOk() && !has_gone(RouteModel::ref_of(top))) EnsureVisible(top);
}

void RouteTree::show_change(Change change) {
  if (change == Change::Picture) return;
  if (change == Change::Settings) {
    model_->list().take_settings();
    set_titles();
  }
  if (change == Change::Items) take_routes();
  Refresh();
}

}  // namespace ui::wx
