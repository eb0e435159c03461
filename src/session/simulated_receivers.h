// Fills a simulated receiver with what the stores hold.
#pragma once

#include "simulators/simulated_data.h"
#include "store/item_store.h"

namespace session {

// Every waypoint, route, track and proximity waypoint that is in use, and the almanac; points before the first named
// track log make tracks of their own, a segment each staying a segment.
[[nodiscard]] simulators::SimulatedData simulated_data(const store::ItemStore& items);

}  // namespace session
