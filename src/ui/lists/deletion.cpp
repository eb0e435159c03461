#include "ui/lists/deletion.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "ui/lists/stored_items.h"

namespace ui::lists {
namespace {

bool is_in_use(const store::ItemStore& items, const ItemRef& ref) {
  if (ref.kind != 'R') return item_at(items, ref.kind, ref.index).in_use != 0;
  const std::optional<store::ItemRecord>& header = items.route(ref.index).header;
  return header && header->in_use != 0;
}

void remove_points(store::ItemStore& items, int number, const std::set<int>& points) {
  store::Route route = items.route(number);
  // From the end on, so that the others keep their numbers until then.
  for (auto point = points.rbegin(); point != points.rend(); ++point)
    if (*point <= static_cast<int>(route.points.size())) route.points.erase(route.points.begin() + *point - 1);
  items.replace_route(number, std::move(route));
}

}  // namespace

void delete_items(store::ItemStore& items, const std::vector<ItemRef>& which) {
  std::set<int> routes;
  std::map<int, std::set<int>> points;
  for (const ItemRef& ref : which) {
    if (ref.kind != 'R') {
      items.set_in_use(ref.kind, ref.index, false);
    } else if (ref.point == 0) {
      routes.insert(ref.index);
    } else {
      points[ref.index].insert(ref.point);
    }
  }
  for (const int number : routes) items.set_in_use('R', number, false);
  for (const auto& [number, of_route] : points)
    if (!routes.contains(number)) remove_points(items, number, of_route);
}

void undelete_items(store::ItemStore& items, const std::vector<ItemRef>& which) {
  for (const ItemRef& ref : which)
    if (ref.point == 0) items.set_in_use(ref.kind, ref.index, true);
}

bool has_item_in_use(const store::ItemStore& items, const std::vector<ItemRef>& which) {
  return std::ranges::any_of(which, [&](const ItemRef& ref) { return ref.point != 0 || is_in_use(items, ref); });
}

bool has_deleted_item(const store::ItemStore& items, const std::vector<ItemRef>& which) {
  return std::ranges::any_of(which, [&](const ItemRef& ref) { return ref.point == 0 && !is_in_use(items, ref); });
}

}  // namespace ui::lists
