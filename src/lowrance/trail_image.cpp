#include "lowrance/trail_image.h"

#include <algorithm>

#include "lowrance/memory.h"

namespace lowrance {
namespace {

constexpr std::int16_t kSmallestArea = 20;

std::uint32_t big_endian(std::span<const std::uint8_t> field) {
  std::uint32_t value = 0;
  for (const std::uint8_t byte : field) value = value << 8 | byte;
  return value;
}

// The fields of `bytes` with the byte order turned round: each of the given size.
base::Bytes swapped(base::Bytes bytes, std::size_t field_size) {
  for (std::size_t at = 0; at + field_size <= bytes.size(); at += field_size) {
    const auto field = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    std::reverse(field, field + static_cast<std::ptrdiff_t>(field_size));
  }
  return bytes;
}

std::optional<TrailArea> possible_area(std::uint32_t address, std::uint16_t size) {
  if (static_cast<std::int16_t>(size) < kSmallestArea || std::uint64_t{address} + size > kMemorySize)
    return std::nullopt;
  return TrailArea{address, size};
}

}  // namespace

std::optional<TrailArea> read_trail_area(std::span<const std::uint8_t> answer) {
  base::ByteReader in(answer);
  in.skip(2);
  const std::span<const std::uint8_t> fields = in.bytes(6);
  if (!in.ok()) return std::nullopt;
  const std::optional<TrailArea> area =
      possible_area(big_endian(fields.first(4)), static_cast<std::uint16_t>(big_endian(fields.last(2))));
  if (area) return area;
  base::ByteReader little(fields);
  const std::uint32_t address = little.u32();
  return possible_area(address, little.u16());
}

std::optional<ImageHeader> read_image_header(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < kImageHeaderSize) return std::nullopt;
  const auto field = [bytes](std::size_t index) { return big_endian(bytes.subspan(index * 4, 4)); };
  return ImageHeader{{static_cast<std::int32_t>(field(0)), static_cast<std::int32_t>(field(1))}, field(2), field(3)};
}

base::Bytes write_image_header(const ImageHeader& header) {
  base::ByteWriter out;
  out.i32(header.origin.y).i32(header.origin.x).u32(header.start).u32(header.end);
  return swapped(out.result(), 4);
}

std::optional<std::array<MemoryRun, 2>> delta_runs(const TrailArea& area, const ImageHeader& header) {
  const auto is_inside = [&area](std::uint32_t address) {
    return address >= area.ring() && address <= area.ring_end();
  };
  if (!is_inside(header.start) || !is_inside(header.end)) return std::nullopt;
  std::array<MemoryRun, 2> runs{MemoryRun{header.start, header.end - header.start}, MemoryRun{}};
  if (header.start >= header.end)
    runs = {MemoryRun{header.start, area.ring_end() - header.start}, MemoryRun{area.ring(), header.end - area.ring()}};
  if (std::ranges::any_of(runs, [](const MemoryRun& run) { return run.size % kDeltaSize != 0; })) return std::nullopt;
  return runs;
}

std::vector<Delta> read_image_deltas(std::span<const std::uint8_t> bytes) {
  std::vector<Delta> deltas;
  const auto i16_at = [bytes](std::size_t at) { return static_cast<std::int16_t>(big_endian(bytes.subspan(at, 2))); };
  for (std::size_t at = 0; at + kDeltaSize <= bytes.size(); at += kDeltaSize)
    deltas.push_back({i16_at(at), i16_at(at + 2)});
  return deltas;
}

base::Bytes write_image_deltas(std::span<const Delta> deltas) {
  base::ByteWriter out;
  for (const Delta& delta : deltas) out.i16(delta.dy).i16(delta.dx);
  return swapped(out.result(), 2);
}

}  // namespace lowrance
