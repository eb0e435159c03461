// A prepared shift between two datums (the standard Molodensky formula with heights taken as zero): prepared
// once, applied to many points.
#pragma once

#include <string_view>

#include "base/front_end.h"
#include "geodesy/datum_table.h"
#include "geodesy/position.h"
#include "geodesy/utm.h"

namespace geodesy {

class DatumShift {
 public:
  // Both must outlive the shift. Unprepared, it is the shift from WGS-84 to WGS-84.
  DatumShift(const DatumTable& table, base::FrontEnd& front_end);

  // A name that is in neither table is reported in a message box on every preparation, and WGS-84 used in its place.
  void set_datum_shift(std::string_view from, std::string_view to);
  // Degrees; the result is neither wrapped nor clamped, and undefined at the poles.
  [[nodiscard]] Position molodensky_shift(const Position& source) const;
  // Prepares and shifts; equal names (letter case counts) leave the position exactly as it is.
  [[nodiscard]] Position convert_position_datum(std::string_view from, std::string_view to, const Position& position);
  // As convert_position_datum with the names of the latest preparation, without preparing again.
  [[nodiscard]] Position convert(const Position& position) const;

  // The ellipsoid of the datum last prepared to convert into: UTM texts are computed on it.
  [[nodiscard]] const Ellipsoid& projection_ellipsoid() const { return to_.ellipsoid; }
  // The ellipsoid of the datum last prepared to convert from: UTM texts of a file are inverted on it.
  [[nodiscard]] const Ellipsoid& source_ellipsoid() const { return from_.ellipsoid; }

 private:
  enum class Which { From, To };
  struct Side {
    Ellipsoid ellipsoid;
    double dx = 0;  // metres, from this datum to WGS-84
    double dy = 0;
    double dz = 0;
  };

  void find_datum(Which which, std::string_view name);

  const DatumTable& table_;
  base::FrontEnd& front_end_;
  Side from_;
  Side to_;
  bool same_names_ = true;
  // Of the prepared pair.
  double e2_ = 0;
  double delta_a_ = 0;
  double delta_f_ = 0;
  double delta_x_ = 0;
  double delta_y_ = 0;
  double delta_z_ = 0;
};

}  // namespace geodesy
