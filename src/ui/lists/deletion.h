// Deleting items from lists, and taking that back.
#pragma once

#include <vector>

#include "session/session.h"
#include "ui/item_ref.h"

namespace ui::lists {

// Items, routes and their points too, go out of use and stay where they are.
void delete_items(store::ItemStore& items, const std::vector<ItemRef>& which);
void undelete_items(store::ItemStore& items, const std::vector<ItemRef>& which);

// Whether delete_items() or undelete_items() would change anything.
[[nodiscard]] bool has_item_in_use(const store::ItemStore& items, const std::vector<ItemRef>& which);
[[nodiscard]] bool has_deleted_item(const store::ItemStore& items, const std::vector<ItemRef>& which);

}  // namespace ui::lists
