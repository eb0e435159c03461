// Which items are selected for uploads, by rules. Each rule sets the marks of all items of a kind anew: items that the
// rule does not name, and those out of use, are not selected afterwards. Each tells how many it has selected.
#pragma once

#include <vector>

#include "session/session.h"
#include "ui/item_ref.h"

namespace ui::lists {

// Those of a kind ('W', 'T', 'I', 'P', or 'R' for routes) that were not selected.
int select_inverse(store::ItemStore& items, char kind);

// Waypoints of the same ident, in any letter case, as one before them: those that need not be there. With `same_place`
// the position must be the same too.
int select_duplicates(store::ItemStore& items, bool same_place);

// Waypoints that are points of a route in use, or, not `used`, all others.
int select_by_route_use(store::ItemStore& items, bool used);

// Items of a kind ('W', 'T', 'I', 'P') up to this far from a position.
int select_within(store::ItemStore& items, char kind, const geodesy::Position& centre, double metres);

// Marks these alone: all selected, or none when the first of them is selected. Points stand for their route.
void toggle_selection(store::ItemStore& items, const std::vector<ItemRef>& which);

// The items of a kind that are selected, of routes the routes themselves.
[[nodiscard]] std::vector<ItemRef> selected_items(const store::ItemStore& items, char kind);

}  // namespace ui::lists
