// Fills a simulated Lowrance/Eagle unit with what the stores hold.
#pragma once

#include <string>

#include "simulators/lowrance_data.h"
#include "simulators/lowrance_options.h"
#include "store/item_store.h"
#include "store/settings.h"

namespace session {

// Every waypoint, route and event that is in use, and each segment of the tracks as a trail. Routes keep their numbers,
// and a route point that no waypoint stands for becomes one behind the others.
[[nodiscard]] simulators::LowranceData lowrance_data(const store::ItemStore& items, const store::Settings& settings,
                                                     const simulators::LowranceUnit& unit);

// What of the data and of the stores the unit has no room for, such as "50 waypoints, 3 routes"; empty for nothing.
[[nodiscard]] std::string not_loaded(const simulators::LowranceData& data, const store::ItemStore& items,
                                     const simulators::LowranceUnit& unit);

}  // namespace session
