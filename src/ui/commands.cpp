#include "ui/commands.h"

#include <algorithm>
#include <array>
#include <new>

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
    DownloadRow{40037, garmin::Kind::Almanac},
};

bool is_lowrance(const Session& session) { return session.settings.GPS == store::Family::Lowrance; }

bool must_have_family(Session& session) {
  if (session.settings.GPS != store::Family::None) return true;
  session.front_end.write_line(1, "Choose the receiver family first.");
  return false;
}

bool download(Session& session, int id) {
  if (!must_have_family(session)) return false;
  if (is_lowrance(session)) return session.lowrance_downloads.download(id);
  const auto* row = std::ranges::find(kGarminDownloads, id, &DownloadRow::id);
  return row != kGarminDownloads.end() && session.garmin_downloads.download(row->kind);
}

// The kinds of items that each upload of the menus selects before it starts.
struct UploadRow {
  int id;
  std::string_view kinds;  // as ItemRecord::kind has them
};
constexpr std::array kMenuUploads{
    UploadRow{40038, "WRPTI"}, UploadRow{40039, "W"}, UploadRow{40040, "T"}, UploadRow{40042, "T"},
    UploadRow{40043, "T"},     UploadRow{40044, "R"}, UploadRow{40045, "P"}, UploadRow{40059, "I"},
    UploadRow{40116, "W"},     UploadRow{40118, "R"}, UploadRow{40150, "T"}, UploadRow{40156, "T"},
    UploadRow{40160, "I"},     UploadRow{40187, "T"}, UploadRow{40188, "T"},
};

bool upload(Session& session, int id) {
  if (!must_have_family(session)) return false;
  const auto* row = std::ranges::find(kMenuUploads, id, &UploadRow::id);
  const std::string_view kinds = row == kMenuUploads.end() ? std::string_view() : row->kinds;
  for (const char kind : kinds) session.items.select_all(kind, true);
  if (!is_lowrance(session)) return session.garmin_uploads.upload(id);
  if (kinds == "R") session.items.select_all('W', true);  // the points of its routes are waypoints
  return session.lowrance_uploads.upload(id);
}

bool get_gps_id(Session& session, int) { return must_have_family(session) && session.get_gps_id(); }

bool get_supported_protocols(Session& session, int) {
  return must_have_family(session) && session.get_supported_protocols();
}

bool get_display_bitmap(Session& session, int) {
  if (session.settings.GPS != store::Family::None) return session.get_display_bitmap();
  session.front_end.write_line(6, "Must select GPS first!");
  session.flags.UserAbort = true;
  return false;
}

bool rotate_bitmap_left(Session& session, int) {
  if (!session.picture) {
    session.front_end.write_line(1, "There is no picture of a receiver's screen to turn.");
    return false;
  }
  try {
    session.picture->rotate_left();
    return true;
  } catch (const std::bad_alloc&) {
    session.front_end.write_line(1, "Not enough memory");
    return false;
  }
}

bool get_voltages(Session& session, int) { return must_have_family(session) && session.get_voltages(); }

bool get_time(Session& session, int) { return must_have_family(session) && session.get_time(); }

bool get_position(Session& session, int) { return must_have_family(session) && session.get_position(); }

bool power_off(Session& session, int) { return must_have_family(session) && session.power_off(); }

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

constexpr Refusal kNoEvents{store::Family::Garmin, "Garmin receivers have no events."};
constexpr Refusal kNoTrails{store::Family::Garmin, "Garmin receivers have no plot trails."};
constexpr Refusal kNoProximity{store::Family::Lowrance, "Lowrance/Eagle units have no proximity waypoints."};
constexpr Refusal kNoAlmanac{store::Family::Lowrance, "Lowrance/Eagle units have no almanac."};
constexpr Refusal kCannotBeAsked{store::Family::Lowrance, "Lowrance/Eagle units cannot be asked for this."};

constexpr int kGetPosition = 40050;

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
    Command{40032, "Plot Trail &1", "download-trail1", download, kNoTrails},
    Command{40033, "Plot Trail &2", "download-trail2", download, kNoTrails},
    Command{40185, "Plot Trail &3", "download-trail3", download, kNoTrails},
    Command{40186, "Plot Trail &4", "download-trail4", download, kNoTrails},
    Command{40034, "&Routes", "download-routes", download},
    Command{40035, "&Events (LEI Icons)", "download-events", download, kNoEvents},
    Command{40036, "&Proximity Waypoints", "download-proximity", download, kNoProximity},
    Command{40037, "Al&manac", "download-almanac", download, kNoAlmanac},
    Command{40038, "&All", "upload-all", upload},
    Command{40039, "&Waypoints", "upload-waypoints", upload},
    Command{40040, "&Tracks (Garmin)", "upload-tracks", upload},
    Command{40042, "Plot Trail &1", "upload-trail1", upload, kNoTrails},
    Command{40043, "Plot Trail &2", "upload-trail2", upload, kNoTrails},
    Command{40187, "Plot Trail &3", "upload-trail3", upload, kNoTrails},
    Command{40188, "Plot Trail &4", "upload-trail4", upload, kNoTrails},
    Command{40150, "Plot Trail A&ll", "upload-trails", upload},
    Command{40044, "&Routes", "upload-routes", upload},
    Command{40045, "&Proximity Waypoints", "upload-proximity", upload, kNoProximity},
    Command{40046, "Al&manac", "upload-almanac", upload, kNoAlmanac},
    Command{40059, "&Events (LEI Icons)", "upload-events", upload, kNoEvents},
    Command{40116, "&Upload", "", upload},
    Command{40117, "&Download", "", download},
    Command{40118, "&Upload", "", upload},
    Command{40119, "&Download", "", download},
    Command{40156, "&Upload", "", upload},
    Command{40159, "&Download", "", download, kNoEvents},
    Command{40160, "&Upload", "", upload, kNoEvents},
    Command{40047, "&Get GPS ID", "identify", get_gps_id},
    Command{40048, "Get &Voltage", "voltage", get_voltages, kCannotBeAsked},
    Command{40049, "Get &Time (UTC)", "time", get_time, kCannotBeAsked},
    Command{kGetPosition, "Get &Position", "position", get_position, kCannotBeAsked},
    Command{40051, "Get &Supported Protocols", "protocols", get_supported_protocols, kCannotBeAsked},
    Command{40053, "Turn &Off GPS", "poweroff", power_off, kCannotBeAsked},
    Command{40052, "Get && Show &Display Bitmap\tCtrl+D", "screen", get_display_bitmap},
    Command{40099, "&Rotate bitmap Left\tCtrl+L", "rotate-left", rotate_bitmap_left},
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

std::string_view refusal(const Session& session, int id) {
  const auto* row = std::ranges::find(kCommands, id, &Command::id);
  const bool refused = row != kCommands.end() && row->refusal.family == session.settings.GPS;
  return refused ? row->refusal.why : std::string_view();
}

bool run_command(Session& session, Display& display, int id) {
  const auto* row = std::ranges::find(kCommands, id, &Command::id);
  if (row == kCommands.end()) return false;
  display.clear();
  const std::string_view why_not = refusal(session, id);
  if (!why_not.empty()) display.write_line(1, why_not);
  const bool done = why_not.empty() && row->action(session, id);
  session.keep_port_speed();
  display.set_status(3, " ");
  display.refresh_title();
  return done;
}

bool follow_position(Session& session, Display& display, const garmin::GarminCommands::LineSink& sink) {
  display.clear();
  const std::string_view why_not = refusal(session, kGetPosition);
  if (!why_not.empty()) display.write_line(1, why_not);
  return why_not.empty() && must_have_family(session) && session.follow_position(sink);
}

int command_id(std::string_view word) {
  const auto* row = std::ranges::find(kCommands, word, &Command::word);
  return word.empty() || row == kCommands.end() ? 0 : row->id;
}

}  // namespace ui
