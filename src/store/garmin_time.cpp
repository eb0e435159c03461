#include "store/garmin_time.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <vector>

#include "base/text.h"

namespace store {
namespace {

constexpr std::array<std::string_view, 7> kWeekdays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::chrono::sys_days kEpochDay = std::chrono::year{1989} / 12 / 31;
constexpr std::int64_t kSecondsPerDay = 86400;

char* put_number(char* out, unsigned value, int digits) {
  for (int i = digits - 1; i >= 0; --i) {
    out[i] = static_cast<char>('0' + value % 10);
    value /= 10;
  }
  return out + digits;
}

char* put_text(char* out, std::string_view text) { return std::copy(text.begin(), text.end(), out); }

// The numbers of "HH:MM:SS", which may still be no time; false when there are others.
bool read_time_of_day(std::string_view text, CalendarTime& time) {
  const std::vector<std::string_view> parts = base::split(text, ':');
  if (parts.size() != 3) return false;
  const std::array fields{&time.hour, &time.minute, &time.second};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::optional<long long> value = base::parse_integer(parts[i]);
    if (!value || *value < 0 || *value > 99) return false;
    *fields[i] = static_cast<unsigned>(*value);
  }
  return true;
}

// Whole days since the epoch, rounded down.
std::int64_t day_number(std::int64_t seconds) {
  return seconds >= 0 ? seconds / kSecondsPerDay : -((-seconds - 1) / kSecondsPerDay) - 1;
}

}  // namespace

CalendarTime calendar_time(std::int64_t seconds) {
  const std::int64_t days = day_number(seconds);
  const std::chrono::year_month_day date(kEpochDay + std::chrono::days(days));
  const auto second_of_day = static_cast<unsigned>(seconds - days * kSecondsPerDay);
  return {static_cast<int>(date.year()),     static_cast<unsigned>(date.month()),
          static_cast<unsigned>(date.day()), second_of_day / 3600,
          second_of_day / 60 % 60,           second_of_day % 60};
}

std::optional<std::int64_t> seconds_of(const CalendarTime& time) {
  if (time.year < 1000 || time.year > 9999 || time.month > 12 || time.day > 31) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(time.year), std::chrono::month(time.month),
                                         std::chrono::day(time.day)};
  // A leap second is a time too.
  if (!date.ok() || time.hour > 23 || time.minute > 59 || time.second > 60) return std::nullopt;
  const std::int64_t days = (std::chrono::sys_days(date) - kEpochDay).count();
  return days * kSecondsPerDay + (time.hour * 60 + time.minute) * 60 + time.second;
}

std::string format_date_text(std::int64_t seconds) {
  // Printed by hand: this is the most frequent text of a written file.
  const CalendarTime time = calendar_time(seconds);
  const std::chrono::weekday weekday(kEpochDay + std::chrono::days(day_number(seconds)));
  std::string result(24, ' ');
  char* out = put_text(result.data(), kWeekdays[weekday.c_encoding()]) + 1;
  out = put_text(out, kMonths[time.month - 1]) + 1;
  out = put_number(out, time.day, 2) + 1;
  out = put_number(out, time.hour, 2);
  *out++ = ':';
  out = put_number(out, time.minute, 2);
  *out++ = ':';
  out = put_number(out, time.second, 2) + 1;
  put_number(out, static_cast<unsigned>(time.year) % 10000U, 4);
  return result;
}

std::optional<std::int64_t> parse_date_text(std::string_view text) {
  const std::vector<std::string_view> words = base::split_words(text);
  if (words.size() != 5) return std::nullopt;
  const auto month = std::find_if(kMonths.begin(), kMonths.end(),
                                  [&](std::string_view name) { return base::equal_ignoring_case(name, words[1]); });
  const std::optional<long long> day = base::parse_integer(words[2]);
  const std::optional<long long> year = base::parse_integer(words[4]);
  CalendarTime time;
  if (month == kMonths.end() || !day || !year || !read_time_of_day(words[3], time)) return std::nullopt;
  if (*day < 1 || *day > 31 || *year < 0 || *year > 9999) return std::nullopt;
  time.year = static_cast<int>(*year);
  time.month = static_cast<unsigned>(month - kMonths.begin()) + 1;
  time.day = static_cast<unsigned>(*day);
  return seconds_of(time);
}

std::int64_t offset_seconds(double hours) {
  return std::llround(std::clamp(hours, -kMostOffsetHours, kMostOffsetHours) * 3600.0);
}

}  // namespace store
