#include "lowrance/transfer_kinds.h"

#include <algorithm>
#include <array>
#include <span>

namespace lowrance {
namespace {

struct CommandRow {
  int id;
  TransferKinds kinds;
};

constexpr TransferKinds kAll{.waypoints = true, .routes = true, .events = true, .trails = true};
constexpr TransferKinds kWaypoints{.waypoints = true};
constexpr TransferKinds kRoutes{.routes = true};
constexpr TransferKinds kEvents{.events = true};
constexpr TransferKinds plot_trail(int number) { return {.trails = true, .trail = number}; }
constexpr TransferKinds kAllTrails = plot_trail(0);

constexpr std::array kDownloadCommands{
    CommandRow{40028, kAll},          CommandRow{40029, kWaypoints},    CommandRow{40117, kWaypoints},
    CommandRow{40030, kAllTrails},    CommandRow{40032, plot_trail(1)}, CommandRow{40033, plot_trail(2)},
    CommandRow{40185, plot_trail(3)}, CommandRow{40186, plot_trail(4)}, CommandRow{40034, kRoutes},
    CommandRow{40119, kRoutes},       CommandRow{40035, kEvents},       CommandRow{40159, kEvents},
};
constexpr std::array kUploadCommands{
    CommandRow{40038, kAll},          CommandRow{40039, kWaypoints},    CommandRow{40116, kWaypoints},
    CommandRow{40040, kAllTrails},    CommandRow{40150, kAllTrails},    CommandRow{40156, kAllTrails},
    CommandRow{40042, plot_trail(1)}, CommandRow{40043, plot_trail(2)}, CommandRow{40187, plot_trail(3)},
    CommandRow{40188, plot_trail(4)}, CommandRow{40044, kRoutes},       CommandRow{40118, kRoutes},
    CommandRow{40059, kEvents},       CommandRow{40160, kEvents},
};

std::optional<TransferKinds> kinds_of(std::span<const CommandRow> commands, int command_id) {
  const auto row = std::ranges::find(commands, command_id, &CommandRow::id);
  if (row == commands.end()) return std::nullopt;
  return row->kinds;
}

}  // namespace

std::optional<TransferKinds> download_kinds(int command_id) { return kinds_of(kDownloadCommands, command_id); }

std::optional<TransferKinds> upload_kinds(int command_id) { return kinds_of(kUploadCommands, command_id); }

}  // namespace lowrance
