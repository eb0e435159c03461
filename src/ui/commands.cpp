#include "ui/commands.h"

#include <algorithm>
#include <array>

namespace ui {
namespace {

using session::Session;

struct DownloadRow {
  int id;
  garmin::Kind kind;
};

constexpr std::array kGarminDownloads{
    DownloadRow{40028, garmin::Kind::All},
    DownloadRow{40029, garmin::Kind::Waypoints},
    DownloadRow{40117, garmin::Kind::Waypoints},
    DownloadRow{40030, garmin::Kind::Tracks},
    DownloadRow{40034, garmin::Kind::Routes},
    DownloadRow{40119, garmin::Kind::Routes},
    DownloadRow{40036, garmin::Kind::ProximityWaypoints},
};

bool must_be_garmin(Session& session) {
  if (session.settings.GPS == store::Family::Garmin) return true;
  session.front_end.write_line(1, session.settings.GPS == store::Family::None
                                      ? "Choose the receiver family first."
                                      : "Lowrance/Eagle receivers cannot be reached yet.");
  return false;
}

bool download(Session& session, int id) {
  if (!must_be_garmin(session)) return false;
  const auto* row = std::ranges::find(kGarminDownloads, id, &DownloadRow::id);
  return row != kGarminDownloads.end() && session.garmin_transfers.download(row->kind);
}

bool get_gps_id(Session& session, int) { return must_be_garmin(session) && session.get_gps_id(); }

bool get_supported_protocols(Session& session, int) {
  return must_be_garmin(session) && session.get_supported_protocols();
}

bool clear(Session& session, int id) {
  struct Row {
    int id;
    void (store::ItemStore::*clear)();
  };
  static constexpr std::array kRows{
      Row{40005, &store::ItemStore::clear_all},     Row{40006, &store::ItemStore::clear_waypoints},
      Row{40007, &store::ItemStore::clear_tracks},  Row{40008, &store::ItemStore::clear_routes},
      Row{40009, &store::ItemStore::clear_events},  Row{40010, &store::ItemStore::clear_proximity},
      Row{40011, &store::ItemStore::clear_almanac},
  };
  const auto* row = std::ranges::find(kRows, id, &Row::id);
  if (row == kRows.end()) return false;
  (session.items.*row->clear)();
  return true;
}

constexpr std::array kCommands{
    Command{40005, "&All", "", clear},
    Command{40006, "&Waypoints", "", clear},
    Command{40007, "&Tracks", "", clear},
    Command{40008, "&Routes", "", clear},
    Command{40009, "&Events (LEI Icons)", "", clear},
    Command{40010, "&Proximity", "", clear},
    Command{40011, "Al&manac", "", clear},
    Command{40028, "&All", "download-all", download},
    Command{40029, "&Waypoints", "download-waypoints", download},
    Command{40030, "&Tracks (Garmin)", "download-tracks", download},
    Command{40034, "&Routes", "download-routes", download},
    Command{40036, "&Proximity Waypoints", "download-proximity", download},
    Command{40117, "&Download", "", download},
    Command{40119, "&Download", "", download},
    Command{40047, "&Get GPS ID", "identify", get_gps_id},
    Command{40051, "Get &Supported Protocols", "protocols", get_supported_protocols},
};

constexpr bool ids_are_unique(std::span<const Command> rows) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    for (std::size_t j = i + 1; j < rows.size(); ++j)
      if (rows[i].id == rows[j].id) return false;
  return true;
}
static_assert(ids_are_unique(kCommands));

}  // namespace

std::span<const Command> commands() { return kCommands; }

bool run_command(Session& session, Display& display, int id) {
  const auto* row = std::ranges::find(kCommands, id, &Command::id);
  if (row == kCommands.end()) return false;
  display.clear();
  const bool done = row->action(session, id);
  display.set_status(3, " ");
  display.refresh_title();
  return done;
}

int command_id(std::string_view word) {
  const auto* row = std::ranges::find(kCommands, word, &Command::word);
  return word.empty() || row == kCommands.end() ? 0 : row->id;
}

}  // namespace ui
