#include "ui/wx/route_model.h"

#include <wx/bmpbndl.h>
#include <wx/image.h>
#include <wx/settings.h>
#include <wx/window.h>

#include <algorithm>
#include <cstdint>

#include "ui/wx/symbol_pictures.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

using lists::RouteField;

constexpr int kPictureSize = 16;         // pixels of a plain screen
constexpr std::uintptr_t kPlaces = 128;  // more than a route has points

RouteField field_of(unsigned int column) { return static_cast<RouteField>(column - RouteModel::kFirstField); }
constexpr unsigned int kNameColumn = RouteModel::kFirstField + static_cast<unsigned int>(RouteField::Name);

// In the sizes that screens ask for; quick enough to be drawn anew for every row that is shown.
wxBitmapBundle picture_of(int symbol) {
  wxVector<wxBitmap> sizes;
  for (const int times : {1, 2}) sizes.push_back(symbol_bitmap(symbol, times * kPictureSize));
  return wxBitmapBundle::FromBitmaps(sizes);
}

// GTK leaves all rows as much room for pictures as the first one needs.
wxBitmapBundle empty_picture() {
  wxImage image(kPictureSize, kPictureSize);
  image.InitAlpha();
  std::fill_n(image.GetAlpha(), kPictureSize * kPictureSize, '\0');
  return wxBitmapBundle(wxBitmap(image));
}

}  // namespace

// Items are numbers in the guise of pointers; the null pointer is the root.
wxDataViewItem RouteModel::item_of(const ItemRef& ref) {
  const std::uintptr_t id =
      (static_cast<std::uintptr_t>(ref.index) + 1) * kPlaces + static_cast<std::uintptr_t>(ref.point);
  return wxDataViewItem(reinterpret_cast<void*>(id));
}

ItemRef RouteModel::ref_of(const wxDataViewItem& item) {
  const auto id = reinterpret_cast<std::uintptr_t>(item.GetID());
  return {'R', static_cast<int>(id / kPlaces) - 1, static_cast<int>(id % kPlaces)};
}

wxString RouteModel::GetColumnType(unsigned int column) const {
  if (column == kBoxColumn) return "bool";
  return column == kNameColumn ? "wxDataViewIconText" : "string";
}

void RouteModel::GetValue(wxVariant& value, const wxDataViewItem& item, unsigned int column) const {
  const ItemRef ref = ref_of(item);
  if (column == kBoxColumn) {
    value = list_.is_selected(ref);
    return;
  }
  const wxString text = wx_text(list_.text(ref, field_of(column)));
  if (column != kNameColumn) {
    value = text;
    return;
  }
  wxDataViewIconText name(text);
  const std::optional<int> symbol = list_.symbol(ref);
  name.SetBitmapBundle(symbol ? picture_of(*symbol) : empty_picture());
  value << name;
}

bool RouteModel::SetValue(const wxVariant& value, const wxDataViewItem& item, unsigned int column) {
  if (column != kBoxColumn || desk_.is_busy()) return false;
  desk_.session().items.select('R', ref_of(item).index, value.GetBool());
  return true;
}

bool RouteModel::HasValue(const wxDataViewItem& item, unsigned int column) const {
  return column != kBoxColumn || ref_of(item).point == 0;
}

bool RouteModel::GetAttr(const wxDataViewItem& item, unsigned int, wxDataViewItemAttr& attributes) const {
  if (list_.is_in_use(ref_of(item))) return false;
  attributes.SetColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
  attributes.SetStrikethrough(true);
  return true;
}

wxDataViewItem RouteModel::GetParent(const wxDataViewItem& item) const {
  const ItemRef ref = ref_of(item);
  return !item.IsOk() || ref.point == 0 ? wxDataViewItem() : item_of({'R', ref.index, 0});
}

bool RouteModel::IsContainer(const wxDataViewItem& item) const { return !item.IsOk() || ref_of(item).point == 0; }

unsigned int RouteModel::GetChildren(const wxDataViewItem& item, wxDataViewItemArray& children) const {
  const std::vector<ItemRef> found = item.IsOk() ? list_.points(ref_of(item).index) : list_.routes();
  for (const ItemRef& ref : found) children.push_back(item_of(ref));
  return static_cast<unsigned int>(found.size());
}

}  // namespace ui::wx
