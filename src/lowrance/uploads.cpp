#include "lowrance/uploads.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>

#include "base/text.h"
#include "lowrance/plot_trails.h"
#include "lowrance/route_upload.h"
#include "store/symbol_sets.h"

namespace lowrance {
namespace {

using base::format_text;

constexpr int kFirstCompletionLine = 3;
constexpr int kRemarkLine = 9;
constexpr int kNoteLine = 10;
constexpr int kMostSlots = 65536;  // that a record can name
constexpr std::uint8_t kEmptySlot = 0;
constexpr std::uint8_t kActive = 1;

constexpr std::string_view kAbortWaypoints = "Operator Abort in SendLowrWaypoints";
constexpr std::string_view kAbortTrails = "Operator Abort in Plot Trail upload";
constexpr std::string_view kAbortEvents = "Operator Abort in SendLowrIcons";

// Slots as the user counts them, from 1.
int valid_start(int setting) { return std::clamp(setting, 1, kMostSlots); }

std::string_view plural_of(const TransferKinds& kinds) {
  if (kinds.is_all()) return "waypoints, routes, tracks or events";
  if (kinds.waypoints) return "waypoints";
  if (kinds.routes) return "routes";
  return kinds.trails ? "tracks" : "events";
}

}  // namespace

bool LowranceUploads::upload(int command_id) {
  const std::optional<TransferKinds> kinds = upload_kinds(command_id);
  if (!kinds) {
    front_end().message_box("Program Error",
                            format_text("Program error A144; which=%d. Please report to author", command_id));
    return false;
  }
  remarks_ = notes_ = {};
  all_taken_ = true;
  changed_symbols_ = 0;
  anything_tried_ = false;
  next_line_ = kFirstCompletionLine;
  const Conversation conversation(connection_);
  if (!conversation.is_open()) return false;
  if (run(*kinds)) {
    complete("Upload(s) completed");
  } else {
    all_taken_ = false;
  }
  tell_at_the_end(*kinds);
  return all_taken_ && remarks_.text().empty();
}

bool LowranceUploads::run(const TransferKinds& kinds) {
  // Routes name their waypoints by slots, so these go first.
  if ((kinds.waypoints || kinds.routes) && items_.waypoint_count() > 0) {
    send_waypoints(kinds.routes && items_.route_count() > 0);
    anything_tried_ = kinds.waypoints && !waypoints_.empty();
    if (!connection_.goes_on_after_kind(kAbortWaypoints)) return false;
  }
  if (kinds.routes && items_.route_count() > 0) {
    send_routes();
    if (!connection_.goes_on_after_kind(RouteUpload::kAbortText)) return false;
  }
  if (kinds.trails && items_.track_point_count() > 0) {
    send_trails(kinds.trail);
    if (!connection_.goes_on_after_kind(kAbortTrails)) return false;
  }
  if (kinds.events && items_.event_count() > 0) {
    send_events();
    if (!connection_.goes_on_after_kind(kAbortEvents)) return false;
  }
  return true;
}

void LowranceUploads::tell_at_the_end(const TransferKinds& kinds) {
  front_end().set_status(1, " ");
  waypoints_ = {};
  if (!anything_tried_ && !connection_.stopped())
    remarks_.add("Nothing to upload: there are no selected " + std::string(plural_of(kinds)));
  const int damaged = connection_.link.damaged_answers();
  remarks_.add(damaged, "answers had a wrong checksum and were taken as they came");
  if (connection_.link.given_up()) remarks_.add("the upload broke off: the unit keeps what it answered");
  notes_.add(changed_symbols_, "symbols are not in this unit's set and became others or the dot");
  if (!remarks_.text().empty()) front_end().write_line(kRemarkLine, remarks_.text());
  if (!notes_.text().empty()) front_end().write_line(kNoteLine, notes_.text());
}

void LowranceUploads::complete(std::string_view text) {
  front_end().set_progress_range(0);
  front_end().write_line(next_line_++, text);
}

bool LowranceUploads::is_silent(Command command, const base::Bytes& record, std::string_view label) {
  return !connection_.link.ask(command, record, label) && !connection_.port.esc_waits();
}

std::uint8_t LowranceUploads::symbol_of(const store::ItemRecord& item) {
  const int code = store::symbol_code(item, settings_);
  const int symbols = connection_.unit().NumOfIconSym;
  if (!store::exact_lowrance_symbol(code, symbols)) ++changed_symbols_;
  return store::lowrance_symbol(code, symbols);
}

void LowranceUploads::send_waypoints(bool routes_follow) {
  front_end().set_status(1, "Sending LEI Waypoints");
  front_end().write_line(kFirstCompletionLine, "Sending Lowrance Waypoints");
  prepare_waypoints();
  const int start = valid_start(settings_.SA_LwrStartPt);
  SendLowrWaypoints(start);
  // Whatever is to be emptied is so behind the last waypoint that is sent at all.
  if (!routes_follow || start == valid_start(settings_.SA_LwrRteStartPt)) send_inactives(start);
  if (!connection_.stopped()) complete("Waypoint upload completed");
}

void LowranceUploads::prepare_waypoints() {
  waypoints_.clear();
  const std::int64_t offset = offset_();
  int cut_names = 0, no_place = 0, copies = 0;
  std::set<std::tuple<std::string, double, double>> different;
  for (int i = 1; i <= items_.waypoint_count(); ++i) {
    const store::ItemRecord item = items_.waypoint(i);
    if (item.in_use == 0 || item.selected == 0) continue;
    waypoints_.push_back({i, std::nullopt});
    if (!different.emplace(item.ident, item.position.latitude, item.position.longitude).second) ++copies;
    if (is_on_grid(item.position)) {
      waypoints_.back().record = WaypointRecord{0,
                                                kActive,
                                                symbol_of(item),
                                                to_grid(item.position),
                                                std::string(item.ident),
                                                to_unit_time(item.time, offset)};
      if (item.ident.size() > kNameSize) ++cut_names;
    } else {
      ++no_place;
    }
  }
  notes_.add(cut_names, "names were cut to 13 letters");
  notes_.add(copies, "waypoints are exact copies of others and take slots of their own");
  remarks_.add(no_place, "waypoints are where the unit has no places and were not sent");
}

// The start is the slot, from 1, of the first.
void LowranceUploads::SendLowrWaypoints(int start) {
  const int most = limit_waypoints(start);
  front_end().write_progress(4, format_text("W00000 of %d", most));
  front_end().set_progress_range(most);
  int silences = 0;
  int slot = start - 2;
  for (const SelectedWaypoint& waypoint : waypoints_) {
    // Each has its slot, sent or not: routes count on that.
    if (++slot >= kMostSlots || connection_.must_end(kAbortWaypoints)) break;
    front_end().write_progress(4, format_text("W%05d of %d", waypoint.index, most));
    front_end().step_progress();
    if (!waypoint.record) continue;
    WaypointRecord record = *waypoint.record;
    record.number = static_cast<std::uint16_t>(slot);
    if (is_silent(Command::SendWaypoint, write_waypoint(record), "SendLowrWPT")) ++silences;
  }
  remarks_.add(silences, "waypoints were not answered");
}

// Says what the unit has no room for. Advice only: it is sent all the same. Returns how many waypoints to announce.
int LowranceUploads::limit_waypoints(int start) {
  const int slots = std::max<int>(connection_.unit().NumOfWaypoints, 0);
  const int selected = static_cast<int>(waypoints_.size());
  int stored = 0;
  for (int i = 1; i <= items_.waypoint_count(); ++i)
    if (items_.waypoint(i).in_use != 0) ++stored;
  if (slots < stored) {
    front_end().write_line(1, format_text("This GPS only supports %d waypoints.", slots));
    front_end().write_line(2, format_text("Sending %d of %d waypoints.", slots, stored));
  }
  const int beyond = selected + start - 1 - slots;
  if (beyond <= 0 || selected == 0) return selected;
  const int most = std::max(slots - start, 0);
  front_end().write_line(1, format_text("Sending too many waypoints to start at #%d", start));
  front_end().write_line(2, format_text("Sending only the first %d waypoints", most));
  remarks_.add(std::min(beyond, selected),
               format_text("waypoints have no slot in this unit when they start at #%d", start));
  return most;
}

// Where the setting wants it, behind the waypoints that start at that slot, from 1.
void LowranceUploads::send_inactives(int start) {
  const auto last = std::ranges::find_if(waypoints_.rbegin(), waypoints_.rend(),
                                         [](const SelectedWaypoint& waypoint) { return waypoint.record.has_value(); });
  if (settings_.SA_SendLowrInactives == 0 || last == waypoints_.rend() || connection_.stopped()) return;
  // Deliberate : the first slot behind the waypoints is left as it is.
  const int first_slot = start + static_cast<int>(waypoints_.size());
  const int slots = connection_.unit().NumOfWaypoints;
  front_end().write_line(kFirstCompletionLine, "Sending Inactives");
  front_end().write_progress(4, format_text("IA%04d", first_slot));
  front_end().set_status(1, "Sending Inactives");
  WaypointRecord record = *last->record;
  record.status = kEmptySlot;
  record.symbol = 0;
  int silences = 0;
  for (int slot = first_slot; slot < slots && !connection_.must_end(kAbortWaypoints); ++slot) {
    record.number = static_cast<std::uint16_t>(slot);
    if (is_silent(Command::SendWaypoint, write_waypoint(record), "SendLowrWPT")) ++silences;
    front_end().write_progress(4, format_text("IA%04d of %04d", slot + 1, slots));
  }
  remarks_.add(silences, "emptied slots were not answered");
}

void LowranceUploads::send_routes() {
  const int start = valid_start(settings_.SA_LwrRteStartPt);
  const int waypoint_start = valid_start(settings_.SA_LwrStartPt);
  if (start != waypoint_start && !waypoints_.empty()) {
    front_end().set_status(1, "Sending LEI Route WPTS");
    front_end().write_line(kFirstCompletionLine, "Sending Lowrance Route Waypoints");
    SendLowrWaypoints(start);
    send_inactives(std::max(start, waypoint_start));
    if (connection_.stopped()) return;
    notes_.add(format_text("waypoints were sent twice, from slot %d and, for the routes, from slot %d on",
                           waypoint_start, start));
  }
  front_end().set_status(1, "Sending Lowrance Routes");
  front_end().write_line(kFirstCompletionLine, "Sending Lowrance Routes");
  if (items_.selected_count('R') > 0) anything_tried_ = true;
  std::set<int> not_sent;
  for (const SelectedWaypoint& waypoint : waypoints_)
    if (!waypoint.record) not_sent.insert(waypoint.index);
  RouteUpload(connection_, items_, remarks_, notes_, not_sent).SendLowrRoutes(start);
  if (!connection_.stopped()) complete("Route upload completed");
}

// Trail 0: all of the unit.
void LowranceUploads::send_trails(int trail) {
  front_end().set_status(1, "Sending Plot trails");
  TrailUpload upload(connection_, items_, remarks_);
  const int trails = connection_.unit().NumOfPlotTrails;
  const int tracks = upload.selected_tracks();
  if (tracks > 0) anything_tried_ = true;
  if (trail > trails) remarks_.add(format_text("this unit has no plot trail %d, only %d", trail, trails));
  if (trail == 0) remarks_.add(tracks - trails, "tracks have no plot trail in this unit");
  if (trail > tracks) all_taken_ = false;
  const int last = trail == 0 ? trails : std::min(trail, trails);
  for (int number = std::max(trail, 1); number <= last && !connection_.must_end(kAbortTrails); ++number)
    if (!upload.upload(number, number)) all_taken_ = false;
  if (!connection_.stopped()) complete("Track upload completed");
}

void LowranceUploads::send_events() {
  front_end().set_status(1, "Sending Events");
  std::vector<IconRecord> icons;
  int no_place = 0;
  for (int i = 1; i <= items_.event_count(); ++i) {
    const store::ItemRecord item = items_.event(i);
    if (item.in_use == 0) continue;
    anything_tried_ = true;
    if (is_on_grid(item.position)) {
      icons.push_back({static_cast<std::uint16_t>(icons.size()), to_grid(item.position), symbol_of(item)});
    } else {
      ++no_place;
    }
  }
  remarks_.add(no_place, "events are where the unit has no places and were not sent");
  SendLowrIcons(icons);
  if (!connection_.stopped()) complete("Event (Icon) upload completed");
}

void LowranceUploads::SendLowrIcons(const std::vector<IconRecord>& icons) {
  const int slots = std::max<int>(connection_.unit().NumOfIcons, 0);
  const int all = static_cast<int>(icons.size());
  const int count = std::min(all, slots);
  if (slots < all) {
    front_end().write_line(1, format_text("This unit supports %d Icons.", slots));
    front_end().write_line(2, format_text("Sending %d of %d Icons.", slots, all));
    remarks_.add(all - slots, "events have no slot in this unit and were not sent");
  }
  // A unit without events is not to be troubled, and one whose events all stay where they are keeps what it has.
  if (count == 0) return;
  const base::Bytes announced = base::ByteWriter().u16(static_cast<std::uint16_t>(count)).result();
  if (is_silent(Command::SetIconCount, announced, "SendNumOfIconsToSend"))
    remarks_.add("the number of events was not answered");
  front_end().write_progress(4, format_text("I%05d of %05d", 0, count));
  front_end().set_progress_range(count);
  int silences = 0;
  for (int i = 0; i < count && !connection_.must_end(kAbortEvents); ++i) {
    const IconRecord& icon = icons[static_cast<std::size_t>(i)];
    if (is_silent(Command::SendIcon, write_icon(icon), "SendLowrIcons")) ++silences;
    front_end().write_progress(4, format_text("I%05d", i + 1));
    front_end().step_progress();
  }
  remarks_.add(silences, "events were not answered");
}

}  // namespace lowrance
