#include "ui/stored_items.h"

namespace ui {

int count_of(const store::ItemStore& items, char kind) {
  switch (kind) {
    case 'W':
      return items.waypoint_count();
    case 'R':
      return items.route_count();
    case 'T':
      return items.track_point_count();
    case 'I':
      return items.event_count();
    case 'P':
      return items.proximity_count();
    default:
      return 0;
  }
}

store::ItemRecord item_at(const store::ItemStore& items, char kind, int index) {
  switch (kind) {
    case 'W':
      return items.waypoint(index);
    case 'T':
      return items.track_point(index);
    case 'I':
      return items.event(index);
    default:
      return items.proximity(index);
  }
}

const store::ItemRecord* find_route_record(const store::ItemStore& items, const ItemRef& route) {
  if (route.index < 0 || route.index >= store::kRouteCapacity || route.point < 0) return nullptr;
  const auto& [header, points] = items.route(route.index);
  if (route.point == 0) return header ? &*header : nullptr;
  const auto point = static_cast<std::size_t>(route.point);
  return point <= points.size() ? &points[point - 1] : nullptr;
}

std::optional<store::ItemRecord> find_record(const store::ItemStore& items, const ItemRef& item) {
  if (item.kind == 'R') {
    const store::ItemRecord* record = find_route_record(items, item);
    return record == nullptr ? std::nullopt : std::optional(*record);
  }
  if (item.index < 1 || item.index > count_of(items, item.kind)) return std::nullopt;
  return item_at(items, item.kind, item.index);
}

store::ItemRecord record_of(const store::ItemStore& items, const ItemRef& item) {
  return find_record(items, item).value_or(store::ItemRecord{});
}

bool is_selected(const store::ItemStore& items, const ItemRef& item) {
  return record_of(items, {item.kind, item.index}).selected != 0;
}

bool is_in_use(const store::ItemStore& items, const ItemRef& item) { return record_of(items, item).in_use != 0; }

}  // namespace ui
