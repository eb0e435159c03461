#include "formats/iso_time.h"

#include <array>
#include <chrono>
#include <limits>

namespace formats {
namespace {

constexpr std::int64_t kSecondsPerDay = 86400;

void put_number(char* out, unsigned value, int digits) {
  for (int i = digits - 1; i >= 0; --i) {
    out[i] = static_cast<char>('0' + value % 10);
    value /= 10;
  }
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Takes exactly that many digits; nothing when there are not so many.
std::optional<int> take_digits(std::string_view& text, std::size_t count) {
  if (text.size() < count) return std::nullopt;
  int value = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (!is_digit(text[i])) return std::nullopt;
    value = value * 10 + (text[i] - '0');
  }
  text.remove_prefix(count);
  return value;
}

bool take(std::string_view& text, char c) {
  if (!text.starts_with(c)) return false;
  text.remove_prefix(1);
  return true;
}

std::optional<std::int64_t> take_date(std::string_view& text) {
  const std::optional<int> year = take_digits(text, 4);
  if (!year || !take(text, '-')) return std::nullopt;
  const std::optional<int> month = take_digits(text, 2);
  if (!month || !take(text, '-')) return std::nullopt;
  const std::optional<int> day = take_digits(text, 2);
  if (!day) return std::nullopt;
  const std::chrono::year_month_day date(std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                         std::chrono::day(static_cast<unsigned>(*day)));
  if (!date.ok()) return std::nullopt;
  return std::chrono::sys_days(date).time_since_epoch().count() * kSecondsPerDay;
}

std::optional<std::int64_t> take_time_of_day(std::string_view& text) {
  const std::optional<int> hours = take_digits(text, 2);
  if (!hours || !take(text, ':')) return std::nullopt;
  const std::optional<int> minutes = take_digits(text, 2);
  if (!minutes || !take(text, ':')) return std::nullopt;
  const std::optional<int> seconds = take_digits(text, 2);
  const bool is_midnight = hours == 24 && minutes == 0 && seconds == 0;  // at the end of the day
  if (!seconds || *minutes > 59 || *seconds > 60 || (*hours > 23 && !is_midnight)) return std::nullopt;
  if (take(text, '.') || take(text, ',')) {
    if (!take_digits(text, 1)) return std::nullopt;
    while (!text.empty() && is_digit(text[0])) text.remove_prefix(1);
  }
  return (*hours * 60 + *minutes) * 60 + *seconds;
}

// What the zone adds to UTC, in seconds; the text ends behind it.
std::optional<std::int64_t> take_zone(std::string_view text) {
  if (text.empty() || text == "Z" || text == "z") return 0;
  const bool is_west = text[0] == '-';
  if (!take(text, '+') && !take(text, '-')) return std::nullopt;
  const std::optional<int> hours = take_digits(text, 2);
  (void)take(text, ':');
  const std::optional<int> minutes = text.empty() ? 0 : take_digits(text, 2);
  if (!hours || !minutes || !text.empty() || *minutes > 59) return std::nullopt;
  const std::int64_t seconds = (*hours * 60 + *minutes) * 60;
  return is_west ? -seconds : seconds;
}

}  // namespace

void append_iso_time(std::string& out, store::GarminTime time) {
  const std::int64_t unix_seconds = store::kGarminEpochUnix + time.seconds;
  const std::chrono::sys_days day{std::chrono::days(unix_seconds / kSecondsPerDay)};
  const std::chrono::year_month_day date(day);
  const auto second = static_cast<unsigned>(unix_seconds % kSecondsPerDay);
  std::array<char, 20> text{'y', 'y', 'y', 'y', '-', 'm', 'm', '-', 'd', 'd',
                            'T', 'h', 'h', ':', 'm', 'm', ':', 's', 's', 'Z'};
  put_number(&text[0], static_cast<unsigned>(static_cast<int>(date.year())), 4);
  put_number(&text[5], static_cast<unsigned>(date.month()), 2);
  put_number(&text[8], static_cast<unsigned>(date.day()), 2);
  put_number(&text[11], second / 3600, 2);
  put_number(&text[14], second / 60 % 60, 2);
  put_number(&text[17], second % 60, 2);
  out.append(text.data(), text.size());
}

std::optional<store::GarminTime> parse_iso_time(std::string_view text) {
  const std::optional<std::int64_t> date = take_date(text);
  if (!date || (!take(text, 'T') && !take(text, 't') && !take(text, ' '))) return std::nullopt;
  const std::optional<std::int64_t> time_of_day = take_time_of_day(text);
  const std::optional<std::int64_t> zone = take_zone(text);
  if (!time_of_day || !zone) return std::nullopt;
  const std::int64_t seconds = *date + *time_of_day - *zone - store::kGarminEpochUnix;
  if (seconds < 0 || seconds > std::numeric_limits<std::uint32_t>::max()) return store::GarminTime{};
  return store::GarminTime{static_cast<std::uint32_t>(seconds)};
}

}  // namespace formats
