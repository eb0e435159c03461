// Times as receivers count them, and the date text of the program's own files.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace store {

// Seconds since 1989-12-31 00:00:00 UTC. 0 means that there is no time.
struct GarminTime {
  std::uint32_t seconds = 0;
  friend auto operator<=>(const GarminTime&, const GarminTime&) = default;
};

inline constexpr std::int64_t kGarminEpochUnix = 631065600;  // 1989-12-31 00:00:00 UTC in Unix seconds

inline constexpr std::uint32_t kRolloverSeconds = 1024U * 7 * 86400;  // the weeks of GPS time begin anew after 1024

// A moment as people and receivers write it, in UTC unless somebody says otherwise.
struct CalendarTime {
  int year = 0;
  unsigned month = 0, day = 0;  // from 1
  unsigned hour = 0, minute = 0, second = 0;
};

// `seconds` counts from the Garmin epoch and may be negative.
[[nodiscard]] CalendarTime calendar_time(std::int64_t seconds);

// The reverse. Nothing when there is no such day or time of day, or the year is not one of 1000 to 9999. A leap second
// (60) counts as the second after it.
[[nodiscard]] std::optional<std::int64_t> seconds_of(const CalendarTime& time);

// "Sun Dec 31 00:00:00 1989": 24 characters for the years 1000 to 9999, in English whatever the locale.
// `seconds` counts from the Garmin epoch and may be negative.
[[nodiscard]] std::string format_date_text(std::int64_t seconds);

// The reverse, in seconds since the Garmin epoch; the day of the week is not looked at. Nothing when the text
// is no date.
[[nodiscard]] std::optional<std::int64_t> parse_date_text(std::string_view text);

// The time moved by a time-zone offset, modulo 2^32. No time stays no time.
[[nodiscard]] constexpr GarminTime shifted(GarminTime time, std::int64_t offset_seconds) {
  if (time.seconds == 0) return time;
  return {static_cast<std::uint32_t>(static_cast<std::int64_t>(time.seconds) + offset_seconds)};
}

// No zone is further from UTC; offsets beyond it, in hours, are refused wherever they come from.
inline constexpr double kMostOffsetHours = 48;

// Hours from UTC as whole seconds: every zone is a whole number of them, so rounding undoes what decimal
// hours such as 5.333333 lose.
[[nodiscard]] std::int64_t offset_seconds(double hours);

}  // namespace store
