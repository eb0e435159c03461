// A clock that stands still until somebody waits on it.
#pragma once

#include "base/clock.h"

namespace support {

class SteppingClock : public base::Clock {
 public:
  [[nodiscard]] std::chrono::microseconds monotonic() const override { return now; }
  [[nodiscard]] std::int64_t unix_seconds() const override {
    return unix_start + std::chrono::duration_cast<std::chrono::seconds>(now).count();
  }
  [[nodiscard]] int utc_offset_seconds() const override { return utc_offset; }
  void pause(std::chrono::microseconds duration) override { now += duration; }

  std::chrono::microseconds now{0};
  std::int64_t unix_start = 1000000000;  // 2001-09-09 01:46:40 UTC
  int utc_offset = 0;
};

}  // namespace support
