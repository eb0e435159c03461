// Which kinds of items the commands of the menus move between a Lowrance/Eagle unit and the stores.
#pragma once

#include <optional>

namespace lowrance {

struct TransferKinds {
  bool waypoints = false, routes = false, events = false, trails = false;
  int trail = 0;  // 1 to 4: this plot trail alone; 0: all of the unit
  [[nodiscard]] bool is_all() const { return waypoints && routes && events && trails; }
};

// By the command's id; nothing for an id that is no such command of Lowrance/Eagle units.
[[nodiscard]] std::optional<TransferKinds> download_kinds(int command_id);
[[nodiscard]] std::optional<TransferKinds> upload_kinds(int command_id);

}  // namespace lowrance
