#include "garmin/protocol_selection.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace garmin {
namespace {

using namespace std::chrono_literals;

constexpr std::array<std::uint8_t, 3> kProductRequest{254, 1, 32};
constexpr auto kArrayWait = 300ms;
constexpr auto kPollInterval = 20ms;  // between two looks at ESC
// A receiver whose transfer was broken off goes on with old packets; after so many it is taken for noise.
constexpr int kMostStrayPackets = 50;
constexpr std::size_t kLines = 10;

// Which fields of the selection an "A" entry and the entries behind it set.
struct ArrayRow {
  std::uint16_t first, last;  // numbers of the "A" entry
  std::uint16_t Protocols::*transfer;
  std::array<std::uint16_t Protocols::*, 3> data;  // of the following entries, in order; nullptr: no more
};

constexpr std::array kArrayRows{
    ArrayRow{10, 99, &Protocols::command, {}},
    ArrayRow{100, 199, &Protocols::waypoint_transfer, {&Protocols::waypoint_data}},
    ArrayRow{201,
             201,
             &Protocols::route_transfer,
             {&Protocols::route_header, &Protocols::route_waypoint, &Protocols::route_link}},
    ArrayRow{200, 299, &Protocols::route_transfer, {&Protocols::route_header, &Protocols::route_waypoint}},
    ArrayRow{300, 300, &Protocols::track_transfer, {&Protocols::track_data}},
    ArrayRow{301, 301, &Protocols::track_transfer, {&Protocols::track_header, &Protocols::track_data}},
    ArrayRow{400, 499, &Protocols::proximity_transfer, {&Protocols::proximity_data}},
    ArrayRow{500, 599, &Protocols::almanac_transfer, {&Protocols::almanac_data}},
    ArrayRow{600, 699, &Protocols::time_transfer, {&Protocols::time_data}},
    ArrayRow{700, 799, &Protocols::position_transfer, {&Protocols::position_data}},
    ArrayRow{800, 899, &Protocols::pvt_transfer, {&Protocols::pvt_data}},
};

std::string name_of(char kind, std::uint16_t number) {
  return number == kNone ? "None" : base::format_text("%c%03d", kind, number);
}

}  // namespace

ProtocolSelection::ProtocolSelection(GarminLink& link, serial::ComPort& port, base::FrontEnd& front_end,
                                     serial::DeviceFlags& flags)
    : link_(link), port_(port), front_end_(front_end), flags_(flags) {
  link_.on(PacketKind::Pid_Product_Data, [this](auto data) { take_product_data(data); });
  link_.on(PacketKind::Pid_Protocol_Array, [this](auto data) { take_capability_array(data); });
}

void ProtocolSelection::send_command(std::uint8_t number, std::string_view label) {
  // Deliberate : packet id 10 under every command protocol.
  link_.sendGarminPacket(std::array<std::uint8_t, 4>{10, 2, number, 0}, label);
}

void ProtocolSelection::identifyGarmin() {
  if (flags_.GpsIdentified) return;
  ProtocolsLoaded = false;
  protocols_ = {};
  commands_ = {};
  product_ = {};
  link_.link_protocol = kNone;
  link_.Identifying = true;
  converse();
  link_.Identifying = false;
}

void ProtocolSelection::converse() {
  link_.begin_conversation();
  send_command(commands_.abort, "Gabort");
  link_.getGarminMessage();
  if (stopped() || !ask_for_product() || !wait_for_array()) return;
  // An answer that was lost on the way can hold the array up for seconds: ask once more before giving up.
  if (!ProtocolsLoaded && find_product(product_.id, product_.version) == nullptr &&
      !(ask_for_product() && wait_for_array()))
    return;
  if (ProtocolsLoaded) {
    flags_.UserAbort = !link_is_known();
  } else {
    setProtocolParams();
  }
  flags_.GpsIdentified = !stopped();
}

// The product request and its answer; false when the conversation has to stop.
bool ProtocolSelection::ask_for_product() {
  link_.sendGarminPacket(kProductRequest, "Send ID");
  link_.set_acknowledge_state(GarminLink::Acknowledge::Refused);
  link_.getGarminMessage();
  if (stopped()) return false;
  if (link_.acknowledge_state() == GarminLink::Acknowledge::Refused) {
    link_.sendGarminPacket(kProductRequest, "Send ID");
    link_.getGarminMessage();
    if (stopped()) return false;
  }
  return link_.last_kind() == PacketKind::Pid_Product_Data || receive_until(PacketKind::Pid_Product_Data);
}

// Takes the array if it comes within kArrayWait; extended product data may come before it. False when the
// conversation has to stop.
bool ProtocolSelection::wait_for_array() {
  for (int packets = 0; !ProtocolsLoaded && packets < kMostStrayPackets; ++packets) {
    for (auto waited = 0ms; waited < kArrayWait && !port_.AsyncInStat(); waited += kPollInterval) {
      if (port_.EscPressed()) {
        flags_.UserAbort = true;
        front_end_.write_line(2, "Operation Aborted");
        return false;
      }
      port_.wait_for_input(kPollInterval);
    }
    if (port_.lost()) {
      flags_.ComTimedOut = true;
      return false;
    }
    if (!port_.AsyncInStat()) break;
    link_.getGarminMessage();
    if (stopped()) return false;
  }
  return true;
}

bool ProtocolSelection::link_is_known() {
  if (protocols_.link == 1 || protocols_.link == 2) return true;
  front_end_.write_line(4, protocols_.link == kNone
                               ? std::string("Link Protocol Violation, aborting...")
                               : base::format_text("Unknown Link Protocol L%03d, aborting", protocols_.link));
  return false;
}

bool ProtocolSelection::receive_until(PacketKind kind) {
  for (int packets = 0; packets < kMostStrayPackets; ++packets) {
    link_.getGarminMessage();
    if (stopped()) return false;
    if (link_.last_kind() == kind) return true;
  }
  flags_.ComTimedOut = true;
  return false;
}

void ProtocolSelection::take_product_data(std::span<const std::uint8_t> data) {
  if (flags_.GpsIdentified) return;
  base::ByteReader in(data);
  product_.id = in.u16();
  product_.version = in.i16();
  std::vector<std::string> texts;
  while (in.remaining() > 0) {
    const std::size_t left = in.remaining();
    texts.push_back(in.string());
    // A last text whose NUL was cut off is a text all the same.
    if (!in.ok()) texts.back() = base::ByteReader(data.last(left)).text(left);
  }
  product_.description = texts.empty() ? std::string() : texts.front();
  product_.further_texts.clear();
  if (!texts.empty()) product_.further_texts.assign(texts.begin() + 1, texts.end());
}

void ProtocolSelection::take_capability_array(std::span<const std::uint8_t> data) {
  if (!link_.Identifying) return;  // in the middle of a transfer it is noise
  protocols_ = {};
  struct Entry {
    char tag;
    std::uint16_t number;
  };
  std::vector<Entry> entries;
  base::ByteReader in(data);
  while (in.remaining() >= 3) {
    const char tag = static_cast<char>(in.u8());
    entries.push_back({tag, in.u16()});
  }
  for (std::size_t at = 0; at < entries.size(); ++at) {
    const auto [tag, number] = entries[at];
    if (tag == 'L') protocols_.link = number;
    if (tag == 'P') protocols_.physical = number;
    if (tag != 'A') continue;
    const auto* row = std::find_if(kArrayRows.begin(), kArrayRows.end(), [number = number](const ArrayRow& candidate) {
      return number >= candidate.first && number <= candidate.last;
    });
    if (row != kArrayRows.end()) {
      protocols_.*(row->transfer) = number;
      for (const auto field : row->data)
        if (field != nullptr && at + 1 < entries.size()) protocols_.*field = entries[++at].number;
    } else if (number >= 300 && number <= 399) {
      front_end_.message_box("Protocol Array Error", "Unknown Track protocol");
    } else {
      // Deliberate : A001, the capability protocol itself, is among these; it is harmless.
      front_end_.write_line(4, base::format_text("Undocumented Protocol: A%03d, ignored.", number));
    }
  }
  link_.link_protocol = protocols_.link;
  records_id_ = protocols_.link == 2 ? 35 : 27;
  ProtocolsLoaded = true;
}

void ProtocolSelection::setProtocolParams() {
  if (ProtocolsLoaded) return;
  const ProductRow* row = find_product(product_.id, product_.version);
  if (row == nullptr) {
    front_end_.message_box("setProtocolParams", "No Protocol Array and Protocol not in Table program can't continue.");
    flags_.UserAbort = true;
    return;
  }
  protocols_ = {};
  protocols_.link = row->link;
  protocols_.command = row->command;
  protocols_.waypoint_transfer = 100;
  protocols_.waypoint_data = row->waypoint_data;
  protocols_.route_transfer = 200;
  protocols_.route_header = row->route_header;
  protocols_.route_waypoint = row->route_waypoint;
  protocols_.track_transfer = row->track_transfer;
  protocols_.track_data = row->track_data;
  protocols_.proximity_transfer = row->proximity_transfer;
  protocols_.proximity_data = row->proximity_data;
  protocols_.almanac_transfer = 500;
  protocols_.almanac_data = row->almanac_data;
  protocols_.time_transfer = 600;
  protocols_.time_data = 600;
  protocols_.position_transfer = 700;
  protocols_.position_data = 700;
  link_.link_protocol = row->link;
  records_id_ = row->link == 2 ? 35 : 27;
  set_command_numbers();
}

// Deliberate : only a selection from the table changes the numbers; after a capability array those of A010 stay.
void ProtocolSelection::set_command_numbers() {
  if (protocols_.command == 10) return;
  if (protocols_.command != 11) {
    front_end_.write_line(4, base::format_text("Unknown Command Protocol:A%03d  Aborting...", protocols_.command));
    flags_.UserAbort = true;
    return;
  }
  commands_.almanac = 4;
  commands_.routes = 8;
  commands_.time = 20;
  commands_.waypoints = 21;
  commands_.power_off = 26;
}

void ProtocolSelection::report() const {
  if (!ProtocolsLoaded) {
    front_end_.write_line(4, "Protocol Array not loaded");
    return;
  }
  const Protocols& p = protocols_;
  const auto a = [](std::uint16_t number) { return name_of('A', number); };
  const auto d = [](std::uint16_t number) { return name_of('D', number); };
  const auto pair = [this](int line, const char* transfer, const std::string& first, const char* data,
                           const std::string& second) {
    front_end_.write_line(line, base::format_text("%s: %s, %s: %s", transfer, first.c_str(), data, second.c_str()));
  };
  front_end_.write_line(1, base::format_text("Product Data      : %s, Physical      : %s    Product ID: %d", "A000",
                                             name_of('P', p.physical).c_str(), product_.id));
  pair(2, "Link              ", name_of('L', p.link), "Command       ", a(p.command));
  pair(3, "Waypoint Transfer ", a(p.waypoint_transfer), "Waypoint Data ", d(p.waypoint_data));
  front_end_.write_line(
      4, base::format_text("Route Transfer    : %s, Route Header  : %s, Route Data: %s, Route Link Data: %s",
                           a(p.route_transfer).c_str(), d(p.route_header).c_str(), d(p.route_waypoint).c_str(),
                           d(p.route_link).c_str()));
  front_end_.write_line(
      5, base::format_text("Track Transfer    : %s, Track Header  : %s, Track Data: %s", a(p.track_transfer).c_str(),
                           d(p.track_header).c_str(), d(p.track_data).c_str()));
  pair(6, "Proximity Transfer", a(p.proximity_transfer), "Proximity Data", d(p.proximity_data));
  pair(7, "Almanac Transfer  ", a(p.almanac_transfer), "Almanac Data  ", d(p.almanac_data));
  pair(8, "Date/Time Transfer", a(p.time_transfer), "Date/Time Data", d(p.time_data));
  pair(9, "Position Transfer ", a(p.position_transfer), "Position Data ", d(p.position_data));
  pair(10, "PVT Transfer      ", a(p.pvt_transfer), "PVT Data      ", d(p.pvt_data));
}

void ProtocolSelection::show_identification() const {
  front_end_.write_line(1, base::format_text("%s         ID: %d", product_.description.c_str(), product_.id));
  for (std::size_t i = 0; i + 2 <= kLines; ++i)
    front_end_.write_line(static_cast<int>(i) + 2, i < product_.further_texts.size() ? product_.further_texts[i] : "");
}

}  // namespace garmin
