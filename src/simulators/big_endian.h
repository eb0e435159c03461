// What old Lowrance/Eagle units keep in their memory stands there with the highest byte first.
#pragma once

#include <cstdint>
#include <span>

#include "base/byte_cursor.h"

namespace simulators {

inline void append_big_endian(base::Bytes& bytes, std::uint32_t value, int size) {
  for (int i = size - 1; i >= 0; --i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

inline std::uint32_t big_endian(std::span<const std::uint8_t> bytes) {
  std::uint32_t value = 0;
  for (const std::uint8_t byte : bytes) value = value << 8 | byte;
  return value;
}

}  // namespace simulators
