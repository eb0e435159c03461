#include "simulators/lowrance_options.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace simulators {

namespace {

constexpr int kFastestBaud = 1'000'000;

// Names and ids are the maker's. The numbers are not those of the real products, which differ from one another and are
// not all known: they are chosen so that together the rows cover what a unit can be. Units with a screen type below 2
// give their measures less 1, and the height is that of a row of the planes, whichever way up they are.
constexpr std::array kUnits = std::to_array<LowranceUnit>({
    {.name = "GlobalMap 100",
     .product_id = 14,
     .protocol_version = 1,
     .screen_type = 1,
     .screen_width = 103,
     .screen_height = 159,
     .row_length = 168,
     .waypoints = 750,
     .icons = 1000,
     .routes = 99,
     .waypoints_per_route = 99,
     .trails = 2,
     .symbols = 28,
     .rotate_angle = 90,
     .trail_capacity = 2000},
    {.name = "GlobalMap 12",
     .product_id = 10,
     .protocol_version = 1,
     .screen_type = 1,
     .screen_width = 99,
     .screen_height = 159,
     .row_length = 160,
     .waypoints = 250,
     .icons = 500,
     .routes = 99,
     .waypoints_per_route = 50,
     .trails = 4,
     .symbols = 28,
     .rotate_angle = 180,
     .trail_capacity = 3000},
    {.name = "AccuMap 12",
     .product_id = 12,
     .protocol_version = 2,
     .screen_type = 2,
     .screen_width = 240,
     .screen_height = 159,
     .row_length = 160,
     .waypoints = 250,
     .icons = 1000,
     .routes = 99,
     .waypoints_per_route = 99,
     .trails = 2,
     .symbols = 28,
     .rotate_angle = 270,
     .trail_capacity = 3000},
    {.name = "GlobalNav 212",
     .product_id = 9,
     .protocol_version = 1,
     .screen_type = 1,
     .screen_width = 159,
     .screen_height = 103,
     .row_length = 112,
     .waypoints = 250,
     .icons = 1000,
     .routes = 20,
     .waypoints_per_route = 99,
     .trails = 2,
     .symbols = 28,
     .rotate_angle = 0,
     .trail_capacity = 1000},
    {.name = "GlobalNav 310",
     .product_id = 4,
     .protocol_version = 1,
     .screen_type = 0,
     .screen_width = 127,
     .screen_height = 63,
     .row_length = 64,
     .waypoints = 250,
     .icons = 0,
     .routes = 20,
     .waypoints_per_route = 50,
     .trails = 1,
     .symbols = 15,
     .rotate_angle = 0,
     .trail_capacity = 500},
    {.name = "Eagle Explorer",
     .product_id = 6,
     .protocol_version = 0,
     .screen_type = 1,
     .screen_width = 159,
     .screen_height = 119,
     .row_length = 128,
     .waypoints = 250,
     .icons = 250,
     .routes = 20,
     .waypoints_per_route = 99,
     .trails = 2,
     .symbols = 15,
     .rotate_angle = 0,
     .trail_capacity = 3000},
    {.name = "GlobalMap Sport",
     .product_id = 1,
     .protocol_version = 0,
     .screen_type = 0,
     .screen_width = 159,
     .screen_height = 99,
     .row_length = 104,
     .waypoints = 250,
     .icons = 250,
     .routes = 20,
     .waypoints_per_route = 50,
     .trails = 2,
     .symbols = 15,
     .rotate_angle = 0,
     .trail_capacity = 500},
});

std::string unit_names() {
  std::string names;
  for (const LowranceUnit& unit : kUnits) names.append(names.empty() ? "" : ", ").append(unit.name);
  return names;
}

}  // namespace

std::span<const LowranceUnit> lowrance_units() { return kUnits; }

const LowranceUnit* find_lowrance_unit(std::string_view name) {
  const auto unit = std::ranges::find_if(
      kUnits, [&](const LowranceUnit& each) { return base::equal_ignoring_case(each.name, name); });
  return unit == kUnits.end() ? nullptr : &*unit;
}

std::string lowrance_options_problem(const LowranceOptions& options) {
  if (find_lowrance_unit(options.unit) == nullptr) {
    return "There is no simulated unit \"" + options.unit + "\"; there are " + unit_names();
  }
  if (options.baud < 0 || options.baud > kFastestBaud) {
    return base::format_text("A wire of %d bits per second cannot be simulated: 1 to %d, or 0 for no limit",
                             options.baud, kFastestBaud);
  }
  return {};
}

}  // namespace simulators
