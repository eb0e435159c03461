#include "simulators/lowrance_framing.h"

#include <numeric>
#include <span>
#include <utility>

namespace simulators {

namespace {

constexpr std::uint8_t kFirst = 0x55, kSecond = 0x81;
constexpr std::size_t kHeaderSize = 8;

unsigned sum_of(std::span<const std::uint8_t> bytes) { return std::accumulate(bytes.begin(), bytes.end(), 0U) & 0xFF; }

void append_checksum(base::Bytes& bytes, std::size_t from) {
  bytes.push_back(static_cast<std::uint8_t>(0 - sum_of(std::span(bytes).subspan(from))));
}

}  // namespace

base::Bytes frame_lowrance_message(const LowranceMessage& message, bool damaged) {
  base::ByteWriter header;
  header.u8(kFirst).u8(kSecond).u16(message.command).u16(static_cast<std::uint16_t>(message.data.size())).u8(0);
  base::Bytes frame = header.result();
  append_checksum(frame, 0);
  if (!message.data.empty()) {
    frame.insert(frame.end(), message.data.begin(), message.data.end());
    append_checksum(frame, kHeaderSize);
  }
  if (damaged) frame[frame.size() - 2] ^= 1;
  return frame;
}

std::optional<LowranceMessageFinder::Frame> LowranceMessageFinder::feed(std::uint8_t byte) {
  bytes_.push_back(byte);
  if (bytes_.size() <= 2) look_for_start();
  if (bytes_.size() < kHeaderSize) return std::nullopt;
  if (bytes_.size() == kHeaderSize) {
    base::ByteReader in(bytes_);
    in.skip(4);
    data_size_ = in.u16();
    const bool good = in.u8() == 0 && sum_of(bytes_) == 0 && data_size_ <= kLongestRequest;
    if (good && data_size_ > 0) return std::nullopt;
    return finish(good);
  }
  if (bytes_.size() < kHeaderSize + data_size_ + 1) return std::nullopt;
  return finish(sum_of(std::span(bytes_).subspan(kHeaderSize)) == 0);
}

void LowranceMessageFinder::look_for_start() {
  const bool has_first = bytes_.size() == 2 && bytes_[0] == kFirst;
  if (has_first && bytes_[1] == kSecond) return;
  const bool may_begin = bytes_.back() == kFirst;
  bytes_.clear();
  if (may_begin) bytes_.push_back(kFirst);
}

LowranceMessageFinder::Frame LowranceMessageFinder::finish(bool good) {
  Frame frame{.good = good, .message = {}};
  if (good) {
    base::ByteReader in(bytes_);
    in.skip(2);
    frame.message.command = in.u16();
    in.skip(4);
    const std::span<const std::uint8_t> data = in.bytes(data_size_);
    frame.message.data.assign(data.begin(), data.end());
  }
  bytes_.clear();
  return frame;
}

}  // namespace simulators
