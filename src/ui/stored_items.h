// Items of the store by their kind: 'W', 'R', 'T' (points), 'I', 'P'.
#pragma once

#include "session/session.h"

namespace ui {

[[nodiscard]] inline int count_of(const store::ItemStore& items, char kind) {
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

// Of any kind but routes; the index counts from 1, up to count_of().
[[nodiscard]] inline store::ItemRecord item_at(const store::ItemStore& items, char kind, int index) {
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

}  // namespace ui
