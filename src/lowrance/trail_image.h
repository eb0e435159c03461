// The image of a plot trail in the memory of units that have no commands for it; unlike all messages it is big-endian.
// In the trail's area: y i32 and x i32 of the first point, address u32 of the first delta, address u32 behind the last
// one; from 16 on the deltas, change of y i16 and of x i16, as a ring. The last 4 bytes of the area are not used.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/byte_cursor.h"
#include "lowrance/mercator.h"
#include "lowrance/records.h"

namespace lowrance {

inline constexpr std::uint32_t kImageHeaderSize = 16;

// Where a trail is kept; never beyond the end of the memory, and never smaller than a ring without deltas.
struct TrailArea {
  std::uint32_t address = 0;
  std::uint32_t size = 0;  // bytes

  [[nodiscard]] std::uint32_t capacity() const { return (size - kImageHeaderSize - 4) / kDeltaSize; }  // deltas
  [[nodiscard]] std::uint32_t ring() const { return address + kImageHeaderSize; }
  [[nodiscard]] std::uint32_t ring_end() const { return ring() + capacity() * std::uint32_t{kDeltaSize}; }
};

// Answer to Command::GetTrailPointer: address at 2, size i16 at 6. Big-endian, unless only little-endian makes a
// possible area. Nothing when neither does.
[[nodiscard]] std::optional<TrailArea> read_trail_area(std::span<const std::uint8_t> answer);

struct ImageHeader {
  GridPoint origin;
  std::uint32_t start = 0;  // address of the first delta
  std::uint32_t end = 0;    // behind the last one
  [[nodiscard]] bool is_empty() const { return start == 0 || end == 0 || start == end; }
};
[[nodiscard]] std::optional<ImageHeader> read_image_header(std::span<const std::uint8_t> bytes);
[[nodiscard]] base::Bytes write_image_header(const ImageHeader& header);

struct MemoryRun {
  std::uint32_t address = 0;
  std::uint32_t size = 0;  // bytes, whole deltas
};
// Where the deltas are, in their order: the second run has bytes when the ring has wrapped. Nothing when the header's
// addresses lead out of the ring or between two deltas.
[[nodiscard]] std::optional<std::array<MemoryRun, 2>> delta_runs(const TrailArea& area, const ImageHeader& header);

// Whole deltas; bytes left over are passed over.
[[nodiscard]] std::vector<Delta> read_image_deltas(std::span<const std::uint8_t> bytes);
[[nodiscard]] base::Bytes write_image_deltas(std::span<const Delta> deltas);

}  // namespace lowrance
