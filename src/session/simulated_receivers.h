// Fills a simulated receiver with what the stores hold.
#pragma once

#include "simulators/simulated_data.h"
#include "store/item_store.h"
#include "store/settings.h"

namespace session {

// Every waypoint, route, track and proximity waypoint that is in use, and the almanac; points before the first named
// track log make tracks of their own, a segment each staying a segment. The settings say which of the large symbols the
// symbols of the small set are.
[[nodiscard]] simulators::SimulatedData simulated_data(const store::ItemStore& items, const store::Settings& settings);

}  // namespace session
