#include "geodesy/datum_shift.h"

#include <cmath>
#include <string>

#include "base/text.h"
#include "geodesy/angle.h"

namespace geodesy {
namespace {

constexpr Ellipsoid kWgs84;

}  // namespace

DatumShift::DatumShift(const DatumTable& table, base::FrontEnd& front_end) : table_(table), front_end_(front_end) {
  set_datum_shift("WGS-84", "WGS-84");
}

void DatumShift::find_datum(Which which, std::string_view name) {
  DatumEntry datum;  // all zero: WGS-84
  // Deliberate : in exactly this spelling WGS-84 is itself, whatever a user's row of that name says.
  if (name != "WGS-84") {
    if (const DatumEntry* const row = table_.find(name)) {
      datum = *row;
    } else {
      front_end_.message_box("find_datum",
                             base::format_text("Error: %s datum '%s' not found.  Defaulting to WGS-84",
                                               which == Which::From ? "'from'" : "'to'", std::string(name).c_str()));
    }
  }
  (which == Which::From ? from_ : to_) = {{kWgs84.a - datum.da, kWgs84.f - datum.df * 0.0001},
                                          static_cast<double>(datum.dx),
                                          static_cast<double>(datum.dy),
                                          static_cast<double>(datum.dz)};
}

void DatumShift::set_datum_shift(std::string_view from, std::string_view to) {
  find_datum(Which::From, from);
  find_datum(Which::To, to);
  same_names_ = from == to;
  // Deliberate : the sum form f(f + 2), not 2f - f*f; positions in existing files were shifted with it.
  e2_ = from_.ellipsoid.f * (from_.ellipsoid.f + 2.0);
  delta_a_ = to_.ellipsoid.a - from_.ellipsoid.a;
  delta_f_ = to_.ellipsoid.f - from_.ellipsoid.f;
  delta_x_ = from_.dx - to_.dx;
  delta_y_ = from_.dy - to_.dy;
  delta_z_ = from_.dz - to_.dz;
}

// Standard Molodensky, DMA TR 8350.2, with h = 0.
Position DatumShift::molodensky_shift(const Position& source) const {
  const auto [a, f] = from_.ellipsoid;
  const double phi = source.latitude * kRadiansPerDegree;
  const double lambda = source.longitude * kRadiansPerDegree;
  const double sin_phi = std::sin(phi);
  const double cos_phi = std::cos(phi);
  const double sin_lambda = std::sin(lambda);
  const double cos_lambda = std::cos(lambda);
  const double w = 1.0 - e2_ * sin_phi * sin_phi;
  const double root_w = std::sqrt(w);
  const double rn = a / root_w;                      // prime-vertical radius
  const double rm = a * (1.0 - e2_) / (w * root_w);  // meridian radius
  const double delta_lambda = (delta_y_ * cos_lambda - delta_x_ * sin_lambda) / (rn * cos_phi);
  const double delta_phi =
      (delta_z_ * cos_phi - (delta_x_ * cos_lambda + delta_y_ * sin_lambda) * sin_phi +
       delta_a_ * e2_ * rn * sin_phi * cos_phi / a + delta_f_ * (rn * (1.0 - f) + rm / (1.0 - f)) * sin_phi * cos_phi) /
      rm;
  return {(phi + delta_phi) * kDegreesPerRadian, (lambda + delta_lambda) * kDegreesPerRadian};
}

Position DatumShift::convert(const Position& position) const {
  return same_names_ ? position : molodensky_shift(position);
}

Position DatumShift::convert_position_datum(std::string_view from, std::string_view to, const Position& position) {
  set_datum_shift(from, to);
  return convert(position);
}

}  // namespace geodesy
