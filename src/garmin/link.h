// The packet layer of the Garmin serial protocol: sends one packet; receives one, answers it with ACK or NAK
// and hands it to whoever asked for its kind. Everything above talks to the receiver only through this.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "base/byte_cursor.h"
#include "base/clock.h"
#include "base/front_end.h"
#include "garmin/packet.h"
#include "garmin/packet_ids.h"
#include "serial/com_port.h"
#include "serial/debug_log.h"
#include "serial/device_flags.h"

namespace garmin {

class GarminLink {
 public:
  // Called with the packet's data; the bytes live until the next receive.
  using Handler = std::function<void(std::span<const std::uint8_t> data)>;
  enum class Acknowledge : std::uint16_t { Refused = 0, Accepted = 1, None = 65535 };

  // All must outlive the link.
  GarminLink(serial::ComPort& port, base::Clock& clock, base::FrontEnd& front_end, serial::DeviceFlags& flags,
             serial::DebugLog& debug_log);

  // Who is called for packets of a kind; one handler a kind.
  void on(PacketKind kind, Handler handler) { handlers_[static_cast<std::size_t>(kind)] = std::move(handler); }

  // Sends a message (id, data size, data); the label names it in the debug log. False when the port took it not.
  bool sendGarminPacket(std::span<const std::uint8_t> message, std::string_view label);
  // Receives one packet, answers and dispatches it. ComTimedOut is set after two silences of 3 s with a
  // re-send between them, when re-sends bring nothing but acknowledgements, after a packet without end, and when the
  // port has vanished; UserAbort after ESC.
  void getGarminMessage();

  // The kind of the packet that the latest getGarminMessage brought; None when it brought none, or one unknown.
  [[nodiscard]] PacketKind last_kind() const { return last_kind_; }
  [[nodiscard]] Acknowledge acknowledge_state() const { return acknowledge_state_; }
  void set_acknowledge_state(Acknowledge state) { acknowledge_state_ = state; }
  // Packets whose checksum was wrong, of all time: whoever has to know compares two moments.
  [[nodiscard]] int damaged_packets() const { return damaged_packets_; }
  // The packet id that the latest ACK or NAK named; nothing when it named none.
  [[nodiscard]] std::optional<std::uint8_t> answered_id() const { return answered_id_; }
  // Messages sent again after a silence, ever.
  [[nodiscard]] int resends() const { return resends_; }
  // Shown in place of a packet that may not be sent.
  static constexpr std::string_view kMayNotBeSent = "Error 141, aborting...";
  [[nodiscard]] static bool may_send(std::uint8_t id);
  // The packet id that a NAK names from now on.
  void set_expected_id(std::uint8_t id) { nak_[2] = id; }
  // Before a conversation: nothing particular is expected, and old trouble on the line is forgotten.
  void begin_conversation() {
    nak_[2] = kNothingExpected;
    given_up_in_a_row_ = 0;
  }

  std::uint16_t link_protocol = kNone;  // 1 for L001, 2 for L002
  bool Identifying = false;             // unknown packets are then nobody's fault

 private:
  static constexpr std::uint8_t kNothingExpected = 255;
  enum class Wait { Packet, Stopped };
  Wait receive_packet();
  Wait take_waiting_bytes();
  Wait silence(int& time_outs);
  void dispatchGarminPacket();
  void unknown_packet(std::uint8_t id);

  serial::ComPort& port_;
  base::Clock& clock_;
  base::FrontEnd& front_end_;
  serial::DeviceFlags& flags_;
  serial::DebugLog& debug_log_;
  std::array<Handler, static_cast<std::size_t>(PacketKind::Count)> handlers_;
  PacketAssembler assembler_;
  base::Bytes last_message_;  // for a re-send after a silence
  std::array<std::uint8_t, 4> ack_{6, 2, 0, 0};
  std::array<std::uint8_t, 4> nak_{21, 2, kNothingExpected, 0};
  Acknowledge acknowledge_state_ = Acknowledge::None;
  PacketKind last_kind_ = PacketKind::None;
  bool packet_complete_ = false;
  std::optional<std::uint8_t> answered_id_;
  int resends_ = 0;
  int fruitless_resends_ = 0;  // since something else than an acknowledgement came or went
  int damaged_packets_ = 0;
  int given_up_in_a_row_ = 0;  // receives that ended with too many NAKs
};

}  // namespace garmin
