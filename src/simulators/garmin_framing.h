// The simulated receiver's own packet framing, after the maker's published serial interface: DLE, id, size,
// data, checksum, DLE, ETX, with each DLE among size, data and checksum sent twice.
#pragma once

#include <cstdint>
#include <optional>

#include "base/byte_cursor.h"

namespace simulators {

// Packet ids that every link has.
inline constexpr std::uint8_t kAck = 6;
inline constexpr std::uint8_t kTransferComplete = 12;
inline constexpr std::uint8_t kNak = 21;

struct Packet {
  std::uint8_t id = 0;
  base::Bytes data;  // at most 255 bytes

  friend bool operator==(const Packet&, const Packet&) = default;
};

// The packet as it goes over the wire. A `damaged` one has a checksum that is off by one.
[[nodiscard]] base::Bytes frame_packet(const Packet& packet, bool damaged = false);

// Finds packets in what a host sends, whatever stands between them. Holds at most one packet's bytes.
class PacketFinder {
 public:
  struct Frame {
    bool good = false;  // size and checksum fit
    Packet packet;      // of a bad frame only the id counts
  };

  // The frame that this byte completes, if it does.
  std::optional<Frame> feed(std::uint8_t byte);

 private:
  enum class State { Outside, AtId, Inside, AfterDle };

  void keep(std::uint8_t byte);
  [[nodiscard]] Frame finish() const;

  State state_ = State::Outside;
  std::uint8_t id_ = 0;
  base::Bytes body_;  // size, data and checksum without the doubling
  bool too_long_ = false;
};

}  // namespace simulators
