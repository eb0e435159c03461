// The clock of this machine.
#pragma once

#include "base/clock.h"

namespace apps {

class SystemClock : public base::Clock {
 public:
  [[nodiscard]] std::chrono::microseconds monotonic() const override;
  [[nodiscard]] std::int64_t unix_seconds() const override;
  [[nodiscard]] int utc_offset_seconds() const override;
  void pause(std::chrono::microseconds duration) override;
};

}  // namespace apps
