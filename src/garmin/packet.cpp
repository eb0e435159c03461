#include "garmin/packet.h"

#include <numeric>

namespace garmin {
namespace {

constexpr std::size_t kBeforeData = 3;  // DLE, id, size
constexpr std::size_t kAfterData = 3;   // checksum, DLE, ETX

void put_stuffed(base::Bytes& frame, std::uint8_t byte) {
  frame.push_back(byte);
  if (byte == kDle) frame.push_back(byte);
}

// Two's complement of the sum, modulo 256.
std::uint8_t checksum(std::span<const std::uint8_t> bytes) {
  return static_cast<std::uint8_t>(0U - std::accumulate(bytes.begin(), bytes.end(), 0U));
}

}  // namespace

base::Bytes frame_message(std::span<const std::uint8_t> message) {
  base::Bytes frame;
  frame.reserve(message.size() + 8);
  frame.push_back(kDle);
  for (const std::uint8_t byte : message) put_stuffed(frame, byte);
  put_stuffed(frame, checksum(message));
  frame.push_back(kDle);
  frame.push_back(kEtx);
  return frame;
}

void PacketAssembler::start() {
  packet_.clear();
  previous_ = 0;
}

PacketAssembler::State PacketAssembler::feed(std::uint8_t byte) {
  if (packet_.size() == kLongestPacket) return State::TooLong;
  if (byte == kDle && previous_ == kDle) {  // a doubled DLE is data, and cannot begin DLE ETX
    previous_ = 0;
    return State::NeedsMore;
  }
  const bool leading = packet_.empty();
  packet_.push_back(byte);
  const bool ends = byte == kEtx && previous_ == kDle;
  // Unstuffing starts after the leading DLE: an id of 16 right behind it is an id.
  previous_ = leading ? std::uint8_t{0} : byte;
  return ends ? State::Complete : State::NeedsMore;
}

bool is_intact(std::span<const std::uint8_t> packet) {
  if (packet.size() < kBeforeData + kAfterData || packet.front() != kDle) return false;
  return checksum(packet.subspan(1, packet.size() - 1 - kAfterData)) == packet[packet.size() - kAfterData];
}

std::uint8_t packet_id(std::span<const std::uint8_t> packet) { return packet[1]; }

std::span<const std::uint8_t> packet_data(std::span<const std::uint8_t> packet) {
  return packet.subspan(kBeforeData, packet.size() - kBeforeData - kAfterData);
}

}  // namespace garmin
