#include "garmin/receiver_names.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace garmin {
namespace {

std::string key_of(std::string_view name, std::uint64_t thing) {
  return std::to_string(thing).append(1, ' ').append(name);
}

// In hundred-thousandths of a degree: about a metre.
std::uint32_t coarse(double degrees) {
  if (!(std::abs(degrees) <= 361)) return 0;
  return static_cast<std::uint32_t>(std::lround(degrees * 1e5) + 40'000'000);
}

}  // namespace

void ReceiverNames::reserve(std::string_view name, std::uint64_t thing) {
  if (base::trim_trailing_blanks(name).empty() || receiver_name(name, rule_) != name) return;
  const auto [row, is_new] = given_.try_emplace(key_of(name, thing), name);
  if (is_new && !take(name)) given_.erase(row);
}

std::string ReceiverNames::name_of(std::string_view name, std::uint64_t thing) {
  const auto [row, is_new] = given_.try_emplace(key_of(name, thing));
  if (is_new) row->second = unique_name(receiver_name(name, rule_));
  return row->second;
}

// False when somebody has the name.
bool ReceiverNames::take(std::string_view name) { return taken_.emplace(base::trim_trailing_blanks(name)).second; }

std::string ReceiverNames::unique_name(const std::string& name) {
  if (base::trim_trailing_blanks(name).empty()) return numbered(nameless_);
  return take(name) ? name : numbered(name);
}

// Every number is tried once behind the same letters, so that many names that are cut alike take no longer each.
std::string ReceiverNames::numbered(std::string_view stem) {
  std::size_t first = 1;
  for (std::size_t digits = 1; digits <= rule_.longest; ++digits, first *= 10) {
    const std::string letters(stem.substr(0, rule_.longest - digits));
    std::size_t& next = next_numbers_.try_emplace(std::to_string(digits) + " " + letters, first).first->second;
    while (next < first * 10)
      if (std::string name = letters + std::to_string(next++); take(name)) return name;
  }
  return std::string(stem.substr(0, rule_.longest));  // more things than a name of this length can tell apart
}

std::uint64_t place_of(const store::ItemRecord& item) {
  const geodesy::Position& position = item.position;
  const double longitude = position.longitude <= -180 ? position.longitude + 360 : position.longitude;
  return (std::uint64_t{coarse(position.latitude)} << 32) | coarse(longitude);
}

}  // namespace garmin
