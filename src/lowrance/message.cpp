#include "lowrance/message.h"

#include <numeric>

namespace lowrance {

std::uint8_t checksum(std::span<const std::uint8_t> bytes) {
  return static_cast<std::uint8_t>(-std::accumulate(bytes.begin(), bytes.end(), 0));
}

std::array<std::uint8_t, kHeaderSize> make_header(Command command, std::uint16_t length) {
  const auto low = [](std::uint16_t word) { return static_cast<std::uint8_t>(word & 0xFF); };
  const auto high = [](std::uint16_t word) { return static_cast<std::uint8_t>(word >> 8); };
  const auto code = static_cast<std::uint16_t>(command);
  std::array<std::uint8_t, kHeaderSize> header{kStart1, kStart2, low(code), high(code), low(length), high(length), 0};
  header.back() = checksum(header);
  return header;
}

}  // namespace lowrance
