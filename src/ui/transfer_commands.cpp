#include <algorithm>
#include <array>

#include "session/find_receivers.h"
#include "ui/actions.h"
#include "ui/ports.h"

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

bool is_lowrance(const Session& session) { return session.settings.GPS == store::Family::Lowrance; }

// Routes of a Lowrance/Eagle unit are made of its waypoints, so whoever wants them is asked about those too.
bool moves_waypoints(int id) {
  static constexpr std::array kIds{40028, 40029, 40034, 40117, 40119, 40038, 40039, 40044, 40116, 40118};
  return std::ranges::find(kIds, id) != kIds.end();
}

constexpr int kGarminFamily = 40310;

store::Family family_of(int id) { return id == kGarminFamily ? store::Family::Garmin : store::Family::Lowrance; }

}  // namespace

bool must_have_family(const Session& session) {
  if (session.settings.GPS != store::Family::None) return true;
  session.front_end.write_line(1, "Choose the receiver family first: GPS, then Garmin or Lowrance/Eagle.");
  return false;
}

bool download(const CommandContext& context, int id) {
  Session& session = context.session;
  if (!must_have_family(session)) return false;
  if (is_lowrance(session)) {
    if (moves_waypoints(id) && !context.windows.ask_lowrance_options(Direction::Download)) return false;
    return session.lowrance_downloads.download(id);
  }
  const auto* row = std::ranges::find(kGarminDownloads, id, &DownloadRow::id);
  return row != kGarminDownloads.end() && session.garmin_downloads.download(row->kind);
}

bool upload(const CommandContext& context, int id) {
  Session& session = context.session;
  if (!must_have_family(session)) return false;
  const auto* row = std::ranges::find(kMenuUploads, id, &UploadRow::id);
  const std::string_view kinds = row == kMenuUploads.end() ? std::string_view() : row->kinds;
  for (const char kind : kinds) session.items.select_all(kind, true);
  if (is_lowrance(session) && kinds == "R") session.items.select_all('W', true);  // the points of routes are waypoints
  return send_selected(context, id);
}

bool send_selected(const CommandContext& context, int id) {
  Session& session = context.session;
  if (!must_have_family(session)) return false;
  if (!is_lowrance(session)) return session.garmin_uploads.upload(id);
  if (moves_waypoints(id) && session.items.selected_count('W') > 0 &&
      !context.windows.ask_lowrance_options(Direction::Upload))
    return false;
  return session.lowrance_uploads.upload(id);
}

bool get_gps_id(const CommandContext& context, int) {
  return must_have_family(context.session) && context.session.get_gps_id();
}

bool get_supported_protocols(const CommandContext& context, int) {
  return must_have_family(context.session) && context.session.get_supported_protocols();
}

bool get_voltages(const CommandContext& context, int) {
  return must_have_family(context.session) && context.session.get_voltages();
}

bool get_time(const CommandContext& context, int) {
  return must_have_family(context.session) && context.session.get_time();
}

bool get_position(const CommandContext& context, int) {
  return must_have_family(context.session) && context.session.get_position();
}

bool power_off(const CommandContext& context, int) {
  return must_have_family(context.session) && context.session.power_off();
}

bool get_display_bitmap(const CommandContext& context, int) {
  Session& session = context.session;
  if (session.settings.GPS == store::Family::None) {
    session.front_end.write_line(6, "Must select GPS first!");
    session.flags.UserAbort = true;
    return false;
  }
  if (!session.get_display_bitmap()) return false;
  (void)context.windows.show_picture();
  return true;
}

bool find_receivers(const CommandContext& context, int) {
  Session& session = context.session;
  const std::vector<std::string> ports = port_names();
  if (ports.empty()) {
    session.front_end.write_line(1, kNoPorts);
    return false;
  }
  session.front_end.set_status(3, "ESC key to abort");
  int line = 3;
  const auto trying = [&](const std::string& port) { session.front_end.write_line(2, "Trying " + port + " ..."); };
  const auto found = [&](const session::PortFinding& finding) {
    session.front_end.write_line(line, finding.port + "  " + finding.text);
    if (line < Display::kLines) ++line;
  };
  const session::FindResult result = session::find_receivers(session, ports, std::nullopt, false, trying, found);
  session.front_end.write_line(2, "");
  if (result.stopped) session.front_end.write_line(1, "The search was stopped.");
  if (!result.stopped && result.receivers == 0) session.front_end.write_line(1, "No receiver was found.");
  return result.receivers > 0;
}

bool choose_family(const CommandContext& context, int id) {
  context.session.settings.GPS = family_of(id);
  context.session.apply_settings();
  return true;
}

bool is_chosen_family(const CommandContext& context, int id) { return context.session.settings.GPS == family_of(id); }

}  // namespace ui
