#include "garmin/display_bitmap.h"

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>

#include "base/byte_cursor.h"
#include "base/text.h"
#include "garmin/packet_ids.h"

namespace garmin {
namespace {

constexpr std::uint8_t kSendDisplay = 32;  // command number
constexpr std::uint8_t kDisplayId = 69;    // packet id

constexpr std::uint32_t kHeaderSection = 0, kColourSection = 2;
constexpr std::size_t kLongestPiece = 128;  // pixel bytes in a packet
constexpr std::uint32_t kLongestSide = 1024;
constexpr std::uint32_t kMostBytesPerLine = 1024;
constexpr std::uint32_t kMostStrayPackets = 200;
constexpr std::uint32_t kMostTimesSent = 3;  // a screen that is sent over and over never ends

constexpr std::uint16_t kMap = 111, k12CX = 116, kColourMap = 118, kETrex = 130;

constexpr picture::Palette kColourMapPalette{0x808080, 0x000000, 0x000080, 0x0000FF, 0x1A5A1C, 0x00FF00,
                                             0x008080, 0x00FFFF, 0x3C1212, 0xFF0000, 0xC0C0C0, 0x00FF00,
                                             0xFB8013, 0xFFFF00, 0x00FFFF, 0xFFFFFF};

std::uint32_t section_of(std::span<const std::uint8_t> packet) { return base::ByteReader(packet).u32(); }

}  // namespace

DisplayGeometry DisplayGeometry::read(std::span<const std::uint8_t> header) {
  base::ByteReader in(header);
  in.skip(8);
  DisplayGeometry geometry;
  geometry.bytes_per_line = in.u32();
  geometry.layout = in.u32();
  geometry.width = in.u32();
  geometry.lines = in.u32();
  return in.ok() ? geometry : DisplayGeometry{};
}

std::string DisplayGeometry::problem() const {
  if (layout != 1 && layout != 2)
    return base::format_text("it has %u bits per pixel, and only 1 or 2 are known", layout);
  if (width == 0 || lines == 0 || width > kLongestSide || lines > kLongestSide)
    return base::format_text("%u by %u pixels are no size for it", width, lines);
  if (bytes_per_line < (width * layout + 7) / 8 || bytes_per_line > kMostBytesPerLine)
    return base::format_text("%u bytes are no length for a line of %u pixels", bytes_per_line, width);
  return "";
}

std::uint32_t DisplayGeometry::packets() const {
  return lines *
         ((bytes_per_line + static_cast<std::uint32_t>(kLongestPiece) - 1) / static_cast<std::uint32_t>(kLongestPiece));
}

GarminDisplay::GarminDisplay(const Connection& connection) : connection_(connection) {
  connection_.link.on(PacketKind::Pid_Display_Data, [this](auto data) { take_packet(data); });
}

std::optional<picture::Bitmap> GarminDisplay::download() {
  const Conversation conversation(connection_);
  if (!conversation.is_open()) return std::nullopt;
  connection_.front_end.set_status(3, "ESC key to abort");
  if (!connection_.stopped() && !product_can_send()) return std::nullopt;
  running_ = true;
  const bool complete = !connection_.stopped() && receive_screen();
  running_ = false;
  arrived_.clear();
  geometry_.reset();
  std::optional<picture::Bitmap> picture = std::exchange(picture_, std::nullopt);
  if (complete) return picture;
  if (connection_.flags.ComTimedOut) {
    tell_time_out();
  } else {
    // Whether it was the user or a screen that does not fit: the receiver must not go on sending.
    connection_.selection.send_command(connection_.selection.commands().abort, "Gabort");
  }
  return std::nullopt;
}

bool GarminDisplay::product_can_send() {
  base::FrontEnd& front_end = connection_.front_end;
  const std::uint16_t product = connection_.selection.product().id;
  // Deliberate : the warning of this one product stands just before its refusal, as users know it; line 4 stays.
  if (product == k12CX) {
    front_end.write_line(3, "Warning.  Product may not support display download");
    front_end.write_line(4, "          and a display download will likely fail.");
    front_end.write_line(3, "The 12CX is not supported.");
  } else if (product == kETrex) {
    front_end.write_line(3, "The eTrex is not supported at this time.");
  } else {
    return true;
  }
  connection_.flags.UserAbort = true;
  return false;
}

// True when the whole picture has come.
bool GarminDisplay::receive_screen() {
  connection_.link.set_expected_id(kDisplayId);
  connection_.selection.send_command(kSendDisplay, "Send GPS display");
  if (!receive_header() || !prepare_picture()) return false;
  connection_.front_end.write_progress(2, base::format_text("%3u Lines", geometry_->lines));
  connection_.front_end.set_progress_range(static_cast<int>(geometry_->lines));
  const bool complete = receive_lines();
  connection_.front_end.set_progress_range(0);
  return complete;
}

// The acknowledgement and the header, and perhaps what is left over from a transfer that was broken off.
bool GarminDisplay::receive_header() {
  std::uint32_t most = kMostStrayPackets;
  while (!geometry_)
    if (!receive_packet(most)) return false;
  return true;
}

bool GarminDisplay::prepare_picture() {
  if (const std::string problem = geometry_->problem(); !problem.empty()) {
    connection_.front_end.write_line(1, "The receiver's screen cannot be drawn: " + problem + ".");
    return false;
  }
  try {
    const bool in_colour = connection_.selection.product().id == kColourMap;
    picture_.emplace(static_cast<int>(geometry_->width), static_cast<int>(geometry_->lines),
                     in_colour ? kColourMapPalette : picture::kGreyPalette);
    missing_ = geometry_->size();
    arrived_.assign(missing_, false);
  } catch (const std::bad_alloc&) {
    connection_.front_end.write_line(4, "Not enough memory to allocate GPS display array");
    picture_.reset();
  }
  return picture_.has_value();
}

bool GarminDisplay::receive_lines() {
  const std::uint32_t lines = geometry_->lines;
  std::uint32_t most = kMostTimesSent * geometry_->packets() + kMostStrayPackets;
  for (std::uint32_t line = 1; line <= lines; ++line) {
    connection_.front_end.write_progress(3, base::format_text("L%03u", line));
    while (missing_ > std::size_t{lines - line} * geometry_->bytes_per_line)
      if (!receive_packet(most)) return false;
    connection_.front_end.step_progress();
  }
  return true;
}

// One packet of at most so many; false when the download has to stop.
bool GarminDisplay::receive_packet(std::uint32_t& most) {
  if (most-- == 0) {
    connection_.front_end.write_line(2, "The receiver keeps sending packets that do not belong to this transfer.");
    connection_.flags.ComTimedOut = true;
    return false;
  }
  connection_.link.getGarminMessage();
  return !connection_.stopped();
}

void GarminDisplay::take_packet(std::span<const std::uint8_t> data) {
  if (!running_ || data.size() < 4) return;
  const std::uint32_t section = section_of(data);
  if (section == kHeaderSection) {
    if (!geometry_) geometry_ = DisplayGeometry::read(data);  // a second one is the receiver that sends all again
  } else if (section != kColourSection && picture_) {
    take_pixels(data);
  }
}

void GarminDisplay::take_pixels(std::span<const std::uint8_t> data) {
  const auto offset_at = [data](std::size_t at) {
    base::ByteReader in(data);
    in.skip(at);
    return std::size_t{in.u32()};
  };
  const auto fits = [&](std::size_t at) {
    return data.size() > at + 4 && is_piece_of_line(offset_at(at), data.size() - at - 4);
  };
  std::size_t at = 4;
  // Two descriptions of this product differ in where the offset stands; the sizes tell which one holds.
  if (connection_.selection.product().id == kMap && !fits(at) && fits(at + 4)) at += 4;
  if (data.size() <= at + 4) return;
  const std::size_t offset = offset_at(at);
  const std::span<const std::uint8_t> pixels = data.subspan(at + 4);
  for (std::size_t i = 0; i < pixels.size() && offset + i < arrived_.size(); ++i) draw(offset + i, pixels[i]);
}

bool GarminDisplay::is_piece_of_line(std::size_t offset, std::size_t size) const {
  const std::size_t left_in_line = geometry_->bytes_per_line - offset % geometry_->bytes_per_line;
  return offset < geometry_->size() && size == std::min(kLongestPiece, left_in_line);
}

// A byte of pixels, the leftmost of them in the least significant bits.
void GarminDisplay::draw(std::size_t offset, std::uint8_t pixels) {
  if (!arrived_[offset]) {
    arrived_[offset] = true;
    --missing_;
  }
  const std::uint32_t bits = geometry_->layout;
  // Receivers count grey from white to black, the palette from black to white.
  // Deliberate : one bit per pixel is taken as it is, so that such screens come out as in the negative.
  const bool inverted = bits == 2 && connection_.selection.product().id != kMap;
  const std::size_t in_line = offset % geometry_->bytes_per_line;
  const int y = static_cast<int>(offset / geometry_->bytes_per_line);
  for (std::size_t i = 0, x = in_line * (8 / bits); i < 8 / bits && x < geometry_->width; ++i, ++x) {
    const auto value = static_cast<std::uint8_t>(pixels >> (i * bits) & ((1U << bits) - 1));
    picture_->set_pixel(static_cast<int>(x), y, inverted ? static_cast<std::uint8_t>(3 - value) : value);
  }
}

void GarminDisplay::tell_time_out() {
  const bool lost = connection_.port.lost();
  connection_.flags.GpsIdentified = false;  // who answers next may be another receiver
  connection_.close_port();
  connection_.front_end.message_box("Download", "Serial Port Timeout");
  if (lost) return;
  connection_.front_end.write_line(4,
                                   "The receiver did not send its whole screen, so there is no new picture. Not every "
                                   "model can send it; check the cable and try again.");
}

}  // namespace garmin
