#include "store/waypoint_index.h"

#include <bit>

#include "base/text.h"

namespace store {
namespace {

constexpr std::uint64_t kFnvPrime = 0x100000001b3;
constexpr std::uint64_t kFnvStart = 0xcbf29ce484222325;

std::uint32_t folded(std::uint64_t hash) { return static_cast<std::uint32_t>(hash ^ (hash >> 32)); }

// FNV-1a over the lower-case bytes.
std::uint64_t hash_ident(std::string_view ident) {
  std::uint64_t hash = kFnvStart;
  for (const char c : ident) {
    const bool upper = c >= 'A' && c <= 'Z';
    hash = (hash ^ static_cast<std::uint8_t>(upper ? c + ('a' - 'A') : c)) * kFnvPrime;
  }
  return hash;
}

std::uint64_t hash_place(std::string_view ident, const geodesy::Position& position) {
  // Adding zero makes minus zero, which compares equal to it, hash like it.
  std::uint64_t hash = hash_ident(ident);
  hash = (hash ^ std::bit_cast<std::uint64_t>(position.latitude + 0.0)) * kFnvPrime;
  hash ^= hash >> 29;
  hash = (hash ^ std::bit_cast<std::uint64_t>(position.longitude + 0.0)) * kFnvPrime;
  return hash ^ (hash >> 31);
}

bool same_ident(const ItemRecord& left, std::string_view ident) { return base::equal_ignoring_case(left.ident, ident); }

}  // namespace

void WaypointIndex::make_room(Table& table) {
  if (table.slots.size() > 2 * table.used) return;
  std::vector<Slot> old(table.slots.empty() ? 64 : 2 * table.slots.size());
  old.swap(table.slots);
  const std::size_t mask = table.slots.size() - 1;
  for (const Slot& slot : old) {
    if (slot.index == 0) continue;
    std::size_t at = slot.hash & mask;
    while (table.slots[at].index != 0) at = (at + 1) & mask;
    table.slots[at] = slot;
  }
}

// The slot of the match, or the empty one where it belongs; the table is never full.
template <typename Same>
WaypointIndex::Slot* WaypointIndex::find_slot(Table& table, std::uint32_t hash, Same same) {
  const std::size_t mask = table.slots.size() - 1;
  for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
    Slot& slot = table.slots[at];
    if (slot.index == 0 || (slot.hash == hash && same(slot.index))) return &slot;
  }
}

template <typename Hash, typename Same>
void WaypointIndex::take_in(Table& table, const PackedItems& waypoints, Hash hash, Same same) {
  const int count = static_cast<int>(waypoints.size());
  while (table.taken_in < count) {
    const ItemRecord waypoint = waypoints[static_cast<std::size_t>(table.taken_in++)];
    // A waypoint that is not even the same as itself (a position that is no number) can never be found.
    if (!same(waypoint, waypoint)) continue;
    make_room(table);
    const std::uint32_t waypoint_hash = hash(waypoint);
    Slot* slot =
        find_slot(table, waypoint_hash, [&](std::uint32_t index) { return same(waypoints[index - 1], waypoint); });
    if (slot->index != 0) continue;  // an older one is the first
    *slot = {waypoint_hash, static_cast<std::uint32_t>(table.taken_in)};
    ++table.used;
  }
  make_room(table);
}

int WaypointIndex::first_of(const PackedItems& waypoints, std::string_view ident) {
  take_in(
      by_ident_, waypoints, [](const ItemRecord& item) { return folded(hash_ident(item.ident)); },
      [](const ItemRecord& left, const ItemRecord& right) { return same_ident(left, right.ident); });
  const Slot* slot = find_slot(by_ident_, folded(hash_ident(ident)),
                               [&](std::uint32_t index) { return same_ident(waypoints[index - 1], ident); });
  return static_cast<int>(slot->index);
}

int WaypointIndex::first_of(const PackedItems& waypoints, std::string_view ident, const geodesy::Position& position) {
  take_in(
      by_ident_and_position_, waypoints,
      [](const ItemRecord& item) { return folded(hash_place(item.ident, item.position)); },
      [](const ItemRecord& left, const ItemRecord& right) {
        return left.position == right.position && same_ident(left, right.ident);
      });
  const Slot* slot = find_slot(by_ident_and_position_, folded(hash_place(ident, position)), [&](std::uint32_t index) {
    const ItemRecord waypoint = waypoints[index - 1];
    return waypoint.position == position && same_ident(waypoint, ident);
  });
  return static_cast<int>(slot->index);
}

void WaypointIndex::forget() {
  by_ident_ = {};
  by_ident_and_position_ = {};
}

}  // namespace store
