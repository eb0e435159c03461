// Downloads from Lowrance/Eagle units: one call moves one kind of item, or all kinds, from the unit into the stores.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/remarks.h"
#include "lowrance/connection.h"
#include "lowrance/records.h"
#include "lowrance/transfer_kinds.h"
#include "store/item_store.h"
#include "store/settings.h"

namespace lowrance {

class LowranceDownloads {
 public:
  // All must outlive the downloads.
  LowranceDownloads(const Connection& connection, const base::Clock& clock, store::ItemStore& items,
                    const store::Settings& settings)
      : connection_(connection), clock_(clock), items_(items), settings_(settings) {}

  // Opens the port, downloads what the menu command stands for and closes the port. True when all of it came; on
  // silence or after ESC, which are told to the user, what has arrived stays in the stores.
  [[nodiscard]] bool download(int command_id);

 private:
  // Of the running kind.
  struct Counts {
    int missing = 0;  // never answered, or with the answer to another question
    int damaged = 0;
    int empty_slots = 0;
    int strange_symbols = 0;
  };

  // Each kind in its turn, as long as the transfer goes on; false when it ended early.
  bool run(const TransferKinds& kinds);

  void GetLowrWpts(bool asked_for);
  void GetLowrIcons(bool asked_for);
  int ask_icon_count();  // never more than the unit can hold
  void get_trails(int trail, bool asked_for);
  void get_trail(int trail);
  void GetLowrRts(bool asked_for);
  // False when the store has no room for another route.
  bool DoLowrRoute(const RouteRecord& route, Counts& points);

  template <typename Record, typename Read>
  std::optional<Record> fetch(Command command, int number, std::string_view label, Read read, Counts& counts);
  // Into the store's working record; false, and counted, when there is no such place.
  bool take_waypoint(const WaypointRecord& waypoint, Counts& counts);
  bool take_place(const GridPoint& place, std::uint8_t symbol, Counts& counts);
  void remark(const Counts& counts, std::string_view items);
  // A kind that the unit does not have is a failure only for those who asked for it by name.
  void lacks(bool asked_for, const std::string& remark);
  void complete(std::string_view text);
  void tell_at_the_end();
  [[nodiscard]] base::FrontEnd& front_end() const { return connection_.front_end; }

  Connection connection_;
  const base::Clock& clock_;
  store::ItemStore& items_;
  const store::Settings& settings_;

  // Of the running download.
  base::Remarks remarks_;  // said at the end; none when all went well
  bool all_came_ = true;
  int moved_routes_ = 0;
  int dropped_ = 0;    // waypoints
  int next_line_ = 1;  // for the next completion
};

}  // namespace lowrance
