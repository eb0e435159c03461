// One packet of the Garmin serial protocol on the wire: DLE, id, size, data, checksum, DLE, ETX, with every
// DLE between the ends sent twice. Framing only; what packets mean is not known here. Source: the maker's
// published interface document, "Serial Protocol".
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/byte_cursor.h"

namespace garmin {

inline constexpr std::uint8_t kDle = 0x10;
inline constexpr std::uint8_t kEtx = 0x03;
// A received packet without stuffing, from the leading DLE to the ETX, is at most this long.
inline constexpr std::size_t kLongestPacket = 254;

// A message (id, data size, data) as it goes on the wire.
[[nodiscard]] base::Bytes frame_message(std::span<const std::uint8_t> message);

// Finds the end of a packet in the bytes as they come, taking out the stuffing.
class PacketAssembler {
 public:
  enum class State { NeedsMore, Complete, TooLong };

  void start();
  // TooLong: kLongestPacket bytes have come without an end; the byte was not taken.
  State feed(std::uint8_t byte);
  [[nodiscard]] const base::Bytes& packet() const { return packet_; }

 private:
  base::Bytes packet_;
  std::uint8_t previous_ = 0;
};

// Whether the bytes are a packet whose checksum is right.
[[nodiscard]] bool is_intact(std::span<const std::uint8_t> packet);
// The id and the data of an intact packet.
[[nodiscard]] std::uint8_t packet_id(std::span<const std::uint8_t> packet);
[[nodiscard]] std::span<const std::uint8_t> packet_data(std::span<const std::uint8_t> packet);

}  // namespace garmin
