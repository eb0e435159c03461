#include "formats/shifted_positions.h"

#include <cmath>

#include "formats/writable_items.h"

namespace formats {

std::string prepare_output_datum(const store::FileContext& context, const std::string& datum) {
  context.shift.set_datum_shift("WGS-84", datum);  // says when there is no such datum
  return context.datums.find(datum) == nullptr ? "WGS-84" : datum;
}

std::optional<geodesy::Position> shifted_position(const geodesy::DatumShift& shift, const geodesy::Position& position) {
  if (!is_on_globe(position)) return std::nullopt;
  geodesy::Position shifted = shift.convert(position);
  // At a pole the formula divides by nothing; the longitude, which is any there, stays as it was.
  if (!(std::abs(shifted.longitude) < 360)) shifted.longitude = position.longitude;
  if (shifted.longitude > 180) shifted.longitude -= 360;
  if (shifted.longitude < -180) shifted.longitude += 360;
  if (!(std::abs(shifted.latitude) <= 90)) shifted.latitude = std::copysign(90.0, position.latitude);
  return shifted;
}

}  // namespace formats
