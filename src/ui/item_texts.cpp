#include "ui/item_texts.h"

#include <array>
#include <cmath>
#include <numbers>

#include "base/text.h"

namespace ui {

ItemTexts::ItemTexts(const session::Session& session)
    : datum_(session.settings.externaldatum),
      notation_(session.settings.DMSMode),
      heights_(session.settings.VerticalValues),
      distances_(session.settings.DistValues),
      offset_seconds_(store::offset_seconds(session.time_offset_hours())),
      out_(session.datums, quiet_),
      in_(session.datums, quiet_) {
  out_.set_datum_shift("WGS-84", datum_);
  in_.set_datum_shift(datum_, "WGS-84");
}

geodesy::PositionTexts ItemTexts::position(const geodesy::Position& position) const {
  // Where the shift has no result, at the poles, the position is shown as it is.
  const geodesy::Position shifted = textfile::shift_position(out_, position).value_or(position);
  return geodesy::format_position(shifted, notation_, out_.projection_ellipsoid());
}

geodesy::ParsedPosition ItemTexts::parse_position(std::string_view text) const {
  geodesy::ParsedPosition parsed = geodesy::parse_position(text, in_.source_ellipsoid());
  if (parsed.position) parsed.position = textfile::shift_position(in_, *parsed.position).value_or(*parsed.position);
  return parsed;
}

std::string ItemTexts::time(store::GarminTime time, char kind) const {
  return time.seconds == 0 ? std::string() : store::format_date_text(time.seconds + offset_of(kind));
}

std::optional<store::GarminTime> ItemTexts::parse_time(std::string_view text, char kind) const {
  text = base::trim_blanks(text);
  if (text.empty()) return store::GarminTime{};
  const std::optional<std::int64_t> local = store::parse_date_text(text);
  if (!local) return std::nullopt;
  const std::int64_t seconds = *local - offset_of(kind);
  if (seconds <= 0 || seconds > 0xFFFFFFFF) return std::nullopt;
  return store::GarminTime{static_cast<std::uint32_t>(seconds)};
}

std::string ItemTexts::height(float metres) const {
  if (!store::is_known(metres)) return {};
  const double value = heights_ == store::VerticalUnit::Feet ? metres / geodesy::kMetresPerFoot : metres;
  return base::format_text("%.1f", value);
}

std::string_view ItemTexts::height_unit() const { return heights_ == store::VerticalUnit::Feet ? "ft" : "m"; }

std::optional<float> ItemTexts::parse_height(std::string_view text) const {
  text = base::trim_blanks(text);
  if (text.empty()) return store::kNotKnown;
  const std::optional<double> value = base::parse_number(text);
  if (!value || !std::isfinite(*value)) return std::nullopt;
  const auto metres =
      static_cast<float>(heights_ == store::VerticalUnit::Feet ? *value * geodesy::kMetresPerFoot : *value);
  return store::is_known(metres) ? std::optional(metres) : std::nullopt;
}

std::string ItemTexts::distance(double metres) const {
  const std::string unit(distance_unit());
  return base::format_text("%.3f %s", metres / geodesy::metres_per(distances_), unit.c_str());
}

std::string_view ItemTexts::distance_unit() const { return geodesy::unit_name(distances_); }

std::optional<double> ItemTexts::parse_distance(std::string_view text) const {
  const std::optional<double> value = base::parse_number(base::trim_blanks(text));
  if (!value || !std::isfinite(*value) || *value < 0) return std::nullopt;
  return *value * geodesy::metres_per(distances_);
}

std::string symbol_name(int code) {
  const store::SymbolRow* row = store::find_symbol(static_cast<std::int16_t>(code));
  return row == nullptr || row->gpx_name.empty() ? base::format_text("Symbol %d", code) : std::string(row->gpx_name);
}

std::optional<geodesy::Position> reference_position(const store::Settings& settings) {
  if (!settings.RefRecord) return std::nullopt;
  return geodesy::Position{settings.RefRecord->latitude, settings.RefRecord->longitude};
}

double initial_bearing(const geodesy::Position& from, const geodesy::Position& to) {
  constexpr double kRadians = std::numbers::pi / 180;
  const double latitude1 = from.latitude * kRadians, latitude2 = to.latitude * kRadians;
  const double east = (to.longitude - from.longitude) * kRadians;
  const double y = std::sin(east) * std::cos(latitude2);
  const double x =
      std::cos(latitude1) * std::sin(latitude2) - std::sin(latitude1) * std::cos(latitude2) * std::cos(east);
  const double degrees = std::atan2(y, x) / kRadians;
  return degrees < 0 ? std::fmod(degrees + 360, 360) : degrees;
}

}  // namespace ui
