#include "ui/lists/deletion.h"

#include <algorithm>
#include <utility>

#include "ui/stored_items.h"

namespace ui::lists {
namespace {

void set_in_use(store::ItemStore& items, const std::vector<ItemRef>& which, bool in_use) {
  for (const ItemRef& ref : which) {
    if (ref.point == 0) {
      items.set_in_use(ref.kind, ref.index, in_use);
      continue;
    }
    store::Route route = items.route(ref.index);
    const auto point = static_cast<std::size_t>(ref.point);
    if (point > route.points.size()) continue;
    route.points[point - 1].in_use = in_use ? 1 : 0;
    items.replace_route(ref.index, std::move(route));
  }
}

}  // namespace

void delete_items(store::ItemStore& items, const std::vector<ItemRef>& which) { set_in_use(items, which, false); }

void undelete_items(store::ItemStore& items, const std::vector<ItemRef>& which) { set_in_use(items, which, true); }

bool has_item_in_use(const store::ItemStore& items, const std::vector<ItemRef>& which) {
  return std::ranges::any_of(which, [&](const ItemRef& ref) { return is_in_use(items, ref); });
}

bool has_deleted_item(const store::ItemStore& items, const std::vector<ItemRef>& which) {
  return std::ranges::any_of(which, [&](const ItemRef& ref) { return !is_in_use(items, ref); });
}

}  // namespace ui::lists
