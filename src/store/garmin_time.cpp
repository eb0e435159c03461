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

// "HH:MM:SS" as seconds of the day.
std::optional<std::int64_t> parse_time_of_day(std::string_view text) {
  const std::vector<std::string_view> parts = base::split(text, ':');
  if (parts.size() != 3) return std::nullopt;
  std::int64_t seconds = 0;
  constexpr std::array<long long, 3> kLimits{23, 59, 60};  // a leap second is a time too
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::optional<long long> value = base::parse_integer(parts[i]);
    if (!value || *value < 0 || *value > kLimits[i]) return std::nullopt;
    seconds = seconds * 60 + *value;
  }
  return seconds;
}

}  // namespace

std::string format_date_text(std::int64_t seconds) {
  // Printed by hand: this is the most frequent text of a written file.
  const std::int64_t day_number = seconds >= 0 ? seconds / kSecondsPerDay : -((-seconds - 1) / kSecondsPerDay) - 1;
  const auto second_of_day = static_cast<unsigned>(seconds - day_number * kSecondsPerDay);
  const std::chrono::sys_days day = kEpochDay + std::chrono::days(day_number);
  const std::chrono::year_month_day date(day);
  const std::chrono::weekday weekday(day);
  std::string result(24, ' ');
  char* out = put_text(result.data(), kWeekdays[weekday.c_encoding()]) + 1;
  out = put_text(out, kMonths[static_cast<unsigned>(date.month()) - 1]) + 1;
  out = put_number(out, static_cast<unsigned>(date.day()), 2) + 1;
  out = put_number(out, second_of_day / 3600, 2);
  *out++ = ':';
  out = put_number(out, second_of_day / 60 % 60, 2);
  *out++ = ':';
  out = put_number(out, second_of_day % 60, 2) + 1;
  put_number(out, static_cast<unsigned>(static_cast<int>(date.year())) % 10000U, 4);
  return result;
}

std::optional<std::int64_t> parse_date_text(std::string_view text) {
  const std::vector<std::string_view> words = base::split_words(text);
  if (words.size() != 5) return std::nullopt;
  const auto month = std::find_if(kMonths.begin(), kMonths.end(),
                                  [&](std::string_view name) { return base::equal_ignoring_case(name, words[1]); });
  const std::optional<long long> day = base::parse_integer(words[2]);
  const std::optional<std::int64_t> second_of_day = parse_time_of_day(words[3]);
  const std::optional<long long> year = base::parse_integer(words[4]);
  if (month == kMonths.end() || !day || !second_of_day || !year) return std::nullopt;
  if (*day < 1 || *day > 31 || *year < 1000 || *year > 9999) return std::nullopt;
  const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(*year)),
                                         std::chrono::month(static_cast<unsigned>(month - kMonths.begin()) + 1),
                                         std::chrono::day(static_cast<unsigned>(*day)));
  if (!date.ok()) return std::nullopt;
  return (std::chrono::sys_days(date) - kEpochDay).count() * kSecondsPerDay + *second_of_day;
}

std::int64_t offset_seconds(double hours) {
  return std::llround(std::clamp(hours, -kMostOffsetHours, kMostOffsetHours) * 3600.0);
}

}  // namespace store
