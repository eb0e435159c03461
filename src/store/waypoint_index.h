// Finds the first waypoint of an ident, or of an ident at a position, without walking the store: insertion
// must not get slower as the store fills.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "store/packed_items.h"

namespace store {

// Answers exactly what a scan from the first waypoint would. It holds no records: every call is handed the
// store's, of which those added since the last call are taken in first. A change to a waypoint already there
// needs forget().
class WaypointIndex {
 public:
  // Both return the index (from 1) of the first match, 0 for none. Letter case of the ident does not count;
  // latitude and longitude must be equal to the last bit.
  [[nodiscard]] int first_of(const PackedItems& waypoints, std::string_view ident);
  [[nodiscard]] int first_of(const PackedItems& waypoints, std::string_view ident, const geodesy::Position& position);
  // After any change of waypoints already there...
  void forget();
  // ... or only of their positions.
  void forget_positions() { by_ident_and_position_ = {}; }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t index = 0;  // 0: empty
  };
  // Open addressing with linear probing, at most half full.
  struct Table {
    std::vector<Slot> slots;
    std::size_t used = 0;
    int taken_in = 0;  // waypoints 1 to this are in the table
  };

  template <typename Hash, typename Same>
  static void take_in(Table& table, const PackedItems& waypoints, Hash hash, Same same);
  template <typename Same>
  static Slot* find_slot(Table& table, std::uint32_t hash, Same same);
  static void make_room(Table& table);

  Table by_ident_;
  Table by_ident_and_position_;
};

}  // namespace store
