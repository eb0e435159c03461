// The simulated Lowrance/Eagle unit's own message framing, after the public descriptions of the maker's serial
// interface: 55 81, command u16, number of data bytes u16, 0, header checksum; then, if there are any, the data and
// their checksum. With its checksum each of the two parts sums to 0 modulo 256.
#pragma once

#include <cstdint>
#include <optional>

#include "base/byte_cursor.h"

namespace simulators {

inline constexpr std::size_t kLongestRequest = 16 + 2 * 255;  // data bytes: those of a route of 255 points

struct LowranceMessage {
  std::uint16_t command = 0;
  base::Bytes data;
  friend bool operator==(const LowranceMessage&, const LowranceMessage&) = default;
};

// The message as it goes over the wire. Of a `damaged` one, which must have data, the lowest bit of the last data byte
// is not that to which the checksum belongs.
[[nodiscard]] base::Bytes frame_lowrance_message(const LowranceMessage& message, bool damaged = false);

// Finds messages in what a host sends, whatever stands between them. Holds at most one message's bytes.
class LowranceMessageFinder {
 public:
  struct Frame {
    bool good = false;        // both checksums fit, as do the zero byte and the length
    LowranceMessage message;  // empty in a bad frame
  };

  // The frame that this byte completes, if it does.
  std::optional<Frame> feed(std::uint8_t byte);
  // Drops a message that has only begun.
  void forget() { bytes_.clear(); }

 private:
  void look_for_start();
  Frame finish(bool good);

  base::Bytes bytes_;          // of the message under way, as they came
  std::size_t data_size_ = 0;  // once its header is whole
};

}  // namespace simulators
