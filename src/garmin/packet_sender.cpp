#include "garmin/packet_sender.h"

#include <chrono>

namespace garmin {
namespace {

using namespace std::chrono_literals;

constexpr int kMostRepetitions = 3;
constexpr int kMostStrayPackets = 5;  // each of which begins the wait for the answer anew
constexpr auto kLateAnswer = 1000ms;
constexpr auto kPollInterval = 20ms;

}  // namespace

PacketSender::Answer PacketSender::send(std::uint8_t id, std::span<const std::uint8_t> data, std::string_view label) {
  base::ByteWriter message;
  message.u8(id).u8(static_cast<std::uint8_t>(data.size())).bytes(data);
  const int resends_before = connection_.link.resends();
  Reply reply = Reply::Lost;
  for (int repetitions = 0; repetitions <= kMostRepetitions; ++repetitions) {
    connection_.link.sendGarminPacket(message.result(), label);
    reply = wait_for_reply(id);
    if (reply == Reply::Accepted || reply == Reply::Stopped) break;
  }
  if (connection_.link.resends() != resends_before && reply != Reply::Stopped) let_late_answers_go_by();
  if (reply == Reply::Lost) connection_.flags.ComTimedOut = true;
  if (connection_.stopped()) return Answer::Stopped;
  return reply == Reply::Accepted ? Answer::Accepted : Answer::Refused;
}

// Position data that a receiver sends unasked may come in between, and the answer to an earlier packet.
PacketSender::Reply PacketSender::wait_for_reply(std::uint8_t id) {
  GarminLink& link = connection_.link;
  const int damaged_before = link.damaged_packets();
  for (int packets = 0; packets < kMostStrayPackets; ++packets) {
    link.getGarminMessage();
    if (connection_.flags.UserAbort || connection_.port.lost()) return Reply::Stopped;
    if (connection_.flags.ComTimedOut) {
      if (link.damaged_packets() == damaged_before) return Reply::Stopped;
      // An answer came damaged, and our NAK to it brought no other: receivers need not answer one.
      connection_.flags.ComTimedOut = false;
      return Reply::Lost;
    }
    if (link.last_kind() == PacketKind::Pid_Nak_Byte) return Reply::Refused;
    if (link.last_kind() == PacketKind::Pid_Ack_Byte && link.answered_id().value_or(id) == id) return Reply::Accepted;
  }
  return Reply::Lost;
}

// A packet that was sent again after a silence may be answered twice. The second answer must not be taken for that to
// the next packet.
void PacketSender::let_late_answers_go_by() {
  for (auto waited = 0ms; waited < kLateAnswer && !connection_.stopped(); waited += kPollInterval) {
    connection_.port.wait_for_input(kPollInterval);
    if (connection_.port.AsyncInStat()) connection_.link.getGarminMessage();
  }
}

}  // namespace garmin
