#include "garmin/link.h"

#include <algorithm>

#include "base/text.h"

namespace garmin {
namespace {

using namespace std::chrono_literals;

constexpr auto kSilence = 3s;
constexpr auto kPollInterval = 20ms;  // between two looks at ESC; a byte ends the wait at once
constexpr int kMostNaks = 7;
constexpr int kMostFruitlessResends = 3;
constexpr std::string_view kResendLabel = "Re-send";
constexpr std::uint8_t kForbiddenId = 43;

}  // namespace

GarminLink::GarminLink(serial::ComPort& port, base::Clock& clock, base::FrontEnd& front_end, serial::DeviceFlags& flags,
                       serial::DebugLog& debug_log)
    : port_(port), clock_(clock), front_end_(front_end), flags_(flags), debug_log_(debug_log) {
  const auto answers = [this](PacketKind kind, Acknowledge state) {
    on(kind, [this, state](std::span<const std::uint8_t> data) {
      acknowledge_state_ = state;
      answered_id_ = data.empty() ? std::nullopt : std::optional(data[0]);
    });
  };
  answers(PacketKind::Pid_Ack_Byte, Acknowledge::Accepted);
  answers(PacketKind::Pid_Nak_Byte, Acknowledge::Refused);
}

bool GarminLink::sendGarminPacket(std::span<const std::uint8_t> message, std::string_view label) {
  acknowledge_state_ = Acknowledge::None;
  const base::Bytes frame = frame_message(message);
  debug_log_.sent(label, frame);
  if (!message.empty() && !may_send(message[0])) {
    front_end_.write_line(1, kMayNotBeSent);
    return false;
  }
  // Deliberate : a NAK is remembered too, so a silence right after it sends it again.
  if (label != "ACK") last_message_.assign(message.begin(), message.end());
  if (label != "ACK" && label != kResendLabel) fruitless_resends_ = 0;
  return port_.AsyncOut(frame);
}

// Deliberate : id 43 is never sent, whatever the link protocol; receivers of the one that has it are not written to.
bool GarminLink::may_send(std::uint8_t id) { return id != kForbiddenId; }

void GarminLink::getGarminMessage() {
  last_kind_ = PacketKind::None;
  for (int naks = 0; naks < kMostNaks;) {
    if (receive_packet() == Wait::Stopped) return;
    const base::Bytes& packet = assembler_.packet();
    const bool intact = is_intact(packet);
    debug_log_.received(packet, intact);
    if (intact) {
      given_up_in_a_row_ = 0;
      if (packet_id(packet) != 6) {
        ack_[2] = packet_id(packet);
        sendGarminPacket(ack_, "ACK");
      }
      dispatchGarminPacket();
      return;
    }
    sendGarminPacket(nak_, "NAK");
    ++naks;
    ++damaged_packets_;
  }
  front_end_.message_box("getGarminMessage", "Too Many NAKS in reading from GPS, aborting");
  // Whoever goes on receiving gets one more chance; a line that stays bad ends the transfer.
  if (++given_up_in_a_row_ >= 2) flags_.ComTimedOut = true;
}

GarminLink::Wait GarminLink::receive_packet() {
  assembler_.start();
  packet_complete_ = false;
  flags_.ComTimedOut = false;
  int time_outs = 0;
  auto last_sign_of_life = clock_.monotonic();
  for (;;) {
    if (port_.EscPressed()) {
      flags_.UserAbort = true;
      front_end_.write_line(2, "Operation Aborted");
      return Wait::Stopped;
    }
    if (port_.AsyncInStat()) {
      if (take_waiting_bytes() == Wait::Stopped) return Wait::Stopped;
      if (packet_complete_) return Wait::Packet;
      time_outs = 0;
      last_sign_of_life = clock_.monotonic();
    } else if (port_.lost()) {
      flags_.ComTimedOut = true;
      return Wait::Stopped;
    } else if (clock_.monotonic() - last_sign_of_life > kSilence) {
      if (silence(time_outs) == Wait::Stopped) return Wait::Stopped;
      last_sign_of_life = clock_.monotonic();
    } else {
      port_.wait_for_input(kPollInterval);
    }
  }
}

GarminLink::Wait GarminLink::take_waiting_bytes() {
  do {
    const int byte = port_.AsyncIn();
    if (byte >= 1000) break;  // the byte that was said to wait did not come
    switch (assembler_.feed(static_cast<std::uint8_t>(byte))) {
      case PacketAssembler::State::Complete:
        packet_complete_ = true;
        return Wait::Packet;
      case PacketAssembler::State::TooLong:
        front_end_.message_box("getGarminMessage", "GPS communication protocol error: Msg length");
        flags_.ComTimedOut = true;
        return Wait::Stopped;
      case PacketAssembler::State::NeedsMore:
        break;
    }
  } while (port_.AsyncInStat());
  return Wait::Packet;
}

GarminLink::Wait GarminLink::silence(int& time_outs) {
  ++time_outs;
  front_end_.set_status(3, base::format_text("COM port timeout: %d", time_outs));
  // A receiver that acknowledges the same message again and again, and does nothing else, is as good as silent.
  if (time_outs > 1 || ++fruitless_resends_ > kMostFruitlessResends) {
    flags_.ComTimedOut = true;
    return Wait::Stopped;
  }
  ++resends_;
  sendGarminPacket(base::Bytes(last_message_), kResendLabel);
  return Wait::Packet;
}

void GarminLink::dispatchGarminPacket() {
  const base::Bytes& packet = assembler_.packet();
  const PacketRow* row = find_packet(packet_id(packet), link_protocol);
  if (row == nullptr) {
    unknown_packet(packet_id(packet));
    return;
  }
  last_kind_ = row->kind;
  if (row->kind != PacketKind::Pid_Ack_Byte && row->kind != PacketKind::Pid_Nak_Byte) fruitless_resends_ = 0;
  if (debug_log_.is_open()) debug_log_.text(std::string(row->log_text));
  if (const Handler& handler = handlers_[static_cast<std::size_t>(row->kind)]) handler(packet_data(packet));
}

void GarminLink::unknown_packet(std::uint8_t id) {
  const unsigned number = id;
  if (link_protocol == 1) {
    const std::string text = base::format_text("New Garmin Record ID found: 0x%02x (%03d dec)", number, id);
    front_end_.write_line(4, text);
    if (debug_log_.is_open()) {
      debug_log_.text(text + ".  Entire message is:\n");
      debug_log_.dump(assembler_.packet());
    }
    return;
  }
  if (Identifying) return;
  const std::string text = link_protocol == kNone
                               ? "Link Protocol Violation, aborting..."
                               : base::format_text("Unknown Link Protocol L%03d, aborting", link_protocol);
  front_end_.write_line(4, text);
  if (debug_log_.is_open()) debug_log_.text(text + "\n");
}

}  // namespace garmin
