#include "lowrance/downloads.h"

#include <algorithm>
#include <string>

#include "base/text.h"
#include "lowrance/plot_trails.h"
#include "store/symbol_sets.h"
#include "store/symbols.h"

namespace lowrance {
namespace {

using base::format_text;

constexpr int kRemarkLine = 6;
constexpr std::int16_t kSymbolAndName = 3;  // of ItemRecord::display_mode

constexpr std::string_view kAbortWaypoints = "Operator Abort in GetLowrWpts";
constexpr std::string_view kAbortEvents = "Operator Abort in Waypoint download";
constexpr std::string_view kAbortTrails = "Operator Abort in Plot Trail download";
constexpr std::string_view kAbortRoutes = "Operator Abort in GetLowrRts";
constexpr std::string_view kAbortRoute = "Operator Abort in DoLowrRoute";

// An inactive slot that keeps what was in it will still do for a route.
bool is_empty_slot(const WaypointRecord& waypoint) { return waypoint.status == 0 && waypoint.name.empty(); }

}  // namespace

bool LowranceDownloads::download(int command_id) {
  const std::optional<TransferKinds> kinds = download_kinds(command_id);
  if (!kinds) return false;
  remarks_ = {};
  all_came_ = true;
  moved_routes_ = dropped_ = 0;
  next_line_ = 1;
  const Conversation conversation(connection_);
  if (!conversation.is_open()) return false;
  items_.set_input_time_offset(0);
  items_.clear_route_overflow();
  if (!run(*kinds)) all_came_ = false;
  tell_at_the_end();
  return all_came_ && remarks_.text().empty();
}

bool LowranceDownloads::run(const TransferKinds& kinds) {
  const bool asked_for = !kinds.is_all();
  if (kinds.waypoints) {
    GetLowrWpts(asked_for);
    if (!connection_.goes_on_after_kind(kAbortWaypoints)) return false;
  }
  if (kinds.events) {
    GetLowrIcons(asked_for);
    if (!connection_.goes_on_after_kind(kAbortEvents)) return false;
  }
  if (kinds.trails) {
    get_trails(kinds.trail, asked_for);
    if (!connection_.goes_on_after_kind(kAbortTrails)) return false;
  }
  if (kinds.routes) {
    GetLowrRts(asked_for);
    if (!connection_.goes_on_after_kind(kAbortRoutes)) return false;
  }
  if (kinds.is_all()) complete("Download(s) Finished");
  return true;
}

void LowranceDownloads::tell_at_the_end() {
  front_end().set_status(1, " ");
  const int damaged = connection_.link.damaged_answers();
  remarks_.add(damaged, "answers had a wrong checksum and were taken as they came");
  if (connection_.link.given_up()) remarks_.add("the download broke off: what has arrived is kept");
  base::Remarks all = remarks_;
  all.add(moved_routes_, "routes have got another number, as theirs was taken or is above 99");
  all.add(dropped_, "waypoints were dropped as duplicates, as the settings say");
  if (!all.text().empty()) front_end().write_line(kRemarkLine, all.text());
}

void LowranceDownloads::complete(std::string_view text) {
  front_end().set_progress_range(0);
  front_end().write_line(next_line_++, text);
}

void LowranceDownloads::lacks(bool asked_for, const std::string& remark) {
  if (asked_for) remarks_.add(remark);
}

void LowranceDownloads::remark(const Counts& counts, std::string_view items) {
  const std::string of_items = std::string(items) + ' ';
  remarks_.add(counts.missing, of_items + "did not come");
  remarks_.add(counts.damaged, of_items + "came damaged");
  remarks_.add(counts.empty_slots, of_items + "name empty slots and were left out");
  remarks_.add(counts.strange_symbols, of_items + "have a symbol outside the unit's set and got the dot");
}

// The answer with the number that was asked for; else nothing, which is counted.
template <typename Record, typename Read>
std::optional<Record> LowranceDownloads::fetch(Command command, int number, std::string_view label, Read read,
                                               Counts& counts) {
  const auto wanted = static_cast<std::uint16_t>(number);
  const std::optional<base::Bytes> answer =
      connection_.link.ask(command, base::ByteWriter().u16(wanted).result(), label);
  if (!answer) {
    if (!connection_.port.esc_waits()) ++counts.missing;
    return std::nullopt;
  }
  const std::optional<Record> record = read(*answer);
  if (record && record->number == wanted) return record;
  ++(record ? counts.missing : counts.damaged);
  return std::nullopt;
}

bool LowranceDownloads::take_place(const GridPoint& place, std::uint8_t symbol, Counts& counts) {
  const std::optional<geodesy::Position> position = from_grid(place);
  if (!position) {
    ++counts.damaged;
    return false;
  }
  const std::optional<std::int16_t> code = store::code_of_lowrance_symbol(symbol, connection_.unit().NumOfIconSym);
  if (!code) ++counts.strange_symbols;
  items_.start_item();
  store::ItemRecord& item = items_.CurrentItem;
  item.position = *position;
  item.symbol = code.value_or(static_cast<std::int16_t>(store::kDotSymbol));
  item.symbol_mode = store::mode_of_codes(settings_);
  item.display_mode = kSymbolAndName;
  return true;
}

bool LowranceDownloads::take_waypoint(const WaypointRecord& waypoint, Counts& counts) {
  if (!take_place(waypoint.place, waypoint.symbol, counts)) return false;
  items_.CurrentItem.ident = waypoint.name;
  items_.CurrentItem.time = from_unit_time(waypoint.time);
  return true;
}

void LowranceDownloads::GetLowrWpts(bool asked_for) {
  front_end().set_status(1, "Downloading Waypoints");
  const int slots = connection_.unit().NumOfWaypoints;
  const int start = std::max(settings_.SA_LwrRangeLo, 1);
  const int stop = settings_.SA_LwrRangeHi < 0 ? slots : std::min(settings_.SA_LwrRangeHi, slots);
  if (slots <= 0) lacks(asked_for, "this unit holds no waypoints");
  if (slots > 0 && start > stop) {
    all_came_ = false;
    return complete(
        format_text("There are no waypoints from %d to %d: this unit has %d", start, settings_.SA_LwrRangeHi, slots));
  }
  front_end().write_progress(4, format_text("W0000 of %04d Active:%04d", std::max(stop, 0), 0));
  front_end().set_progress_range(std::max(stop - start, 0));
  Counts counts;
  int active = 0;
  const int before = items_.waypoint_count();
  for (int number = start - 1; number < stop && !connection_.must_end(kAbortWaypoints); ++number) {
    const auto waypoint = fetch<WaypointRecord>(Command::GetWaypoint, number, "GetLowrWPT", read_waypoint, counts);
    if (waypoint && waypoint->status != 0 && take_waypoint(*waypoint, counts)) {
      if (items_.push_waypoint(0) != 0) {
        remarks_.add(format_text("the store has no room for the waypoints from %d on", number + 1));
        break;
      }
      ++active;
    }
    front_end().write_progress(4, format_text("W%04d of %04d Active:%04d", number + 1, stop, active));
    front_end().step_progress();
  }
  dropped_ = active - (items_.waypoint_count() - before);
  remark(counts, "waypoints");
  if (!connection_.stopped()) complete("Waypoint download completed");
}

void LowranceDownloads::GetLowrIcons(bool asked_for) {
  front_end().set_status(1, "Downloading Events");
  if (connection_.unit().NumOfIcons < 1) {
    front_end().write_line(4, "Icons not supported on this Lowrance/Eagle unit");
    if (asked_for) all_came_ = false;
    return complete("Event (Icon) download completed");
  }
  const int count = ask_icon_count();
  if (count > 0) {
    front_end().write_progress(4, format_text("I%05d of %5d", 0, count));
    front_end().set_progress_range(count);
  }
  Counts counts;
  for (int number = 0; number < count && !connection_.must_end(kAbortEvents); ++number) {
    const auto icon = fetch<IconRecord>(Command::GetIcon, number, "GetLowrIcons", read_icon, counts);
    if (icon && take_place(icon->place, icon->symbol, counts) && items_.push_event() != 0) {
      remarks_.add(format_text("the store has no room for the events from %d on", number + 1));
      break;
    }
    front_end().write_progress(4, format_text("I%05d", number + 1));
    front_end().step_progress();
  }
  remark(counts, "events");
  if (!connection_.stopped()) complete("Event (Icon) download completed");
}

int LowranceDownloads::ask_icon_count() {
  const std::optional<base::Bytes> answer = connection_.link.ask(Command::GetIconCount, {}, "GetNumOfIcons");
  const std::optional<std::uint16_t> announced = answer ? read_icon_count(*answer) : std::nullopt;
  if (!announced && !connection_.port.esc_waits()) remarks_.add("the number of events did not come");
  if (announced == 0) front_end().write_line(4, "No Icons to send");
  const int count = std::min<int>(announced.value_or(0), connection_.unit().NumOfIcons);
  remarks_.add(announced.value_or(0) - count, "events are more than the unit says it can hold and were not asked for");
  return count;
}

// Trail 0: all of them.
void LowranceDownloads::get_trails(int trail, bool asked_for) {
  const int trails = connection_.unit().NumOfPlotTrails;
  if (trails == 0) lacks(asked_for, "this unit has no plot trails");
  if (trail > trails && trails > 0) {
    front_end().beep();
    complete(format_text("Cannot download trail %d--this unit only supports %d trails.", trail, trails));
    complete(format_text("Downloading trail %d.", trails));
    all_came_ = false;
    trail = trails;
  }
  const int last = trail == 0 ? trails : std::min(trail, trails);
  for (int number = std::max(trail, 1); number <= last && !connection_.must_end(kAbortTrails); ++number)
    get_trail(number);
  if (!connection_.stopped()) complete("Plot Trail download completed");
}

void LowranceDownloads::get_trail(int trail) {
  front_end().set_status(1, format_text("Downloading Trail %d", trail));
  const store::GarminTime now{static_cast<std::uint32_t>(clock_.unix_seconds() - store::kGarminEpochUnix)};
  if (!TrailDownload(connection_, items_, now, remarks_).download(trail)) all_came_ = false;
}

void LowranceDownloads::GetLowrRts(bool asked_for) {
  front_end().set_status(1, "Downloading Routes");
  const int slots = connection_.unit().NumOfRoutes;
  if (slots <= 0) lacks(asked_for, "this unit holds no routes");
  front_end().set_progress_range(std::max(slots, 0));
  Counts routes, points;
  for (int number = 0; number < slots && !connection_.must_end(kAbortRoutes); ++number) {
    const auto route = fetch<RouteRecord>(Command::GetRoute, number, "GetLowrRoute", read_route, routes);
    if (route && !DoLowrRoute(*route, points)) break;
    front_end().step_progress();
  }
  items_.link_route_points();
  remark(routes, "routes");
  remark(points, "route points");
  if (!connection_.stopped()) complete("Route download completed");
}

bool LowranceDownloads::DoLowrRoute(const RouteRecord& route, Counts& points) {
  const int number = route.number;
  if (route.count > kMostRoutePoints) {
    front_end().write_line(4, "Too Many Route Points, 200 is the maximum supported");
    remarks_.add(format_text("route %d has too many points and was left out", number));
    return true;
  }
  // Every slot answers; one without points and name is empty.
  if (route.count == 0 && route.name.empty()) return true;
  const std::uint32_t row = items_.free_route(route.number);
  if (row != route.number) ++moved_routes_;
  items_.start_route(row, format_text("%02d", number), format_text("R  %02d %s", number, route.name.c_str()));
  if (items_.push_route(true) != 0) {
    remarks_.add(format_text("the store has no room for route %d and those behind it", number));
    return false;
  }
  const int slots = connection_.unit().NumOfRoutes;
  const int count = route.count;
  front_end().write_progress(4, format_text("R%05d of %d  W%05d of %5d", number, slots, 0, count));
  for (int i = 0; i < count && !connection_.must_end(kAbortRoute); ++i) {
    front_end().write_progress(4, format_text("R%05d of %d  W%05d of %5d", number, slots, i + 1, count));
    const auto point = fetch<WaypointRecord>(Command::GetWaypoint, route.waypoints[static_cast<std::size_t>(i)],
                                             "GetLowrWaypoint,GetLowrRoute", read_waypoint, points);
    if (point && is_empty_slot(*point)) ++points.empty_slots;
    if (!point || is_empty_slot(*point) || !take_waypoint(*point, points)) continue;
    if (items_.push_route(true) != 0) {
      remarks_.add(format_text("route %d ends at point %d: the store takes no more", number, i));
      break;
    }
  }
  return true;
}

}  // namespace lowrance
