#include "lowrance/mercator.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace lowrance {
namespace {

constexpr double kRadius = 6356752.3142;  // metres: the polar radius of WGS-84
constexpr double kPerRadius = 1.5731303511168036e-7;
constexpr double kMetresPerDegree = 110946.25761655909;  // along the equator
constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr double kAlmostWhole = 1e-6;  // metres

std::int32_t whole_metres(double metres) {
  if (std::isnan(metres)) return 0;
  const double nearest = std::round(metres);
  const double whole = std::abs(metres - nearest) <= kAlmostWhole ? nearest : std::trunc(metres);
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp<double>(whole, Limits::min(), Limits::max()));
}

}  // namespace

std::int32_t latitude_to_y(double latitude) {
  constexpr double kBeyondAll = std::numeric_limits<double>::infinity();
  if (std::abs(latitude) >= 90) return whole_metres(std::copysign(kBeyondAll, latitude));
  const double radians = latitude / kDegreesPerRadian;
  return whole_metres(kRadius * std::log(std::tan((radians + std::numbers::pi / 2) / 2)));
}

std::int32_t longitude_to_x(double longitude) { return whole_metres(longitude * kMetresPerDegree); }

// In more digits than the result has: functions of different systems differ in their last bit, positions must not.
double y_to_latitude(std::int32_t y) {
  const long double half = std::atan(std::exp(static_cast<long double>(y) * kPerRadius));
  return static_cast<double>((2 * half - std::numbers::pi_v<long double> / 2) * kDegreesPerRadian);
}

double x_to_longitude(std::int32_t x) { return x * kPerRadius * kDegreesPerRadian; }

bool is_on_grid(const geodesy::Position& position) {
  return std::abs(position.latitude) <= 89.99 && std::abs(position.longitude) <= 180;
}

GridPoint to_grid(const geodesy::Position& position) {
  return {latitude_to_y(position.latitude), longitude_to_x(position.longitude)};
}

std::optional<geodesy::Position> from_grid(const GridPoint& point) {
  const geodesy::Position position{y_to_latitude(point.y), x_to_longitude(point.x)};
  if (std::abs(position.longitude) > 180) return std::nullopt;
  return position;
}

}  // namespace lowrance
