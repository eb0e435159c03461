#include "garmin/transfers.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "garmin/route_records.h"
#include "garmin/track_records.h"
#include "garmin/waypoint_records.h"

namespace garmin {
namespace {

// Packets in a row that do not belong to the download; more are a receiver gone mad.
constexpr int kMostStrayPackets = 200;
constexpr int kMostRestarts = 5;
constexpr int kFirstCompletionLine = 3;

}  // namespace

struct GarminTransfers::Step {
  Kind kind;
  std::string_view name;      // of the routine: debug log and error boxes
  char letter;                // in the progress text
  std::string_view singular;  // "No %s records to send"
  std::string_view status;
  std::string_view completion;
  std::uint8_t Commands::*command;
  std::uint8_t completion_code;  // first data byte of its closing packet
  std::uint16_t Protocols::*transfer;
  PacketKind record;
  std::string_view not_supported;
};

std::span<const GarminTransfers::Step> GarminTransfers::steps() {
  static constexpr std::array kSteps{
      Step{Kind::Waypoints, "getWaypoints", 'W', "Waypoint", "Downloading Waypoints", "Waypoint download completed",
           &Commands::waypoints, 7, &Protocols::waypoint_transfer, PacketKind::Pid_Wpt_Data,
           "Waypoints not supported."},
      Step{Kind::Tracks, "getTrack", 'T', "Track", "Downloading Tracks", "Tracks download completed", &Commands::tracks,
           6, &Protocols::track_transfer, PacketKind::Pid_Trk_Data, "Tracks not supported."},
      Step{Kind::Routes, "getRoute", 'R', "Route", "Downloading Routes", "Routes download completed", &Commands::routes,
           4, &Protocols::route_transfer, PacketKind::Pid_Rte_Wpt_Data, "Routes not supported."},
      Step{Kind::ProximityWaypoints, "getProxWaypoints", 'P', "Proximity Waypoint", "Downloading ProxWaypoints",
           "Proximity download completed", &Commands::proximity, 3, &Protocols::proximity_transfer,
           PacketKind::Pid_Prx_Wpt_Data, "Proximity waypoints not supported."},
  };
  return kSteps;
}

GarminTransfers::GarminTransfers(GarminLink& link, serial::ComPort& port, ProtocolSelection& selection,
                                 store::ItemStore& items, const store::Settings& settings, base::FrontEnd& front_end,
                                 serial::DeviceFlags& flags)
    : link_(link),
      port_(port),
      selection_(selection),
      items_(items),
      settings_(settings),
      front_end_(front_end),
      flags_(flags) {
  using Take = void (GarminTransfers::*)(std::span<const std::uint8_t>);
  const auto on_record = [this](PacketKind packet, Kind kind, Take take) {
    link_.on(packet, [this, packet, kind, take](std::span<const std::uint8_t> data) {
      // A record of another kind, or before the count, is left over from a transfer that was broken off.
      if (running_ == nullptr || running_->kind != kind || expected_ < 0) return;
      if (is_repeat(packet, data)) return;
      ++received_;
      (this->*take)(data);
    });
  };
  link_.on(PacketKind::Pid_Records, [this](auto data) { take_records(data); });
  link_.on(PacketKind::Pid_Xfer_Cmplt, [this](auto data) { take_completion(data); });
  on_record(PacketKind::Pid_Wpt_Data, Kind::Waypoints, &GarminTransfers::take_waypoint);
  on_record(PacketKind::Pid_Prx_Wpt_Data, Kind::ProximityWaypoints, &GarminTransfers::take_proximity);
  on_record(PacketKind::Pid_Trk_Hdr, Kind::Tracks, &GarminTransfers::take_track_header);
  on_record(PacketKind::Pid_Trk_Data, Kind::Tracks, &GarminTransfers::take_track_point);
  on_record(PacketKind::Pid_Rte_Hdr, Kind::Routes, &GarminTransfers::take_route_header);
  on_record(PacketKind::Pid_Rte_Wpt_Data, Kind::Routes, &GarminTransfers::take_route_point);
  on_record(PacketKind::Pid_Rte_Link_Data, Kind::Routes, &GarminTransfers::take_route_link);
}

bool GarminTransfers::download(Kind kind) {
  flags_.UserAbort = false;
  flags_.ComTimedOut = false;
  next_line_ = kFirstCompletionLine;
  completions_.clear();
  port_.OpenGpsPort(serial::kGarminFamily, &selection_);
  link_.begin_conversation();
  front_end_.set_status(3, "ESC key to abort");
  if (!flags_.PortOpen) {
    front_end_.write_line(1, "Failed to open COM port!");
    front_end_.set_status(3, " ");
    flags_.UserAbort = false;
    return false;
  }
  items_.set_input_time_offset(0);  // receivers send UTC
  items_.clear_route_overflow();
  bool going_on = !stop_after(flags_.UserAbort ? Outcome::Failed : Outcome::Done);
  bool all_came = going_on;
  for (const Step& step : steps()) {
    if (!going_on) break;
    if (kind != Kind::All && kind != step.kind) continue;
    const Outcome outcome = run_step(step);
    // Asked for by name, a kind that the receiver does not have is a failure; among all kinds it is not.
    if (outcome == Outcome::Incomplete || (outcome == Outcome::NotSupported && kind != Kind::All)) all_came = false;
    if (stop_after(outcome)) going_on = all_came = false;
  }
  close_port();
  front_end_.set_status(3, " ");
  return all_came;
}

// Tells the receiver and the user when the download cannot go on; true then.
bool GarminTransfers::stop_after(Outcome outcome) {
  if (flags_.UserAbort) {
    flags_.UserAbort = false;
    selection_.send_command(selection_.commands().abort, "Gabort");
    return true;
  }
  if (flags_.ComTimedOut) {
    // Who answers next may be another receiver.
    flags_.GpsIdentified = false;
    close_port();
    front_end_.message_box("Download", "Serial Port Timeout");
    if (!port_.lost()) {
      front_end_.write_line(3, "The transfer from " + port_.port_name() +
                                   " broke off. What has arrived is kept; check the cable and download again.");
    }
    return true;
  }
  return outcome == Outcome::Failed;
}

void GarminTransfers::close_port() {
  if (flags_.PortOpen) port_.AsyncStop();
  flags_.PortOpen = false;
}

GarminTransfers::Outcome GarminTransfers::run_step(const Step& step) {
  front_end_.set_status(1, step.status);
  // A receiver may claim a kind that its link has no packets for; asked for it, it would only be silent.
  const Protocols& protocols = selection_.protocols();
  const bool supported = protocols.*(step.transfer) != kNone && id_of(step.record, protocols.link);
  Outcome outcome = Outcome::NotSupported;
  if (supported) {
    running_ = &step;
    before_ = items_.contents();
    outcome = getGPSrecords(step);
    running_ = nullptr;
    before_.reset();
    front_end_.set_progress_range(0);
  } else {
    front_end_.write_line(1, step.not_supported);
  }
  if (step.kind == Kind::Routes) items_.link_route_points();
  if (settings_.SA_SortAfterInput != 0) {
    if (step.kind == Kind::Waypoints && items_.waypoint_count() >= 2) items_.sort_waypoints();
    if (step.kind == Kind::ProximityWaypoints && items_.proximity_count() >= 2) items_.sort_proximity();
  }
  front_end_.refresh_title();
  front_end_.set_status(1, " ");
  if (refused_ > 0 && outcome != Outcome::NotSupported)
    front_end_.write_line(2, base::format_text("%d records refused", refused_));
  // Deliberate : proximity waypoints are completed even by a receiver that has none.
  if (outcome == Outcome::Done || (!supported && step.kind == Kind::ProximityWaypoints)) complete(step.completion);
  return outcome;
}

GarminTransfers::Outcome GarminTransfers::getGPSrecords(const Step& step) {
  expected_ = -1;
  restarts_ = 0;
  completed_ = closed_ = began_anew_ = false;
  forget_received();
  expect_next(step);
  selection_.send_command(selection_.commands().*(step.command),
                          base::format_text("GetGPSstart from  %s", step.name.data()));
  if (!receive()) return Outcome::Failed;
  const bool route = step.kind == Kind::Routes;
  if (expected_ < 0) {
    front_end_.message_box(route ? step.name : "getGPSrecords",
                           "Error getting number of records to receive...aborting");
    return Outcome::Incomplete;
  }
  if (expected_ == 0) {
    front_end_.write_line(route ? 4 : 1, base::format_text("GPS: No %s records to send", step.singular.data()));
    expect_next(step);
    return closed_ || receive() ? Outcome::Done : Outcome::Failed;
  }
  const bool going_on = receive_records(step);
  front_end_.set_progress_range(0);
  write_progress(4, "");
  if (received_ != expected_) front_end_.write_line(1, base::format_text("%d of %d received", received_, expected_));
  if (!going_on) {
    if (route) front_end_.write_line(2, "Operation Aborted");
    return Outcome::Failed;
  }
  if (route) write_progress(3, "");
  if (!closed_) {  // no room for the rest, which was said; the receiver must not go on with it
    selection_.send_command(selection_.commands().abort, "Gabort");
    return Outcome::Incomplete;
  }
  if (!completed_) front_end_.write_line(4, base::format_text("No %s EOF received", step.singular.data()));
  return received_ < expected_ ? Outcome::Incomplete : Outcome::Done;
}

// Up to the closing packet; false when the download has to stop.
bool GarminTransfers::receive_records(const Step& step) {
  began_anew_ = true;
  const bool needs_rows = step.kind == Kind::Routes;
  while (!closed_ && !(needs_rows && items_.route_overflow())) {
    if (std::exchange(began_anew_, false)) {
      front_end_.set_progress_range(expected_);
      if (step.kind == Kind::Routes) write_progress(3, base::format_text("%3d total route records", expected_));
    }
    expect_next(step);
    if (!receive()) return false;
    if (!closed_ && !began_anew_) show_progress(step, received_);
  }
  return true;
}

void GarminTransfers::forget_received() {
  received_ = refused_ = 0;
  route_number_ = -1;
  route_open_ = false;
  items_.forget_pending_track();
}

// What a NAK is to ask for: the count, then records, then the closing packet.
void GarminTransfers::expect_next(const Step& step) {
  const std::uint16_t link = selection_.protocols().link;
  const PacketKind next = received_ < expected_ ? step.record : PacketKind::Pid_Xfer_Cmplt;
  link_.set_expected_id(expected_ < 0 ? selection_.records_id() : *id_of(next, link));
}

void GarminTransfers::show_progress(const Step& step, int index) {
  if (step.kind == Kind::Routes) {
    write_progress(4, base::format_text("Route# %02d RR%03d", std::max(route_number_, 0), index));
  } else {
    write_progress(4, base::format_text("%c%05d of %d", step.letter, index, expected_));
  }
  front_end_.step_progress();
}

bool GarminTransfers::receive() {
  const int most = expected_ < 0 ? 0 : expected_ + kMostStrayPackets;  // a few more than announced may come
  for (int strays = 0; strays < kMostStrayPackets && restarts_ <= kMostRestarts; ++strays) {
    const int expected_before = expected_, received_before = received_;
    link_.getGarminMessage();
    if (flags_.ComTimedOut || flags_.UserAbort) return false;
    if (received_ > most && expected_ >= 0 && !began_anew_) break;
    if (expected_ != expected_before || began_anew_ || closed_ || received_ != received_before) return true;
  }
  front_end_.write_line(2, "The receiver keeps sending packets that do not belong to this transfer.");
  flags_.ComTimedOut = true;
  return false;
}

// Whether the packet is the one before it once more, sent again because our answer was lost.
bool GarminTransfers::is_repeat(PacketKind kind, std::span<const std::uint8_t> data) {
  base::Bytes packet{static_cast<std::uint8_t>(kind)};
  packet.insert(packet.end(), data.begin(), data.end());
  const bool same = packet == std::exchange(previous_packet_, packet);
  if (!same || kind != PacketKind::Pid_Trk_Data) return same;
  // Track points without a time may truly come twice: a receiver that stands still writes them so.
  store::ItemRecord point = store::blank_item();
  const bool readable =
      static_cast<bool>(decode_record(kTrackPointFormats, selection_.protocols().track_data, "", data, point));
  return !readable || point.time.seconds != 0;
}

void GarminTransfers::take_records(std::span<const std::uint8_t> data) {
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
}

void GarminTransfers::take_completion(std::span<const std::uint8_t> data) {
  if (running_ == nullptr || is_repeat(PacketKind::Pid_Xfer_Cmplt, data)) return;
  completed_ = !data.empty() && data[0] == running_->completion_code;
  // Before the count, that of another kind is left over from an earlier transfer.
  closed_ = completed_ || expected_ >= 0;
}

void GarminTransfers::refused(const std::string& why) {
  ++refused_;
  front_end_.write_line(1, why);
}

bool GarminTransfers::decode_item(std::span<const RecordFormat> formats, std::uint16_t number, std::string_view packet,
                                  std::span<const std::uint8_t> data) {
  items_.start_item();
  const DecodeResult result = decode_record(formats, number, packet, data, items_.CurrentItem);
  if (!result) refused(result.refusal);
  return static_cast<bool>(result);
}

void GarminTransfers::take_waypoint(std::span<const std::uint8_t> data) {
  if (decode_item(kWaypointFormats, selection_.protocols().waypoint_data, "Pid_Wpt_Data", data) &&
      items_.push_waypoint(0) != 0)
    ++refused_;
}

void GarminTransfers::take_proximity(std::span<const std::uint8_t> data) {
  if (decode_item(kProximityFormats, selection_.protocols().proximity_data, "Pid_Prx_Wpt_Data", data) &&
      items_.push_proximity() != 0)
    ++refused_;
}

void GarminTransfers::take_track_header(std::span<const std::uint8_t> data) {
  if (!decode_item(kTrackHeaderFormats, selection_.protocols().track_header, "Pid_Trk_Hdr", data)) return;
  const store::ItemRecord& header = items_.CurrentItem;
  items_.start_track_log(header.ident, store::kColourNames[std::min(header.colour, store::kDefaultColour)]);
}

void GarminTransfers::take_track_point(std::span<const std::uint8_t> data) {
  if (decode_item(kTrackPointFormats, selection_.protocols().track_data, "Pid_Trk_Data", data)) {
    if (items_.push_track() != 0) ++refused_;
  } else if (!data.empty() && data.back() == 1) {
    // All point formats end with the mark of a new segment, which holds for the next point then.
    items_.start_segment();
  }
}

void GarminTransfers::take_route_header(std::span<const std::uint8_t> data) {
  RouteHeader header;
  const DecodeResult result =
      decode_record(kRouteHeaderFormats, selection_.protocols().route_header, "Pid_Rte_Hdr", data, header);
  route_open_ = false;
  if (!result) {
    refused(result.refusal);
    return;
  }
  // A format without numbers counts the routes itself.
  route_number_ = header.number.value_or(route_number_ + 1);
  items_.start_route(static_cast<std::uint32_t>(route_number_), base::format_text("%02d", route_number_), header.name);
  route_open_ = items_.push_route(true) == 0;
  if (!route_open_) ++refused_;
}

void GarminTransfers::take_route_point(std::span<const std::uint8_t> data) {
  if (!decode_item(kWaypointFormats, selection_.protocols().route_waypoint, "Pid_Rte_Wpt_Data", data)) return;
  if (route_open_) {
    if (items_.push_route(true) != 0) ++refused_;
    return;
  }
  refused("Pid_Rte_Wpt_Data: a point without a route header before it: kept as a waypoint only");
  (void)items_.push_waypoint(0);
}

void GarminTransfers::take_route_link(std::span<const std::uint8_t> data) {
  if (!decode_item(kRouteLinkFormats, selection_.protocols().route_link, "Pid_Rte_Link_Data", data)) return;
  const store::ItemRecord link = items_.CurrentItem;
  if (!route_open_ || !items_.set_route_link(link.link_class, link.link_subclass, link.route_link_ident)) {
    ++refused_;
    front_end_.write_line(1, "Pid_Rte_Link_Data: a link without a route point before it: record refused");
  }
}

// A completion line that progress was written over comes back when the progress goes.
void GarminTransfers::write_progress(int line, std::string_view text) {
  const auto completion = completions_.find(line);
  front_end_.write_line(line, text.empty() && completion != completions_.end() ? completion->second : text);
}

void GarminTransfers::complete(std::string_view text) {
  completions_[next_line_] = text;
  front_end_.write_line(next_line_++, text);
}

}  // namespace garmin
