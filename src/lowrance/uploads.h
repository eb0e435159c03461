// Uploads to Lowrance/Eagle units: one call moves the selected items of one kind, or of all kinds, into the unit.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/remarks.h"
#include "lowrance/connection.h"
#include "lowrance/records.h"
#include "lowrance/transfer_kinds.h"
#include "store/item_store.h"
#include "store/settings.h"

namespace lowrance {

class LowranceUploads {
 public:
  using OffsetSeconds = std::function<std::int64_t()>;  // local time minus UTC

  // All must outlive the uploads.
  LowranceUploads(const Connection& connection, const store::ItemStore& items, const store::Settings& settings,
                  OffsetSeconds offset)
      : connection_(connection), items_(items), settings_(settings), offset_(std::move(offset)) {}

  // Opens the port, sends what the menu command stands for and closes the port. True when the unit has answered
  // everything and nothing was left out; what was is said.
  [[nodiscard]] bool upload(int command_id);

 private:
  struct SelectedWaypoint {
    int index = 0;                         // in the store, from 1
    std::optional<WaypointRecord> record;  // none: the unit cannot hold its place
  };

  // Each kind in its turn, as long as the transfer goes on; false when it ended early.
  bool run(const TransferKinds& kinds);

  void send_waypoints(bool routes_follow);
  void prepare_waypoints();
  void SendLowrWaypoints(int start);
  int limit_waypoints(int start);
  void send_inactives(int start);
  void send_routes();
  void send_trails(int trail);
  void send_events();
  void SendLowrIcons(const std::vector<IconRecord>& icons);

  // Counts those that the unit does not have.
  std::uint8_t symbol_of(const store::ItemRecord& item);
  // False, too, when ESC ended the wait; then the transfer ends and nothing need be told.
  [[nodiscard]] bool is_silent(Command command, const base::Bytes& record, std::string_view label);
  void complete(std::string_view text);
  void tell_at_the_end(const TransferKinds& kinds);
  [[nodiscard]] base::FrontEnd& front_end() const { return connection_.front_end; }

  Connection connection_;
  const store::ItemStore& items_;
  const store::Settings& settings_;
  OffsetSeconds offset_;

  // Of the running upload.
  std::vector<SelectedWaypoint> waypoints_;
  base::Remarks remarks_;  // said at the end; none when all went well
  base::Remarks notes_;    // likewise, on what had to be changed for the unit
  int changed_symbols_ = 0;
  bool all_taken_ = true;
  bool anything_tried_ = false;
  int next_line_ = 0;  // for the next completion
};

}  // namespace lowrance
