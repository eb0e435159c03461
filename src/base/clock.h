// The time as the program sees it, so that tests and simulators can step it.
#pragma once

#include <chrono>
#include <cstdint>

namespace base {

class Clock {
 public:
  virtual ~Clock() = default;

  // Time since an unspecified start; never goes back. For waits and rates.
  [[nodiscard]] virtual std::chrono::microseconds monotonic() const = 0;
  // Seconds since 1970-01-01 00:00:00 UTC.
  [[nodiscard]] virtual std::int64_t unix_seconds() const = 0;
  // Local time minus UTC at this moment on this machine, daylight saving included, in seconds.
  [[nodiscard]] virtual int utc_offset_seconds() const = 0;
  // Sleeps in the system for about this long.
  virtual void pause(std::chrono::microseconds duration) = 0;
};

}  // namespace base
