// What the profile's picture shows, in the units of the settings, and its texts.
#pragma once

#include <string>
#include <vector>

#include "ui/map/profile.h"

namespace ui::map {

enum class Against { Distance, Time };

struct Axis {
  double first = 0, last = 1, step = 1;
  [[nodiscard]] std::vector<double> ticks() const;
};
// Round numbers round all from `least` to `most`, at most about `count` steps.
[[nodiscard]] Axis axis_round(double least, double most, int count);

// One curve: runs of points without gaps, x in units of the axis below.
struct CurvePoint {
  double x = 0, y = 0;
};
using Curve = std::vector<std::vector<CurvePoint>>;
// No more points than a drawing of so many columns can show: of each column the first and last, least and greatest.
[[nodiscard]] std::vector<CurvePoint> thinned(const std::vector<CurvePoint>& run, const Axis& axis, int columns);

class ProfilePlot {
 public:
  ProfilePlot() = default;
  ProfilePlot(const session::Session& session, Profile profile, Against against);

  [[nodiscard]] const Profile& profile() const { return profile_; }
  [[nodiscard]] Against against() const { return against_; }
  [[nodiscard]] const Curve& heights() const { return heights_; }
  [[nodiscard]] const Curve& speeds() const { return speeds_; }
  // The axis below goes as far as the track; the others have round ends.
  [[nodiscard]] Axis way_axis(int count) const;
  [[nodiscard]] Axis height_axis(int count) const;
  [[nodiscard]] Axis speed_axis(int count) const;
  // "12.5" or, of times, "0:15:00".
  [[nodiscard]] std::string way_label(double x) const;
  [[nodiscard]] std::string way_title() const;     // "Distance (km)"
  [[nodiscard]] std::string height_title() const;  // "Altitude (m)"
  [[nodiscard]] std::string speed_title() const;   // "Speed (km/h)"

  // What is missing, as a sentence; empty when there is something to draw.
  [[nodiscard]] std::string complaint() const;
  // Length, duration, moving average; on a second line lowest and highest, climb and descent.
  [[nodiscard]] std::string figures() const;

  // Of a point, for the pointer. Nothing when the point has no place on the axis below.
  [[nodiscard]] std::optional<double> x_of(const ProfilePoint& point) const;
  // The point nearest to x; nullptr when there is none.
  [[nodiscard]] const ProfilePoint* point_at(double x) const;
  [[nodiscard]] std::string text_of(const ProfilePoint& point) const;

 private:
  [[nodiscard]] std::string height_text(double metres) const;
  [[nodiscard]] std::string speed_text(double metres_per_second) const;

  Profile profile_;
  Against against_ = Against::Distance;
  geodesy::DistanceUnit distances_ = geodesy::DistanceUnit::Kilometres;
  bool in_feet_ = false;
  double height_factor_ = 1, speed_factor_ = 1;
  std::string_view speed_unit_;
  Curve heights_, speeds_;
  double greatest_x_ = 0, least_x_ = 0;
  double greatest_speed_ = 0;  // in the unit
};

}  // namespace ui::map
