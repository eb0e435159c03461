// The screen of a Garmin receiver, downloaded as a picture. The maker's document does not have it; what is known of the
// packets comes from public captures and is described in docs/protocols/garmin.md, "The screen".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "garmin/connection.h"
#include "picture/bitmap.h"

namespace garmin {

// What the first packet says of the screen. Packets begin with a section, u32: 0 this header, 1 pixels, 2 a colour. In
// the header follow bytes per line at 8, bits per pixel at 12, width at 16 and lines at 20, each u32; what stands
// behind differs and is not read. In a packet of pixels follow their offset in bytes from the first pixel of the whole
// screen, u32 at 4, and from 8 on at most 128 bytes of pixels, the leftmost in the least significant bits. Product 111
// may have one more u32 before the offset.
struct DisplayGeometry {
  std::uint32_t bytes_per_line = 0, layout = 0, width = 0, lines = 0;  // layout: bits per pixel

  // All zero when the packet is too short.
  [[nodiscard]] static DisplayGeometry read(std::span<const std::uint8_t> header);
  // Why no picture can be made of it, in words; empty when one can.
  [[nodiscard]] std::string problem() const;

  [[nodiscard]] std::size_t size() const { return std::size_t{bytes_per_line} * lines; }
  [[nodiscard]] std::uint32_t packets() const;
};

class GarminDisplay {
 public:
  // Takes the display packets of the connection's link, which must outlive the display.
  explicit GarminDisplay(const Connection& connection);

  // Opens the port, downloads the screen and closes the port. Nothing when the receiver's model cannot do it, its
  // screen does not fit, it fell silent, or the user stopped it; all that is told.
  [[nodiscard]] std::optional<picture::Bitmap> download();

 private:
  bool product_can_send();
  bool receive_screen();
  bool receive_header();
  bool prepare_picture();
  bool receive_lines();
  bool receive_packet(std::uint32_t& most);
  void take_packet(std::span<const std::uint8_t> data);
  void take_pixels(std::span<const std::uint8_t> data);
  void draw(std::size_t offset, std::uint8_t pixels);
  [[nodiscard]] bool is_piece_of_line(std::size_t offset, std::size_t size) const;
  void tell_time_out();

  Connection connection_;

  // Of the running download.
  bool running_ = false;
  std::optional<DisplayGeometry> geometry_;
  std::optional<picture::Bitmap> picture_;
  std::vector<bool> arrived_;  // by byte of the receiver's screen
  std::size_t missing_ = 0;    // of those
};

}  // namespace garmin
