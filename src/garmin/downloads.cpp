#include "garmin/downloads.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "garmin/unknown_format.h"

namespace garmin {
namespace {

// Packets in a row that do not belong to the download; more are a receiver gone mad.
constexpr int kMostStrayPackets = 200;
constexpr int kMostRestarts = 5;
constexpr int kMostAlmanacAttempts = 3;
constexpr int kFirstCompletionLine = 3;
constexpr int kRolloverLine = 9;

}  // namespace

struct GarminDownloads::Step {
  Kind kind;
  std::string_view name;     // of the routine: debug log and error boxes
  char letter;               // in the progress text
  std::string_view nothing;  // said when the count is 0 ...
  int nothing_line;
  std::string_view no_end;  // ... and when the closing packet is another kind's
  std::string_view status;
  std::string_view completion;
  std::uint8_t Commands::*command;
  std::uint8_t completion_code;  // first data byte of its closing packet
  std::uint16_t Protocols::*transfer;
  PacketKind record;
  std::string_view not_supported;
};

std::span<const GarminDownloads::Step> GarminDownloads::steps() {
  static constexpr std::array kSteps{
      Step{Kind::Waypoints, "getWaypoints", 'W', "GPS: No Waypoint records to send", 1, "No Waypoint EOF received",
           "Downloading Waypoints", "Waypoint download completed", &Commands::waypoints, 7,
           &Protocols::waypoint_transfer, PacketKind::Pid_Wpt_Data, "Waypoints not supported."},
      Step{Kind::Tracks, "getTrack", 'T', "GPS: No Track records to send", 1, "No Track EOF received",
           "Downloading Tracks", "Tracks download completed", &Commands::tracks, 6, &Protocols::track_transfer,
           PacketKind::Pid_Trk_Data, "Tracks not supported."},
      Step{Kind::Routes, "getRoute", 'R', "GPS: No Route records to send", 4, "No Route EOF received",
           "Downloading Routes", "Routes download completed", &Commands::routes, 4, &Protocols::route_transfer,
           PacketKind::Pid_Rte_Wpt_Data, "Routes not supported."},
      Step{Kind::ProximityWaypoints, "getProxWaypoints", 'P', "GPS: No Proximity Waypoint records to send", 1,
           "No Proximity Waypoint EOF received", "Downloading ProxWaypoints", "Proximity download completed",
           &Commands::proximity, 3, &Protocols::proximity_transfer, PacketKind::Pid_Prx_Wpt_Data,
           "Proximity waypoints not supported."},
      Step{Kind::Almanac, "getAlmanac", 'A', "GPS: No almanac records to send", 4, "No Almanac EOF received",
           "Downloading Almanac", "Almanac download completed", &Commands::almanac, 1, &Protocols::almanac_transfer,
           PacketKind::Pid_Almanac_Data, "Almanac not supported."},
  };
  return kSteps;
}

GarminDownloads::GarminDownloads(const Connection& connection, const base::Clock& clock, store::ItemStore& items,
                                 const store::Settings& settings)
    : connection_(connection),
      clock_(clock),
      items_(items),
      settings_(settings),
      records_(connection.selection, items, settings, connection.front_end) {
  GarminLink& link = connection_.link;
  using Take = void (ReceivedRecords::*)(std::span<const std::uint8_t>);
  const auto on_record = [this, &link](PacketKind packet, Kind kind, Take take) {
    link.on(packet, [this, packet, kind, take](std::span<const std::uint8_t> data) {
      // A record of another kind, or before the count, is left over from a transfer that was broken off.
      if (running_ == nullptr || running_->kind != kind || expected_ < 0) return;
      lost_count_ = lost_count_ || (kind == Kind::Almanac && is_damaged());
      if (lost_count_ || is_repeat(packet, data)) return;
      ++received_;
      (records_.*take)(data);
    });
  };
  link.on(PacketKind::Pid_Records, [this](auto data) { take_records(data); });
  link.on(PacketKind::Pid_Xfer_Cmplt, [this](auto data) { take_completion(data); });
  on_record(PacketKind::Pid_Wpt_Data, Kind::Waypoints, &ReceivedRecords::take_waypoint);
  on_record(PacketKind::Pid_Prx_Wpt_Data, Kind::ProximityWaypoints, &ReceivedRecords::take_proximity);
  on_record(PacketKind::Pid_Trk_Hdr, Kind::Tracks, &ReceivedRecords::take_track_header);
  on_record(PacketKind::Pid_Trk_Data, Kind::Tracks, &ReceivedRecords::take_track_point);
  on_record(PacketKind::Pid_Rte_Hdr, Kind::Routes, &ReceivedRecords::take_route_header);
  on_record(PacketKind::Pid_Rte_Wpt_Data, Kind::Routes, &ReceivedRecords::take_route_point);
  on_record(PacketKind::Pid_Rte_Link_Data, Kind::Routes, &ReceivedRecords::take_route_link);
  on_record(PacketKind::Pid_Almanac_Data, Kind::Almanac, &ReceivedRecords::take_satellite);
}

bool GarminDownloads::download(Kind kind) {
  next_line_ = kFirstCompletionLine;
  completions_.clear();
  const Conversation conversation(connection_);
  front_end().set_status(3, "ESC key to abort");
  if (!conversation.is_open()) return false;
  items_.set_input_time_offset(0);  // receivers send UTC
  items_.clear_route_overflow();
  records_.forget_times();
  bool going_on = !stop_after(connection_.flags.UserAbort ? Outcome::Failed : Outcome::Done);
  bool all_came = going_on;
  for (const Step& step : steps()) {
    if (!going_on) break;
    const bool is_wanted = kind == Kind::All ? step.kind != Kind::Almanac : step.kind == kind;
    if (!is_wanted) continue;
    const Outcome outcome = run_step(step);
    // Asked for by name, a kind that the receiver does not have is a failure; among all kinds it is not.
    if (outcome == Outcome::Incomplete || (outcome == Outcome::NotSupported && kind != Kind::All)) all_came = false;
    if (stop_after(outcome)) going_on = all_came = false;
  }
  look_for_rollover();
  return all_came;
}

// Tells the receiver and the user when the download cannot go on; true then.
bool GarminDownloads::stop_after(Outcome outcome) {
  serial::DeviceFlags& flags = connection_.flags;
  const serial::ComPort& port = connection_.port;
  if (flags.UserAbort) {
    flags.UserAbort = false;
    abort_transfer();
    return true;
  }
  if (flags.ComTimedOut) {
    // Who answers next may be another receiver.
    flags.GpsIdentified = false;
    connection_.close_port();
    front_end().message_box("Download", "Serial Port Timeout");
    if (!port.lost()) {
      front_end().write_line(3, "The transfer from " + port.port_name() +
                                    " broke off. What has arrived is kept; check the cable and download again.");
    }
    return true;
  }
  return outcome == Outcome::Failed;
}

// A receiver that has run ahead has more on its way, which must not get in the way of the next transfer: all that
// comes before its answer to the abort is let go by.
void GarminDownloads::abort_transfer() {
  running_ = nullptr;
  connection_.selection.send_command(connection_.selection.commands().abort, "Gabort");
  for (int i = 0; runs_ahead_ && i < kMostStrayPackets; ++i) {
    connection_.link.getGarminMessage();
    runs_ahead_ = !connection_.stopped() && connection_.link.last_kind() != PacketKind::Pid_Ack_Byte;
  }
  runs_ahead_ = false;
}

void GarminDownloads::look_for_rollover() {
  constexpr std::int64_t kDay = 86400;
  constexpr std::int64_t kFiveYears = 5 * 365 * kDay + kDay;
  if (settings_.WeekRollover == 1 || records_.newest() == store::GarminTime{}) return;
  const std::int64_t now = clock_.unix_seconds() - store::kGarminEpochUnix;
  const std::int64_t moved = std::int64_t{records_.newest().seconds} + store::kRolloverSeconds;
  if (moved >= now - kFiveYears && moved <= now + kDay)
    front_end().write_line(kRolloverLine, "Receiver dates look 1024 weeks too early");
}

std::string GarminDownloads::why_not(const Step& step) const {
  // A receiver may claim a kind that its link has no packets for; asked for it, it would only be silent.
  const Protocols& protocols = connection_.selection.protocols();
  if (protocols.*(step.transfer) == kNone || !id_of(step.record, protocols.link)) return step.not_supported.data();
  if (step.kind != Kind::Almanac || find_format(kAlmanacFormats, protocols.almanac_data) != nullptr) return "";
  if (protocols.almanac_data == kNone) return step.not_supported.data();
  return unknown_format_text(PacketKind::Pid_Almanac_Data, protocols.almanac_data);
}

GarminDownloads::Outcome GarminDownloads::run_step(const Step& step) {
  front_end().set_status(1, step.status);
  const std::string problem = why_not(step);
  Outcome outcome = Outcome::NotSupported;
  if (problem.empty()) {
    before_ = items_.contents();
    takes_equal_records_ = false;
    outcome = step.kind == Kind::Almanac ? getAlmanac(step) : getGPSrecords(step);
    running_ = nullptr;
    before_.reset();
    front_end().set_progress_range(0);
  } else {
    front_end().write_line(1, problem);
  }
  if (step.kind == Kind::Routes) items_.link_route_points();
  if (settings_.SA_SortAfterInput != 0) {
    if (step.kind == Kind::Waypoints && items_.waypoint_count() >= 2) items_.sort_waypoints();
    if (step.kind == Kind::ProximityWaypoints && items_.proximity_count() >= 2) items_.sort_proximity();
  }
  front_end().refresh_title();
  front_end().set_status(1, " ");
  if (records_.refused() > 0 && outcome != Outcome::NotSupported)
    front_end().write_line(2, base::format_text("%d records refused", records_.refused()));
  // Deliberate : proximity waypoints are completed even by a receiver that has none.
  if (outcome == Outcome::Done || (!problem.empty() && step.kind == Kind::ProximityWaypoints))
    complete(step.completion);
  return outcome;
}

std::optional<GarminDownloads::Outcome> GarminDownloads::start(const Step& step) {
  running_ = &step;
  expected_ = -1;
  restarts_ = 0;
  completed_ = closed_ = began_anew_ = false;
  forget_received();
  expect_next(step);
  connection_.selection.send_command(connection_.selection.commands().*(step.command),
                                     base::format_text("GetGPSstart from  %s", step.name.data()));
  if (!receive()) return Outcome::Failed;
  if (expected_ < 0) {
    front_end().message_box(step.kind == Kind::Routes || step.kind == Kind::Almanac ? step.name : "getGPSrecords",
                            "Error getting number of records to receive...aborting");
    return Outcome::Incomplete;
  }
  if (expected_ > 0) return std::nullopt;
  front_end().write_line(step.nothing_line, step.nothing);
  expect_next(step);
  return closed_ || receive() ? Outcome::Done : Outcome::Failed;
}

GarminDownloads::Outcome GarminDownloads::getGPSrecords(const Step& step) {
  const bool route = step.kind == Kind::Routes;
  bool going_on = false;
  for (bool again = true; std::exchange(again, false);) {
    if (const std::optional<Outcome> ended = start(step)) return *ended;
    going_on = receive_records(step);
    front_end().set_progress_range(0);
    // As many are missing as seemed to be repetitions: they were records of their own, in places that are lost by now.
    again = going_on && closed_ && repeats_ > 0 && received_ + repeats_ == expected_ &&
            !std::exchange(takes_equal_records_, true);
    if (again) items_.restore(*before_);
  }
  write_progress(4, "");
  if (received_ != expected_) front_end().write_line(1, base::format_text("%d of %d received", received_, expected_));
  if (!going_on) {
    if (route) front_end().write_line(2, "Operation Aborted");
    return Outcome::Failed;
  }
  if (route) write_progress(3, "");
  if (!closed_) {  // no room for the rest, which was said; the receiver must not go on with it
    abort_transfer();
    return Outcome::Incomplete;
  }
  if (!completed_) front_end().write_line(4, step.no_end);
  return received_ < expected_ ? Outcome::Incomplete : Outcome::Done;
}

// The records do not say which satellite they are of, and a receiver that runs ahead cannot be asked for one again: if
// one was damaged, or not as many came as were announced, all are asked for anew.
GarminDownloads::Outcome GarminDownloads::getAlmanac(const Step& step) {
  for (int attempt = 1;; ++attempt) {
    if (const std::optional<Outcome> ended = start(step)) {
      if (!connection_.stopped()) abort_transfer();
      return *ended;
    }
    const bool going_on = receive_satellites(step);
    front_end().set_progress_range(0);
    write_progress(4, "");
    if (!going_on) return Outcome::Failed;
    const bool whole = closed_ && !lost_count_ && received_ == expected_;
    abort_transfer();
    if (whole) {
      if (!completed_) front_end().write_line(4, step.no_end);
      connection_.flags.ComTimedOut = connection_.flags.UserAbort = false;  // nothing is missing any more
      return records_.refused() == 0 ? Outcome::Done : Outcome::Incomplete;
    }
    if (connection_.stopped()) return Outcome::Failed;
    if (attempt == kMostAlmanacAttempts) break;
    front_end().write_line(2, "The almanac came damaged and is asked for again.");
  }
  keep_what_is_certain();
  return Outcome::Incomplete;
}

// Up to the closing packet, or to the first record whose satellite is not certain; false when the download has to stop.
bool GarminDownloads::receive_satellites(const Step& step) {
  began_anew_ = true;
  while (!closed_ && !lost_count_) {
    if (std::exchange(began_anew_, false)) front_end().set_progress_range(store::kSatellites);
    if (received_ < expected_) {
      write_progress(4, base::format_text("Reading Sat # %d", received_ + 1));
      // Deliberate : one acknowledgement more than there are packets, so the receiver does not wait for us.
      const std::array<std::uint8_t, 4> next{6, 2, *id_of(step.record, connection_.selection.protocols().link), 0};
      connection_.link.sendGarminPacket(next, "Send Next ALM record");
      runs_ahead_ = true;
    }
    expect_next(step);
    if (!receive()) return false;
    if (!closed_ && !began_anew_) front_end().step_progress();
  }
  return true;
}

// The satellites before the damage; all are in doubt when records were missing or too many without any.
void GarminDownloads::keep_what_is_certain() {
  const int kept = is_damaged() && received_ <= store::kSatellites ? received_ : 0;
  if (kept == 0) items_.clear_almanac();
  front_end().write_line(
      1, base::format_text("The almanac came damaged %d times: ", kMostAlmanacAttempts) +
             (kept == 0 ? "none of it is kept." : base::format_text("satellites 1 to %d are kept.", kept)));
}

// Up to the closing packet; false when the download has to stop.
bool GarminDownloads::receive_records(const Step& step) {
  began_anew_ = true;
  const bool needs_rows = step.kind == Kind::Routes;
  while (!closed_ && !(needs_rows && items_.route_overflow())) {
    if (std::exchange(began_anew_, false)) {
      front_end().set_progress_range(expected_);
      if (step.kind == Kind::Routes) write_progress(3, base::format_text("%3d total route records", expected_));
    }
    expect_next(step);
    if (!receive()) return false;
    if (!closed_ && !began_anew_) show_progress(step, received_);
  }
  return true;
}

void GarminDownloads::forget_received() {
  received_ = repeats_ = 0;
  lost_count_ = false;
  records_.begin_kind();
  if (running_->kind == Kind::Almanac) items_.clear_almanac();
}

// What a NAK is to ask for: the count, then records, then the closing packet.
void GarminDownloads::expect_next(const Step& step) {
  const std::uint16_t link = connection_.selection.protocols().link;
  const PacketKind next = received_ < expected_ ? step.record : PacketKind::Pid_Xfer_Cmplt;
  connection_.link.set_expected_id(expected_ < 0 ? connection_.selection.records_id() : *id_of(next, link));
}

void GarminDownloads::show_progress(const Step& step, int index) {
  if (step.kind == Kind::Routes) {
    write_progress(4, base::format_text("Route# %02d RR%03d", std::max(records_.route_number(), 0), index));
  } else {
    write_progress(4, base::format_text("%c%05d of %d", step.letter, index, expected_));
  }
  front_end().step_progress();
}

bool GarminDownloads::receive() {
  const int most = expected_ < 0 ? 0 : expected_ + kMostStrayPackets;  // a few more than announced may come
  for (int strays = 0; strays < kMostStrayPackets && restarts_ <= kMostRestarts; ++strays) {
    const int expected_before = expected_, received_before = received_;
    connection_.link.getGarminMessage();
    if (connection_.stopped()) return false;
    if (received_ > most && expected_ >= 0 && !began_anew_) break;
    if (expected_ != expected_before || began_anew_ || closed_ || lost_count_ || received_ != received_before)
      return true;
  }
  front_end().write_line(2, "The receiver keeps sending packets that do not belong to this transfer.");
  connection_.flags.ComTimedOut = true;
  return false;
}

// Whether the packet is the one before it once more, sent again because our answer was lost.
bool GarminDownloads::is_repeat(PacketKind kind, std::span<const std::uint8_t> data) {
  base::Bytes packet{static_cast<std::uint8_t>(kind)};
  packet.insert(packet.end(), data.begin(), data.end());
  const bool same = packet == std::exchange(previous_packet_, packet);
  if (!same || takes_equal_records_ || records_.may_come_twice(kind, data)) return false;
  ++repeats_;
  return true;
}

void GarminDownloads::take_records(std::span<const std::uint8_t> data) {
  if (running_ == nullptr) return;
  base::ByteReader in(data);
  const int count = in.u16();
  if (!in.ok()) return;
  previous_packet_.clear();
  if (expected_ >= 0) {
    // It did not see our answers and starts over: what this download stored would be there twice.
    items_.restore(*before_);
    forget_received();
    began_anew_ = true;
    ++restarts_;
  }
  expected_ = count;
  damaged_before_ = connection_.link.damaged_packets();
}

void GarminDownloads::take_completion(std::span<const std::uint8_t> data) {
  if (running_ == nullptr || is_repeat(PacketKind::Pid_Xfer_Cmplt, data)) return;
  completed_ = !data.empty() && data[0] == running_->completion_code;
  // Before the count, that of another kind is left over from an earlier transfer.
  closed_ = completed_ || expected_ >= 0;
}

// A completion line that progress was written over comes back when the progress goes.
void GarminDownloads::write_progress(int line, std::string_view text) {
  const auto completion = completions_.find(line);
  if (text.empty() && completion != completions_.end()) {
    front_end().write_line(line, completion->second);
  } else {
    front_end().write_progress(line, text);
  }
}

void GarminDownloads::complete(std::string_view text) {
  completions_[next_line_] = text;
  front_end().write_line(next_line_++, text);
}

}  // namespace garmin
