// What a simulated receiver holds when it is given nothing else.
#pragma once

#include "simulators/simulated_data.h"

namespace simulators {

// A weekend at a lake, a day on the fells and a day in a canoe: 30 waypoints, 3 routes made of them, 2 tracks
// of 500 points, 3 proximity waypoints and the almanac of 28 satellites; the same at every call. Idents have at most 6
// characters, comments and names only the letters that every receiver shows.
[[nodiscard]] SimulatedData believable_weekend();

}  // namespace simulators
