// One direction of a serial line: each byte takes its ten bit times and comes out at the far end only then.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>

namespace simulators {

class Wire {
 public:
  using Time = std::chrono::microseconds;

  // Bits per second, one start and one stop bit around eight data bits; 0 takes no time at all. No more than
  // `capacity` bytes are under way at once.
  Wire(int baud, std::size_t capacity) : baud_(baud), capacity_(capacity) {}

  // Puts the bytes behind those already under way, none of them before `start`; the caller minds room().
  void send(std::span<const std::uint8_t> bytes, Time start);

  [[nodiscard]] std::size_t room() const { return capacity_ - std::min(capacity_, bytes_.size()); }
  // When the byte at the front is through; nothing when none is under way.
  [[nodiscard]] std::optional<Time> front_due() const;
  // When the last of those bytes is through that follow the front byte within `batch`.
  [[nodiscard]] std::optional<Time> batch_due(Time batch) const;
  // When everything under way is through.
  [[nodiscard]] Time idle_from() const { return due_after(burst_size_); }

  // Takes the front byte; there must be one.
  std::uint8_t take();
  void clear() { bytes_.clear(); }
  // Takes back what stands behind the packet at the front, as sent by one call each.
  void drop_behind_front();

  // How many bytes have been taken, and how many those are together with those under way.
  [[nodiscard]] std::uint64_t taken() const { return taken_; }
  [[nodiscard]] std::uint64_t sent() const { return taken_ + bytes_.size(); }

 private:
  struct TimedByte {
    std::uint8_t value;
    bool first;  // of those sent by one call
    Time due;
  };

  // Counted from the start of an unbroken run of bytes, so that rounding never adds up.
  [[nodiscard]] Time due_after(std::int64_t byte_count) const {
    if (baud_ <= 0) return burst_start_;
    return burst_start_ + Time{(byte_count * 10'000'000 + baud_ - 1) / baud_};
  }

  int baud_;
  std::size_t capacity_;
  Time burst_start_{0};
  std::int64_t burst_size_ = 0;
  std::deque<TimedByte> bytes_;
  std::uint64_t taken_ = 0;
};

}  // namespace simulators
