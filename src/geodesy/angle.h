// Degrees and radians, by the two factors that all results here rest on.
#pragma once

namespace geodesy {

inline constexpr double kRadiansPerDegree = 0.017453292519943295;
inline constexpr double kDegreesPerRadian = 57.29577951308232;

}  // namespace geodesy
