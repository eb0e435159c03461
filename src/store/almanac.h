// The almanac of the GPS satellites as receivers keep it: orbits good enough to know which satellites are up.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace store {

// One satellite's orbit, in the units of the GPS interface document (IS-GPS-200): radians, radians per
// second, seconds, square root of metres.
struct AlmanacEntry {
  std::int16_t week = 0;            // GPS week as it came: 1024 weeks make an era, which is not always told
  float time_of_applicability = 0;  // seconds of that week
  float af0 = 0;                    // clock offset, seconds
  float af1 = 0;                    // clock drift, seconds per second
  float eccentricity = 0;
  float sqrt_semi_major_axis = 0;
  float mean_anomaly = 0;
  float argument_of_perigee = 0;
  float right_ascension = 0;  // of the ascending node at the start of the week
  float rate_of_right_ascension = 0;
  float inclination = 0;
  std::optional<std::uint8_t> health;  // 0 usable; not every receiver tells it

  friend bool operator==(const AlmanacEntry&, const AlmanacEntry&) = default;
};

inline constexpr int kSatellites = 32;

struct Almanac {
  std::array<std::optional<AlmanacEntry>, kSatellites> satellites;  // by PRN number minus 1; none: not known

  [[nodiscard]] int count() const {
    int known = 0;
    for (const std::optional<AlmanacEntry>& entry : satellites) known += entry.has_value() ? 1 : 0;
    return known;
  }
  [[nodiscard]] bool empty() const { return count() == 0; }
};

}  // namespace store
