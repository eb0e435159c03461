#include "formats/csv_columns.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/encoding.h"
#include "base/text.h"
#include "formats/iso_time.h"
#include "formats/writable_items.h"
#include "geodesy/position_parser.h"
#include "store/symbols.h"

namespace formats {
namespace {

// A date, with or without the time of day behind it: "2002-06-01T12:00:00Z", "2002/06/01 12:00:00", "01.06.2002". Those
// that may have the month or the day first are not guessed at.
std::optional<store::GarminTime> parse_time(std::string_view text) {
  constexpr std::size_t kDateSize = 10;
  std::string date(text.substr(0, kDateSize));
  std::string_view clock = text.substr(std::min(kDateSize, text.size()));
  if (date.size() == kDateSize && date[2] == '.' && date[5] == '.')
    date = date.substr(6) + '-' + date.substr(3, 2) + '-' + date.substr(0, 2);
  std::replace(date.begin(), date.end(), '/', '-');
  return parse_iso_time(date + (clock.empty() ? "T00:00:00" : std::string(clock)));
}

// Decimal degrees, or whatever else people write, but for the letters of the other axis.
std::optional<double> parse_angle(std::string_view cell, std::string_view wrong_letters) {
  constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  if (const std::optional<double> degrees = csv_number(cell)) return degrees;
  // The letter of the hemisphere, or its word, stands first or last.
  const std::string_view first = cell.substr(0, cell.find_first_not_of(kLetters));
  const std::string_view word = first.empty() ? cell.substr(cell.find_last_not_of(kLetters) + 1) : first;
  if (!word.empty() && wrong_letters.find(word[0]) != std::string_view::npos) return std::nullopt;
  return geodesy::parse_angle(cell);
}

std::optional<geodesy::Position> parse_position(std::string_view latitude, std::string_view longitude) {
  const std::optional<double> y = parse_angle(latitude, "EWew");
  const std::optional<double> x = parse_angle(longitude, "NSns");
  if (!y || !x || !is_on_globe({*y, *x})) return std::nullopt;
  return geodesy::Position{*y, *x};
}

// In a file that has commas between its fields, the comma of "1,204" may stand before thousands or before decimals.
std::optional<double> parse_altitude(std::string_view text, char separator) {
  constexpr std::size_t kThousandsGroup = 4;  // with its comma
  const std::size_t comma = text.rfind(',');
  if (separator == ',' && comma != std::string_view::npos && text.size() - comma == kThousandsGroup)
    return std::nullopt;
  const std::optional<double> metres = csv_number(text);
  return metres && std::abs(*metres) < 1e6 ? metres : std::nullopt;
}

}  // namespace

constexpr std::array<CsvColumns::HeaderName, 25> CsvColumns::kHeaderNames{{
    {"name", kName},         {"lat", kLatitude},  {"latitude", kLatitude},   {"lon", kLongitude},
    {"long", kLongitude},    {"lng", kLongitude}, {"longitude", kLongitude}, {"alt", kAltitude},
    {"altitude", kAltitude}, {"ele", kAltitude},  {"elevation", kAltitude},  {"date", kDate},
    {"time", kTime},         {"datetime", kTime}, {"timestamp", kTime},      {"comment", kComment},
    {"comments", kComment},  {"cmt", kComment},   {"desc", kComment},        {"description", kComment},
    {"notes", kComment},     {"sym", kSymbol},    {"symbol", kSymbol},       {"icon", kSymbol},
    {"waypoint", kName},
}};

std::optional<CsvColumns> CsvColumns::of_header(const CsvFields& header) {
  CsvColumns columns;
  for (std::size_t place = 0; place < header.size(); ++place)
    for (const HeaderName& known : kHeaderNames)
      if (base::equal_ignoring_case(base::trim_blanks(header[place]), known.name) && !columns.places_[known.column])
        columns.places_[known.column] = place;
  if (!columns.places_[kLatitude] || !columns.places_[kLongitude]) return std::nullopt;
  return columns;
}

std::string_view CsvColumns::field(const CsvFields& fields, Column column) const {
  const std::optional<std::size_t> place = places_[column];
  return place && *place < fields.size() ? base::trim_blanks(fields[*place]) : std::string_view();
}

bool CsvColumns::read_row(const CsvFields& fields, char separator, store::ItemRecord& item, LeftOut& left_out) const {
  const std::optional<geodesy::Position> position = parse_position(field(fields, kLatitude), field(fields, kLongitude));
  if (!position) return false;
  item.position = *position;
  item.ident = base::latin1_from_utf8(field(fields, kName));
  item.comment = base::latin1_from_utf8(field(fields, kComment));
  item.symbol = store::symbol_of_gpx_name(field(fields, kSymbol)).value_or(store::kDotSymbol);
  item.display_mode = 5;
  if (const std::string_view altitude = field(fields, kAltitude); !altitude.empty()) {
    const std::optional<double> metres = parse_altitude(altitude, separator);
    if (metres) item.altitude = static_cast<float>(*metres);
    left_out.altitudes += metres ? 0 : 1;
  }
  const std::string time = std::string(field(fields, kDate)) + ' ' + std::string(field(fields, kTime));
  if (base::trim_blanks(time).empty()) return true;
  const std::optional<store::GarminTime> parsed = parse_time(base::trim_blanks(time));
  if (!parsed) ++left_out.times;
  item.time = parsed.value_or(store::GarminTime{});
  return true;
}

}  // namespace formats
