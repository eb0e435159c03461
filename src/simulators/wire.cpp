#include "simulators/wire.h"

#include <algorithm>
#include <utility>

namespace simulators {

void Wire::send(std::span<const std::uint8_t> bytes, Time start) {
  if (start > idle_from()) {
    burst_start_ = start;
    burst_size_ = 0;
  }
  bool first = true;
  for (const std::uint8_t value : bytes)
    bytes_.push_back({value, std::exchange(first, false), due_after(++burst_size_)});
}

// What has been through the wire for long may be of an earlier run of bytes than the one that is counted.
void Wire::drop_behind_front() {
  const auto begin = std::find_if(bytes_.begin(), bytes_.end(), [](const TimedByte& byte) { return byte.first; });
  burst_size_ -= std::min(burst_size_, static_cast<std::int64_t>(bytes_.end() - begin));
  bytes_.erase(begin, bytes_.end());
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
  ++taken_;
  return value;
}

}  // namespace simulators
