// Names one item of the store, for as long as nothing is cleared or sorted.
#pragma once

namespace ui {

struct ItemRef {
  char kind = 0;  // 'W', 'T', 'I', 'P' as records have it, 'R' for routes
  int index = 0;  // from 1; of routes their number, 0 to 99
  int point = 0;  // of routes: 0 the route itself, from 1 on its points
  friend bool operator==(const ItemRef&, const ItemRef&) = default;
};

}  // namespace ui
