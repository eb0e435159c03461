// Takes the record that a dialog edits out of the store, and puts it back or in.
#pragma once

#include <optional>

#include "session/session.h"
#include "ui/item_ref.h"

namespace ui {

// What is edited for an item: of a route point the waypoint that it belongs to, where there is such a one. Nothing when
// the store has no such item.
struct EditedItem {
  ItemRef place;
  store::ItemRecord item;
  bool must_link = false;  // the route point does not know its waypoint by number yet
};
[[nodiscard]] std::optional<EditedItem> edited_item(const store::ItemStore& items, const ItemRef& place);

// The reverse: route points that belong to a changed waypoint follow it.
void put_back(store::ItemStore& items, const EditedItem& edited);

// A record of the kind 'W', 'I' or 'P' as dialogs for new ones show it first: with the default symbol of the chosen set
// and, of events, the time now.
[[nodiscard]] store::ItemRecord new_item(const session::Session& session, char kind);

// False when the store is full, which it says itself.
[[nodiscard]] bool add_item(store::ItemStore& items, const store::ItemRecord& item);

}  // namespace ui
