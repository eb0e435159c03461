// The records of the plain lists ('W', 'T', 'I', 'P') by kind and index.
#pragma once

#include "session/session.h"

namespace ui::lists {

[[nodiscard]] inline int count_of(const store::ItemStore& items, char kind) {
  switch (kind) {
    case 'W':
      return items.waypoint_count();
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

// The index counts from 1, up to count_of().
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

}  // namespace ui::lists
