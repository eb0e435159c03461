// Items of the store by their kind: 'W', 'R', 'T' (points), 'I', 'P'.
#pragma once

#include <optional>

#include "session/session.h"
#include "ui/item_ref.h"

namespace ui {

[[nodiscard]] int count_of(const store::ItemStore& items, char kind);

// Of any kind but routes; the index counts from 1, up to count_of().
[[nodiscard]] store::ItemRecord item_at(const store::ItemStore& items, char kind, int index);

// The header of a route, or a point of it; nullptr where there is none.
[[nodiscard]] const store::ItemRecord* find_route_record(const store::ItemStore& items, const ItemRef& route);

// Of an item of any kind, of a route its header, or the point. Nothing when the store has no such item...
[[nodiscard]] std::optional<store::ItemRecord> find_record(const store::ItemStore& items, const ItemRef& item);
// ... or an empty record, neither selected nor in use.
[[nodiscard]] store::ItemRecord record_of(const store::ItemStore& items, const ItemRef& item);

// Points are selected with their route, but in use or not by themselves.
[[nodiscard]] bool is_selected(const store::ItemStore& items, const ItemRef& item);
[[nodiscard]] bool is_in_use(const store::ItemStore& items, const ItemRef& item);

}  // namespace ui
