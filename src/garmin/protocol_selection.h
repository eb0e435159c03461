// Which receiver is connected, and which protocols it speaks: from its own capability array, or from the
// table of products that send none.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "garmin/link.h"
#include "garmin/product_table.h"
#include "serial/receiver.h"

namespace garmin {

// Protocol numbers; kNone where the receiver supports nothing of the kind.
struct Protocols {
  std::uint16_t link = kNone, physical = kNone, command = kNone;
  std::uint16_t waypoint_transfer = kNone, waypoint_data = kNone;
  std::uint16_t route_transfer = kNone, route_header = kNone, route_waypoint = kNone, route_link = kNone;
  std::uint16_t track_transfer = kNone, track_header = kNone, track_data = kNone;
  std::uint16_t proximity_transfer = kNone, proximity_data = kNone;
  std::uint16_t almanac_transfer = kNone, almanac_data = kNone;
  std::uint16_t time_transfer = kNone, time_data = kNone;
  std::uint16_t position_transfer = kNone, position_data = kNone;
  std::uint16_t pvt_transfer = kNone, pvt_data = kNone;
};

// Numbers of the commands that are sent, which depend on the command protocol.
struct Commands {
  std::uint8_t abort = 0, almanac = 1, position = 2, proximity = 3, routes = 4, time = 5, tracks = 6, waypoints = 7;
  std::uint8_t power_off = 8, voltages = 17, start_pvt = 49, stop_pvt = 50;
};

struct Product {
  std::uint16_t id = 0;
  std::int16_t version = 0;  // x 100
  std::string description;
  std::vector<std::string> further_texts;
};

class ProtocolSelection : public serial::Receiver {
 public:
  // All must outlive the selection, which takes the packets with product data and capability array.
  ProtocolSelection(GarminLink& link, serial::ComPort& port, base::FrontEnd& front_end, serial::DeviceFlags& flags);

  [[nodiscard]] int family() const override { return serial::kGarminFamily; }
  void probe() override { identifyGarmin(); }

  // Finds out who is there and selects the protocols; nothing when that is already known. Ends with
  // ComTimedOut or UserAbort set when nobody answers, the user stops it, or no protocol can be selected.
  void identifyGarmin();
  // Selection from the product table; nothing after a capability array.
  void setProtocolParams();
  // Whether the receiver has sent a capability array, which report() can show.
  [[nodiscard]] bool has_array() const { return ProtocolsLoaded; }
  // The ten lines of "Get Supported Protocols", or one that there is no array to report.
  void report() const;
  // "%s         ID: %d" on line 1, each further text of the receiver on the next lines, the others blank.
  void show_identification() const;
  // A command packet with the number.
  void send_command(std::uint8_t number, std::string_view label);

  [[nodiscard]] const Protocols& protocols() const { return protocols_; }
  [[nodiscard]] const Commands& commands() const { return commands_; }
  [[nodiscard]] const Product& product() const { return product_; }
  // The packet id of the record count.
  [[nodiscard]] std::uint8_t records_id() const { return records_id_; }

 private:
  [[nodiscard]] bool stopped() const { return flags_.UserAbort || flags_.ComTimedOut; }
  void converse();
  void take_product_data(std::span<const std::uint8_t> data);
  void take_capability_array(std::span<const std::uint8_t> data);
  bool ask_for_product();
  bool receive_until(PacketKind kind);
  bool wait_for_array();
  bool link_is_known();
  void set_command_numbers();

  GarminLink& link_;
  serial::ComPort& port_;
  base::FrontEnd& front_end_;
  serial::DeviceFlags& flags_;
  Protocols protocols_;
  Commands commands_;
  Product product_;
  std::uint8_t records_id_ = 27;
  bool ProtocolsLoaded = false;
};

}  // namespace garmin
