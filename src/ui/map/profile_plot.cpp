#include "ui/map/profile_plot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/text.h"
#include "ui/item_texts.h"
#include "ui/map/graticule.h"

namespace ui::map {
namespace {

struct SpeedUnit {
  geodesy::DistanceUnit distances;  // where these are chosen
  std::string_view name;
  geodesy::DistanceUnit way;  // in an hour
};
// Nobody counts an hour's way in feet or metres.
constexpr std::array kSpeedUnits{
    SpeedUnit{geodesy::DistanceUnit::StatuteMiles, "mph", geodesy::DistanceUnit::StatuteMiles},
    SpeedUnit{geodesy::DistanceUnit::NauticalMiles, "kn", geodesy::DistanceUnit::NauticalMiles},
    SpeedUnit{geodesy::DistanceUnit::Kilometres, "km/h", geodesy::DistanceUnit::Kilometres},
    SpeedUnit{geodesy::DistanceUnit::Feet, "mph", geodesy::DistanceUnit::StatuteMiles},
    SpeedUnit{geodesy::DistanceUnit::Metres, "km/h", geodesy::DistanceUnit::Kilometres}};

// Runs of points that have a value; the others are gaps.
class CurveBuilder {
 public:
  void add(std::optional<double> x, std::optional<double> y) {
    if (!x || !y) {
      continues_ = false;
      return;
    }
    if (!std::exchange(continues_, true)) curve_.emplace_back();
    curve_.back().push_back({*x, *y});
  }
  Curve take() { return std::move(curve_); }

 private:
  Curve curve_;
  bool continues_ = false;
};

std::optional<double> scaled(std::optional<double> value, double factor) {
  if (value) *value *= factor;
  return value;
}

}  // namespace

std::vector<double> Axis::ticks() const {
  std::vector<double> values;
  for (double i = std::ceil(first / step - 1e-9); i * step <= last + step * 1e-9; ++i)
    values.push_back(i * step + 0.0);  // never -0
  return values;
}

Axis axis_round(double least, double most, int count) {
  const double step = round_step(std::max(most - least, 1e-6) / std::max(count, 1));
  Axis axis{std::floor(least / step + 1e-9) * step, std::ceil(most / step - 1e-9) * step, step};
  if (axis.last <= axis.first) axis.last = axis.first + step;
  return axis;
}

std::vector<CurvePoint> thinned(const std::vector<CurvePoint>& run, const Axis& axis, int columns) {
  const auto column_of = [&](const CurvePoint& point) {
    return std::floor((point.x - axis.first) / (axis.last - axis.first) * columns);
  };
  std::vector<CurvePoint> points;
  for (auto begin = run.begin(); begin != run.end();) {
    const auto end =
        std::find_if(begin, run.end(), [&](const CurvePoint& p) { return column_of(p) != column_of(*begin); });
    const auto [least, greatest] = std::ranges::minmax_element(begin, end, {}, &CurvePoint::y);
    std::array chosen{begin, least, greatest, end - 1};
    std::ranges::sort(chosen);
    const auto [rest, last] = std::ranges::unique(chosen);
    for (auto place = chosen.begin(); place != rest; ++place) points.push_back(**place);
    begin = end;
  }
  return points;
}

ProfilePlot::ProfilePlot(const session::Session& session, Profile profile, Against against)
    : profile_(std::move(profile)), against_(against), distances_(session.settings.DistValues) {
  in_feet_ = session.settings.VerticalValues == store::VerticalUnit::Feet;
  height_factor_ = in_feet_ ? 1 / geodesy::kMetresPerFoot : 1;
  const auto* unit = std::ranges::find(kSpeedUnits, distances_, &SpeedUnit::distances);
  if (unit == kSpeedUnits.end()) unit = &kSpeedUnits.back();
  speed_unit_ = unit->name;
  speed_factor_ = 3600 / geodesy::metres_per(unit->way);
  CurveBuilder heights, speeds;
  for (const ProfilePoint& point : profile_.points) {
    const std::optional<double> x = x_of(point), speed = scaled(point.speed, speed_factor_);
    heights.add(x, scaled(point.height, height_factor_));
    speeds.add(x, speed);
    greatest_x_ = std::max(greatest_x_, x.value_or(0));
    least_x_ = std::min(least_x_, x.value_or(0));
    greatest_speed_ = std::max(greatest_speed_, speed.value_or(0));
  }
  heights_ = heights.take();
  speeds_ = speeds.take();
}

Axis ProfilePlot::way_axis(int count) const {
  const double range = std::max(greatest_x_ - least_x_, 1e-6);
  const double least = range / std::max(count, 1);
  return {least_x_, least_x_ + range, against_ == Against::Time ? round_time_step(least) : round_step(least)};
}

Axis ProfilePlot::height_axis(int count) const {
  double least = profile_.lowest.value_or(0) * height_factor_, most = profile_.highest.value_or(0) * height_factor_;
  // Flat land shall not look like mountains.
  constexpr double kLeastRange = 20;
  if (const double missing = kLeastRange - (most - least); missing > 0) {
    least -= missing / 2;
    most += missing / 2;
  }
  return axis_round(least, most, count);
}

Axis ProfilePlot::speed_axis(int count) const { return axis_round(0, std::max(greatest_speed_, 1.0), count); }

std::string ProfilePlot::way_label(double x) const {
  return against_ == Against::Time ? clock_text(x) : base::format_text("%.6g", x);
}

std::string ProfilePlot::way_title() const {
  if (against_ == Against::Time) return "Time";
  return "Distance (" + std::string(geodesy::unit_name(distances_)) + ")";
}

std::string ProfilePlot::height_title() const { return in_feet_ ? "Altitude (ft)" : "Altitude (m)"; }
std::string ProfilePlot::speed_title() const { return "Speed (" + std::string(speed_unit_) + ")"; }

std::string ProfilePlot::complaint() const {
  if (profile_.points.empty()) return "No track is loaded, or all of its points are deleted";
  if (profile_.points.size() == 1) return "This track has only one point";
  if (against_ == Against::Time && !profile_.has_times()) return "This track has no times";
  if (heights_.empty() && speeds_.empty()) {
    if (!profile_.has_heights() && !profile_.has_times()) return "This track has no altitudes and no times";
    return "Nothing of this track can be drawn: altitudes and times are not at the same points";
  }
  return {};
}

std::string ProfilePlot::figures() const {
  const std::string unit(geodesy::unit_name(distances_));
  std::string text =
      base::format_text("Length: %.2f %s", profile_.length / geodesy::metres_per(distances_), unit.c_str());
  if (profile_.duration) text += "    Duration: " + clock_text(*profile_.duration);
  if (profile_.moving_speed) text += "    Average, moving: " + speed_text(*profile_.moving_speed);
  if (profile_.has_heights())
    text += "\nAltitude: " + height_text(*profile_.lowest) + " to " + height_text(*profile_.highest) +
            "    Climb: " + height_text(profile_.climb) + "    Descent: " + height_text(profile_.descent);
  return text;
}

std::optional<double> ProfilePlot::x_of(const ProfilePoint& point) const {
  return against_ == Against::Time ? point.seconds : point.distance / geodesy::metres_per(distances_);
}

const ProfilePoint* ProfilePlot::point_at(double x) const {
  const ProfilePoint* nearest = nullptr;
  double least = 0;
  for (const ProfilePoint& point : profile_.points) {
    const std::optional<double> place = x_of(point);
    if (!place || (nearest != nullptr && std::abs(*place - x) >= least)) continue;
    nearest = &point;
    least = std::abs(*place - x);
  }
  return nearest;
}

std::string ProfilePlot::text_of(const ProfilePoint& point) const {
  const std::string unit(geodesy::unit_name(distances_));
  std::string text = base::format_text("%.3f %s", point.distance / geodesy::metres_per(distances_), unit.c_str());
  if (point.seconds) text += (*point.seconds < 0 ? ", -" : ", ") + clock_text(std::abs(*point.seconds));
  if (point.height) text += ", " + height_text(*point.height);
  if (point.speed) text += ", " + speed_text(*point.speed);
  return text;
}

std::string ProfilePlot::height_text(double metres) const {
  return base::format_text("%.0f %s", metres * height_factor_, in_feet_ ? "ft" : "m");
}

std::string ProfilePlot::speed_text(double metres_per_second) const {
  return base::format_text("%.1f ", metres_per_second * speed_factor_) + std::string(speed_unit_);
}

}  // namespace ui::map
