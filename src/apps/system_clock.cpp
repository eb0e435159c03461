#include "apps/system_clock.h"

#include <ctime>
#include <thread>

namespace apps {

std::chrono::microseconds SystemClock::monotonic() const {
  return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

std::int64_t SystemClock::unix_seconds() const { return static_cast<std::int64_t>(std::time(nullptr)); }

int SystemClock::utc_offset_seconds() const {
  const std::time_t now = std::time(nullptr);
  const std::tm local = *std::localtime(&now);
  using namespace std::chrono;
  const sys_days day = year(local.tm_year + 1900) / (local.tm_mon + 1) / local.tm_mday;
  const auto local_seconds =
      day.time_since_epoch() + hours(local.tm_hour) + minutes(local.tm_min) + seconds(local.tm_sec);
  return static_cast<int>(duration_cast<seconds>(local_seconds).count() - static_cast<std::int64_t>(now));
}

void SystemClock::pause(std::chrono::microseconds duration) { std::this_thread::sleep_for(duration); }

}  // namespace apps
