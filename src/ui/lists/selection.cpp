#include "ui/lists/selection.h"

#include <unordered_set>

#include "ui/stored_items.h"

namespace ui::lists {
namespace {

// Selects the items in use of which `rule` says so.
template <typename Rule>
int select_by(store::ItemStore& items, char kind, Rule rule) {
  int selected = 0;
  const int count = count_of(items, kind);
  for (int index = 1; index <= count; ++index) {
    const store::ItemRecord item = item_at(items, kind, index);
    const bool takes = item.in_use != 0 && rule(item);
    items.select(kind, index, takes);
    if (takes) ++selected;
  }
  return selected;
}

int select_inverse_routes(store::ItemStore& items) {
  int selected = 0;
  for (int number = 0; number < store::kRouteCapacity; ++number) {
    const std::optional<store::ItemRecord>& header = items.route(number).header;
    if (!header) continue;
    const bool takes = header->in_use != 0 && header->selected == 0;
    items.select('R', number, takes);
    if (takes) ++selected;
  }
  return selected;
}

}  // namespace

int select_inverse(store::ItemStore& items, char kind) {
  if (kind == 'R') return select_inverse_routes(items);
  return select_by(items, kind, [](const store::ItemRecord& item) { return item.selected == 0; });
}

int select_duplicates(store::ItemStore& items, bool same_place) {
  const std::vector<int> duplicates = items.duplicates(same_place);
  items.select_all('W', false);
  for (const int index : duplicates) items.select('W', index, true);
  return static_cast<int>(duplicates.size());
}

int select_by_route_use(store::ItemStore& items, bool used) {
  std::unordered_set<std::uint32_t> numbers;
  for (int number = 0; number < store::kRouteCapacity; ++number) {
    const store::Route& route = items.route(number);
    if (!route.header || route.header->in_use == 0) continue;
    for (const store::ItemRecord& point : route.points)
      if (point.in_use != 0) numbers.insert(point.number);
  }
  return select_by(items, 'W', [&](const store::ItemRecord& item) { return numbers.contains(item.number) == used; });
}

int select_within(store::ItemStore& items, char kind, const geodesy::Position& centre, double metres) {
  return select_by(items, kind, [&](const store::ItemRecord& item) {
    return geodesy::great_circle_distance(centre, item.position, geodesy::DistanceUnit::Metres) <= metres;
  });
}

void toggle_selection(store::ItemStore& items, const std::vector<ItemRef>& which) {
  if (which.empty()) return;
  const bool selected = !is_selected(items, which.front());
  for (const ItemRef& ref : which) items.select(ref.kind, ref.index, selected);
}

std::vector<ItemRef> selected_items(const store::ItemStore& items, char kind) {
  std::vector<ItemRef> found;
  const int first = kind == 'R' ? 0 : 1;
  const int last = kind == 'R' ? store::kRouteCapacity - 1 : count_of(items, kind);
  for (int index = first; index <= last; ++index)
    if (is_selected(items, {kind, index, 0})) found.push_back({kind, index, 0});
  return found;
}

}  // namespace ui::lists
