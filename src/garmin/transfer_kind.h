// What one download or upload moves.
#pragma once

namespace garmin {

// The numbers are the transfer kind codes of the commands. All is all but the almanac.
enum class Kind { All = 1, Tracks = 2, ProximityWaypoints = 3, Routes = 4, Waypoints = 5, Almanac = 11 };

}  // namespace garmin
