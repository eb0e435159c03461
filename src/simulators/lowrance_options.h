// What a simulated Lowrance/Eagle unit is to be, and what shall go wrong with it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "simulators/fault.h"

namespace simulators {

// The port behind which the unit in process stands.
inline constexpr std::string_view kLowrancePortName = "sim:lowrance";

// One row of the unit table: what the unit says of itself, and how it keeps its screen and trails.
struct LowranceUnit {
  std::string_view name;  // as --unit takes it
  std::uint16_t product_id;
  std::int16_t protocol_version;  // 0: trails are in its memory
  std::int16_t screen_type;       // 0 black plane only, 1 and 2 with a grey plane
  std::int16_t screen_width, screen_height;
  std::int16_t row_length;  // pixels of one row of a plane, a multiple of 8
  std::int16_t waypoints, icons, routes, waypoints_per_route;
  std::uint8_t trails, symbols;
  std::uint16_t rotate_angle;
  std::int16_t trail_capacity;  // points of a trail; those in its memory may have one more
};
[[nodiscard]] std::span<const LowranceUnit> lowrance_units();
// In any letter case; nullptr for a name that is none.
[[nodiscard]] const LowranceUnit* find_lowrance_unit(std::string_view name);

struct LowranceOptions {
  std::string unit = "GlobalMap 100";
  // Bits per second on the wire, both ways; then the unit hears nothing that is sent to it at another speed. 0 takes no
  // time, and any speed is heard.
  int baud = 0;
  bool echo = false;   // whatever it hears comes back, as from an adapter that loops
  bool noise = false;  // meaningless bytes before every answer
  std::vector<Fault> faults;
};

// Why a unit cannot be made like this; empty when it can.
[[nodiscard]] std::string lowrance_options_problem(const LowranceOptions& options);

}  // namespace simulators
