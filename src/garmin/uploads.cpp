#include "garmin/uploads.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace garmin {
namespace {

using base::format_text;

constexpr int kReceiptLine = 5;
constexpr int kRefusedLine = 6;
constexpr int kNamesLine = 9;
constexpr std::size_t kMostRecords = 65535;  // that a count packet can announce
constexpr std::size_t kWaypointCap = 750;

struct CommandRow {
  int id;
  Kind kind;
};
constexpr std::array kUploadCommands{
    CommandRow{40038, Kind::All},     CommandRow{40039, Kind::Waypoints}, CommandRow{40116, Kind::Waypoints},
    CommandRow{40040, Kind::Tracks},  CommandRow{40150, Kind::Tracks},    CommandRow{40156, Kind::Tracks},
    CommandRow{40044, Kind::Routes},  CommandRow{40118, Kind::Routes},    CommandRow{40045, Kind::ProximityWaypoints},
    CommandRow{40046, Kind::Almanac},
};

// As many of the names as a line has room for.
std::string shortened_list(std::span<const std::string> names) {
  constexpr std::size_t kRoom = 230;
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (list.size() + names[i].size() > kRoom)
      return list + format_text(" and %d more", static_cast<int>(names.size() - i));
    list += (list.empty() ? "" : ", ") + names[i];
  }
  return list;
}

}  // namespace

std::optional<Kind> upload_kind(int command_id) {
  const auto* row = std::ranges::find(kUploadCommands, command_id, &CommandRow::id);
  if (row == kUploadCommands.end()) return std::nullopt;
  return row->kind;
}

struct GarminUploads::Step {
  Kind kind;
  std::string_view plural;
  std::string_view status;
  std::string_view opener;      // label of the packet that opens the run
  std::string_view count_text;  // on line 1, with the number of records; empty: none
  std::string_view terminator;
  std::uint8_t Commands::*command;
  std::uint16_t Protocols::*transfer;
  PacketKind record;
  std::string_view nothing;
  std::string_view not_supported;
  std::string_view time_out;
  std::string_view completion;
  UploadRecordList (*records)(UploadRecords& all);
};

std::span<const GarminUploads::Step> GarminUploads::steps() {
  static constexpr std::string_view kTimeOut = "Serial Port Timeout during Upload";
  static constexpr std::array kSteps{
      Step{Kind::Almanac, "an almanac", "Sending Almanac", "Send number of sats", "", "Almanac terminator",
           &Commands::almanac, &Protocols::almanac_transfer, PacketKind::Pid_Almanac_Data, "no almanac is loaded.",
           "Almanac not supported.", kTimeOut, "Almanac upload completed",
           [](UploadRecords& all) { return all.almanac(); }},
      Step{Kind::ProximityWaypoints, "proximity waypoints", "Sending Proximity Waypoints",
           "bgnxfr: # of Proximity Waypoints", "P00000 of %d", "Prox Waypoint Terminator", &Commands::proximity,
           &Protocols::proximity_transfer, PacketKind::Pid_Prx_Wpt_Data, "no proximity waypoints are selected.",
           "Proximity waypoints are not supported in this GPS unit.", kTimeOut, "Proximity upload completed",
           [](UploadRecords& all) { return all.proximity(); }},
      Step{Kind::Waypoints, "waypoints", "Sending Waypoints", "bgnxfr: # of Waypoints", "W00000 of %d",
           "Waypoint Terminator", &Commands::waypoints, &Protocols::waypoint_transfer, PacketKind::Pid_Wpt_Data,
           "no waypoints are selected.", "Waypoints not supported.", "Serial Port Timeout in Upload",
           "Waypoints upload completed", [](UploadRecords& all) { return all.waypoints(); }},
      Step{Kind::Routes, "routes", "Sending Routes", "bgnxfr, Route", "", "Route DB terminator", &Commands::routes,
           &Protocols::route_transfer, PacketKind::Pid_Rte_Wpt_Data, "no routes are selected.", "Routes not supported.",
           kTimeOut, "Routes upload completed", [](UploadRecords& all) { return all.routes(); }},
      Step{Kind::Tracks, "tracks", "Sending Tracks", "bgnxfr: # of Tracks", "T00000 of %05u", "Track Terminator",
           &Commands::tracks, &Protocols::track_transfer, PacketKind::Pid_Trk_Data, "no track points are selected.",
           "Tracks not supported.", kTimeOut, "Tracks upload completed",
           [](UploadRecords& all) { return all.tracks(); }},
  };
  return kSteps;
}

bool GarminUploads::upload(int command_id) {
  const std::optional<Kind> kind = upload_kind(command_id);
  if (!kind) {
    front_end().message_box("Program Error", "Program error A143. Please report to author");
    return false;
  }
  const Conversation conversation(connection_);
  front_end().set_status(3, "ESC key to abort");
  if (!conversation.is_open() || connection_.stopped()) return false;
  next_line_ = 3;
  problems_.clear();
  names_changed_.clear();
  UploadRecords records(items_, settings_, connection_.selection.protocols());
  bool anything_tried = false;
  bool all_taken = true;
  for (const Step& step : steps()) {
    const bool asked_for = step.kind == *kind;
    if (!asked_for && (*kind != Kind::All || step.kind == Kind::Almanac)) continue;
    const Outcome outcome = upload_step(step, records, asked_for);
    if (outcome == Outcome::LeftOut) continue;
    anything_tried = true;
    if (outcome != Outcome::Done) all_taken = false;
    if (outcome == Outcome::Stopped) break;
  }
  if (!anything_tried && problems_.empty())
    problems_.emplace_back("Nothing to upload: no waypoints, routes, tracks or proximity waypoints are selected.");
  tell_at_the_end();
  return anything_tried && all_taken;
}

GarminUploads::Outcome GarminUploads::upload_step(const Step& step, UploadRecords& records, bool asked_for) {
  UploadRecordList list = step.records(records);
  if (list.empty()) {
    if (asked_for) problems_.push_back("Nothing to upload: " + std::string(step.nothing));
    return Outcome::LeftOut;
  }
  if (std::string problem = why_not(step, records); !problem.empty()) {
    problems_.push_back(std::move(problem));
    return Outcome::LeftOut;
  }
  if (!GarminLink::may_send(*id_of(step.record, connection_.selection.protocols().link))) {
    problems_.emplace_back(GarminLink::kMayNotBeSent);
    return Outcome::Incomplete;
  }
  const bool too_many = limit(step, list);
  const Outcome outcome = run_step(step, list);
  return too_many && outcome == Outcome::Done ? Outcome::Incomplete : outcome;
}

// What progress had no room for.
void GarminUploads::tell_at_the_end() {
  std::string problems;
  for (const std::string& problem : problems_) problems += (problems.empty() ? "" : " ") + problem;
  if (!problems.empty()) front_end().write_line(1, problems);
  if (!names_changed_.empty())
    front_end().write_line(
        kNamesLine, format_text("%d names were changed for the receiver", static_cast<int>(names_changed_.size())));
}

// Empty when the receiver can be sent records of the kind.
std::string GarminUploads::why_not(const Step& step, const UploadRecords& records) const {
  const Protocols& protocols = connection_.selection.protocols();
  if (protocols.*(step.transfer) == kNone || !id_of(step.record, protocols.link))
    return std::string(step.not_supported);
  return records.problem(step.kind);
}

// True when there were too many.
bool GarminUploads::limit(const Step& step, UploadRecordList& records) {
  if (records.size() <= kMostRecords) return false;
  const bool waypoints = step.kind == Kind::Waypoints;
  // Deliberate : far below what the store holds, but more than receivers of this kind have room for.
  const std::size_t most = waypoints ? kWaypointCap : kMostRecords;
  front_end().write_line(3, waypoints ? "Too many waypoints for a Garmin GPS receiver"
                                      : "Too many track points for a Garmin GPS receiver");
  front_end().write_line(4, format_text("  Sending first %d", static_cast<int>(most)));
  problems_.push_back(format_text("Only %d of %d ", static_cast<int>(most), static_cast<int>(records.size())) +
                      std::string(step.plural) + " were sent.");
  records.resize(most);
  return true;
}

GarminUploads::Outcome GarminUploads::run_step(const Step& step, const UploadRecordList& records) {
  front_end().set_status(1, step.status);
  front_end().write_line(kReceiptLine, "");
  front_end().write_line(kRefusedLine, "");
  front_end().set_progress_range(static_cast<int>(records.size()));
  Receipt receipt;
  const Answer answer = transfer(step, records, receipt);
  front_end().set_progress_range(0);
  front_end().set_status(1, " ");
  give_receipt(receipt);
  if (!receipt.refused.empty())
    problems_.push_back(format_text("%d of the ", static_cast<int>(receipt.refused.size())) + std::string(step.plural) +
                        " were refused.");
  if (answer == Answer::Stopped) {
    tell_stop(step);
    return Outcome::Stopped;
  }
  front_end().write_progress(1, "");
  front_end().write_progress(2, "");
  if (answer == Answer::Refused) return Outcome::Incomplete;
  complete(step.completion);
  return receipt.refused.empty() ? Outcome::Done : Outcome::Incomplete;
}

GarminUploads::Answer GarminUploads::transfer(const Step& step, const UploadRecordList& records, Receipt& receipt) {
  if (step.kind == Kind::Almanac && !commands_.send_utc_time()) return Answer::Stopped;
  const auto count = std::ranges::count_if(records, [](const UploadRecord& record) { return record.data.has_value(); });
  const Answer begun = bgnxfr(step, static_cast<std::uint16_t>(count));
  if (begun == Answer::Refused) problems_.push_back("The receiver does not take " + std::string(step.plural) + " now.");
  if (begun != Answer::Accepted) return begun;
  if (!send_records(records, receipt)) return Answer::Stopped;
  const std::uint8_t number = connection_.selection.commands().*(step.command);
  const Answer ended = sender_.send(*id_of(PacketKind::Pid_Xfer_Cmplt, connection_.selection.protocols().link),
                                    base::ByteWriter().u16(number).result(), step.terminator);
  if (ended == Answer::Refused)
    problems_.push_back("The receiver did not accept the end of the " + std::string(step.plural) + ".");
  return ended;
}

GarminUploads::Answer GarminUploads::bgnxfr(const Step& step, std::uint16_t count) {
  if (!step.count_text.empty()) front_end().write_progress(1, format_text(step.count_text.data(), count));
  return sender_.send(connection_.selection.records_id(), base::ByteWriter().u16(count).result(), step.opener);
}

bool GarminUploads::send_records(const UploadRecordList& records, Receipt& receipt) {
  using Role = UploadRecord::Role;
  const std::uint16_t link = connection_.selection.protocols().link;
  bool group_refused = false;
  bool previous_refused = false;
  for (const UploadRecord& record : records) {
    if (record.role == Role::Header) group_refused = previous_refused = false;
    const bool lost = group_refused || (record.role == Role::Follower && previous_refused);
    Answer answer = Answer::Refused;
    if (record.data && !lost) {
      front_end().write_progress(record.packet == PacketKind::Pid_Rte_Hdr ? 1 : 2, record.label);
      ++receipt.sent;
      answer = sender_.send(*id_of(record.packet, link), *record.data, record.label);
      if (answer == Answer::Stopped) return false;
    }
    front_end().step_progress();
    previous_refused = answer == Answer::Refused;
    if (previous_refused) {
      receipt.refused.push_back(record.name);
      group_refused = group_refused || record.role == Role::Header;
    } else {
      ++receipt.acknowledged;
      if (record.is_renamed) names_changed_.insert(record.name);
    }
  }
  return true;
}

void GarminUploads::tell_stop(const Step& step) {
  if (connection_.flags.UserAbort) {
    if (step.kind == Kind::Tracks) front_end().write_line(2, "Operator Abort in Track upload");
    connection_.selection.send_command(connection_.selection.commands().abort, "Gabort");
    return;
  }
  connection_.flags.GpsIdentified = false;  // who answers next may be another receiver
  connection_.close_port();
  front_end().write_line(2, step.time_out);
  if (!connection_.port.lost())
    complete("The upload to " + connection_.port.port_name() +
             " broke off. The receiver keeps what it acknowledged; check the cable and upload again.");
}

void GarminUploads::give_receipt(const Receipt& receipt) {
  front_end().write_line(kReceiptLine, format_text("%d sent, %d acknowledged, %d refused", receipt.sent,
                                                   receipt.acknowledged, static_cast<int>(receipt.refused.size())));
  front_end().write_line(kRefusedLine, shortened_list(receipt.refused));
}

// Completions go from line 3 on, past the receipt.
void GarminUploads::complete(std::string_view text) {
  if (next_line_ == kReceiptLine) next_line_ = kRefusedLine + 1;
  front_end().write_line(next_line_++, text);
}

}  // namespace garmin
