#include "simulators/wire.h"

#include <algorithm>

namespace simulators {

void Wire::send(std::span<const std::uint8_t> bytes, Time start) {
  if (start > idle_from()) {
    burst_start_ = start;
    burst_size_ = 0;
  }
  for (const std::uint8_t value : bytes) bytes_.push_back({value, due_after(++burst_size_)});
}

std::optional<Wire::Time> Wire::front_due() const {
  if (bytes_.empty()) return std::nullopt;
  return bytes_.front().due;
}

std::optional<Wire::Time> Wire::batch_due(Time batch) const {
  if (bytes_.empty()) return std::nullopt;
  const auto later = std::upper_bound(bytes_.begin(), bytes_.end(), bytes_.front().due + batch,
                                      [](Time limit, const TimedByte& byte) { return limit < byte.due; });
  return std::prev(later)->due;
}

std::uint8_t Wire::take() {
  const std::uint8_t value = bytes_.front().value;
  bytes_.pop_front();
  return value;
}

}  // namespace simulators
