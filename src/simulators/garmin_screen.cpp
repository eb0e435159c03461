#include "simulators/garmin_screen.h"

#include <algorithm>
#include <cmath>

namespace simulators {

namespace {

constexpr std::uint8_t kDisplayData = 69;
constexpr std::uint32_t kHeaderSection = 0;
constexpr std::uint32_t kPixelSection = 1;
constexpr std::size_t kLongestPiece = 128;
constexpr std::uint16_t kStreetMap = 67;     // sends an array, but has an early screen
constexpr std::uint16_t kBlackIsZero = 111;  // the product that counts its greys from black to white

// Lines of several bits a pixel are made of whole 32-bit words.
std::size_t bytes_per_line(const ScreenShape& shape) {
  const auto bits = static_cast<std::size_t>(shape.width) * static_cast<std::size_t>(shape.bits_per_pixel);
  return shape.bits_per_pixel == 1 ? (bits + 7) / 8 : (bits + 31) / 32 * 4;
}

unsigned darkest_value(const ScreenShape& shape) { return (1U << shape.bits_per_pixel) - 1; }

unsigned pixel_value(const ScreenShape& shape, int x, int y) {
  const auto tone = static_cast<unsigned>(screen_tone(shape, x, y));
  return shape.bits_per_pixel == 1 ? tone / 2 : tone * (darkest_value(shape) / 3);
}

Packet header_packet(const ScreenShape& shape) {
  base::ByteWriter out;
  out.u32(kHeaderSection).u8(1).u8(0).u8(1).u8(1);
  out.u32(static_cast<std::uint32_t>(bytes_per_line(shape)));
  out.u32(static_cast<std::uint32_t>(shape.bits_per_pixel));
  out.u32(static_cast<std::uint32_t>(shape.width)).u32(static_cast<std::uint32_t>(shape.lines));
  if (shape.bits_per_pixel == 1) {
    out.u8(15).u8(0).u8(255).u8(255);  // brightness of the pixel values; 255 for those that do not occur
  } else {
    out.u8(15).u8(10).u8(5).u8(0);
  }
  out.u32(0x00000100).u32(0x00010DC8).u32(1);  // as captured; nobody knows what it means
  return {kDisplayData, out.result()};
}

base::Bytes line_bytes(const ScreenShape& shape, int y, bool black_is_zero) {
  base::Bytes bytes(bytes_per_line(shape));
  for (int x = 0; x < shape.width; ++x) {
    const int bit = x * shape.bits_per_pixel;
    const unsigned value = pixel_value(shape, x, y);
    const unsigned sent = black_is_zero ? darkest_value(shape) - value : value;
    std::uint8_t& byte = bytes[static_cast<std::size_t>(bit / 8)];
    byte = static_cast<std::uint8_t>(byte | sent << (bit % 8));
  }
  return bytes;
}

}  // namespace

ScreenShape screen_shape(const GarminOptions& options) {
  if (options.screen && is_possible(*options.screen)) return *options.screen;
  const bool is_early = options.product_id == kStreetMap ||
                        capabilities_from_table(options.product_id, options.software_version).has_value();
  return is_early ? ScreenShape{.width = 72, .lines = 100, .bits_per_pixel = 1} : ScreenShape{};
}

int screen_tone(const ScreenShape& shape, int x, int y) {
  constexpr int kWhite = 0, kLight = 1, kBlack = 3;
  const int width = shape.width, lines = shape.lines;
  if (x == 0 || y == 0 || x == width - 1 || y == lines - 1) return kBlack;  // a frame
  if (x >= 3 && x < 3 + width / 8 && y >= 3 && y < 3 + lines / 16) return kBlack;
  const int bar_end = width * 2 / 3;
  if (y >= lines - lines / 10 && y < lines - 3 && x >= 4 && x < bar_end) return (x - 4) * 4 / (bar_end - 4);
  const int radius = std::min(width, lines) / 3;
  const int east = x - width / 2;
  const int south = y - lines / 2;
  if (std::abs(std::hypot(east, south) - radius) < 0.7) return kBlack;
  if (std::abs(south) < radius - 3 && 4 * std::abs(east) <= radius - 3 - std::abs(south))
    return south < 0 ? kBlack : kLight;  // the needle
  return kWhite;
}

std::vector<Packet> screen_packets(const GarminOptions& options) {
  const ScreenShape shape = screen_shape(options);
  const bool black_is_zero = shape.bits_per_pixel > 1 && options.product_id == kBlackIsZero;
  std::vector<Packet> packets{header_packet(shape)};
  std::uint32_t offset = 0;
  for (int y = 0; y < shape.lines; ++y) {
    const base::Bytes line = line_bytes(shape, y, black_is_zero);
    for (std::size_t at = 0; at < line.size(); at += kLongestPiece) {
      const std::size_t size = std::min(kLongestPiece, line.size() - at);
      base::ByteWriter out;
      out.u32(kPixelSection).u32(offset).bytes(std::span(line).subspan(at, size));
      packets.push_back({kDisplayData, out.result()});
      offset += static_cast<std::uint32_t>(size);
    }
  }
  return packets;
}

}  // namespace simulators
