// Reading a unit's memory: old units keep plot trails where no command reaches them, and all of them their screens.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/byte_cursor.h"
#include "lowrance/connection.h"

namespace lowrance {

inline constexpr std::uint64_t kMemorySize = std::uint64_t{1} << 32;  // as far as addresses reach
inline constexpr std::size_t kMemoryBlock = 160;                      // bytes of one request

// How many requests so many bytes take.
[[nodiscard]] constexpr int memory_blocks(std::size_t size) {
  return static_cast<int>((size + kMemoryBlock - 1) / kMemoryBlock);
}

// One request of at most kMemoryBlock bytes; empty unless exactly as many came.
[[nodiscard]] base::Bytes read_memory_block(const Connection& connection, std::uint32_t address, std::size_t size,
                                            std::string_view label);

// Block by block, each told on line 4 under the name of what is read. Ends at the first block that does not come and
// after ESC, which is said; then fewer bytes than asked for are returned. `size` may be anything a unit says.
[[nodiscard]] base::Bytes read_memory(const Connection& connection, std::uint32_t address, std::size_t size,
                                      std::string_view what);

}  // namespace lowrance
