#include "textfile/position_columns.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/text.h"
#include "textfile/text_layout.h"

namespace textfile {
namespace {

using geodesy::Notation;
using geodesy::Position;

constexpr char kDegreeSign = '\xB0';
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

struct AngleColumns {
  char positive;
  char negative;
  double largest;
};
constexpr AngleColumns kLatitude{'N', 'S', kLargestLatitude};
constexpr AngleColumns kLongitude{'E', 'W', kLargestLongitude};

// Texts are printed without a carry, so one at the edge of a degree or minute needs the value on its own side
// of that edge: otherwise "12 34 00.00" would print as "12 33 60.00" again. A few last bits decide it.
double on_its_side(double value, double degrees, double minutes, bool with_seconds) {
  for (int step = 0; step < 8; ++step) {
    const double whole = std::floor(value);
    const double whole_minutes = with_seconds ? std::floor((value - whole) * 60.0) : minutes;
    if (whole == degrees && whole_minutes == minutes) break;
    const bool below = whole < degrees || (whole == degrees && whole_minutes < minutes);
    value = std::nextafter(value, below ? 1000.0 : -1000.0);
  }
  return value;
}

// A hemisphere letter and degrees, degrees and minutes, or degrees, minutes and seconds.
std::optional<double> read_angle(std::string_view text, const AngleColumns& columns, std::size_t parts) {
  if (text[0] != columns.positive && text[0] != columns.negative) return std::nullopt;
  std::array<double, 3> number{};
  const char* at = text.data() + 1;
  const char* const end = text.data() + text.size();
  const auto skip_blanks = [&] { at = std::find_if(at, end, [](char c) { return c != ' ' && c != kDegreeSign; }); };
  for (std::size_t i = 0; i < parts; ++i) {
    skip_blanks();
    if (at == end || !is_digit(*at)) return std::nullopt;
    const auto [next, error] = std::from_chars(at, end, number[i], std::chars_format::fixed);
    if (error != std::errc()) return std::nullopt;
    at = next;
    if (i > 0 && number[i] > 60) return std::nullopt;
    if (i + 1 < parts && number[i] != std::floor(number[i])) return std::nullopt;
  }
  skip_blanks();
  if (at != end) return std::nullopt;
  double value = number[0] + (number[1] + number[2] / 60.0) / 60.0;
  if (value > columns.largest) return std::nullopt;
  if (parts > 1) value = on_its_side(value, number[0], number[1], parts == 3);
  if (text[0] == columns.positive) return value;
  // A southern or western zero keeps its letter.
  return value == 0 ? -std::numeric_limits<double>::min() : -value;
}

std::optional<Position> read_degrees(std::string_view text, Notation notation) {
  const std::size_t parts = notation == Notation::Dms ? 3 : notation == Notation::Dmm ? 2 : 1;
  const std::size_t latitude_width = notation == Notation::Dms ? 12 : 11;
  const std::optional<double> latitude = read_angle(text.substr(0, latitude_width), kLatitude, parts);
  if (!latitude || text[latitude_width] != ' ') return std::nullopt;
  const std::optional<double> longitude = read_angle(text.substr(latitude_width + 1), kLongitude, parts);
  if (!longitude) return std::nullopt;
  return Position{*latitude, *longitude};
}

constexpr std::string_view kBandLetters = "CDEFGHJKLMNPQRSTUVWXY";

constexpr double kUtmSouthEnd = -80, kUtmNorthEnd = 84;  // both belong to UTM, beyond them is UPS

// Degrees: on the other side of an edge, and yet no tenth of a metre. Not the next number: beside 0 that would be
// lost in the projection.
constexpr double kBeside = 1e-11;

// Rounded to tenths of a metre, a position may lie just outside the zone or band that the text names, and
// would print as the next one. Only that much is put right. `low` is inside, `high` is not.
double put_inside(double value, double low, double high) {
  constexpr double kRounding = 5e-6;  // degrees: 5 cm in longitude at 84 degrees of latitude
  if (value < low && value > low - kRounding) return low;
  if (value >= high && value < high + kRounding) return high - kBeside;
  return value;
}

void put_inside_zone(Position& position, int zone, std::size_t band) {
  const double south = kUtmSouthEnd + 8.0 * static_cast<double>(band);
  const double north = std::min(south + 8, kUtmNorthEnd);
  position.latitude = put_inside(position.latitude, south, north);
  position.longitude = put_inside(position.longitude, zone * 6.0 - 186, zone * 6.0 - 180);
}

void put_inside_polar_cap(Position& position, char letter) {
  position.latitude = letter < 'N' ? put_inside(position.latitude, -90, kUtmSouthEnd)
                                   : put_inside(position.latitude, kUtmNorthEnd + kBeside, 91);
  // The meridians of 0 and 180, and the pole, are of the west too when the letter says so.
  const bool west = letter == 'A' || letter == 'Y';
  if (west && position.longitude == 0) position.longitude = -kBeside;
  if (west && position.longitude == 180) position.longitude = -180;
}

// Zone and band ("14S", at the poles "00Y"), easting and northing in metres.
std::optional<Position> read_utm(std::string_view text, const geodesy::Ellipsoid& ellipsoid) {
  if (!is_digit(text[0]) || !is_digit(text[1]) || text[3] != ' ' || text[13] != ' ') return std::nullopt;
  const int zone = (text[0] - '0') * 10 + (text[1] - '0');
  const char letter = text[2];
  const bool polar = zone == 0;
  const std::size_t band = kBandLetters.find(letter);
  if (polar ? std::string_view("ABYZ").find(letter) == std::string_view::npos
            : zone > 61 || band == std::string_view::npos)
    return std::nullopt;
  const std::optional<double> easting = base::parse_number(base::trim_blanks(text.substr(4, 9)));
  const std::optional<double> northing = base::parse_number(base::trim_blanks(text.substr(14, 10)));
  if (!easting || *easting < 0 || *easting > (polar ? 4e6 : 1e6)) return std::nullopt;
  if (!northing || *northing < 0 || *northing > (polar ? 4e6 : 2e7)) return std::nullopt;
  Position position = geodesy::utm_to_latlon(zone, letter < 'N', *easting, *northing, ellipsoid);
  if (polar) {
    put_inside_polar_cap(position, letter);
  } else {
    put_inside_zone(position, zone, band);
  }
  return position;
}

bool is_on_earth(const Position& position) {
  return std::abs(position.latitude) <= kLargestLatitude && std::abs(position.longitude) <= kLargestLongitude;
}

}  // namespace

std::optional<Position> read_position(std::string_view line, std::size_t column, Notation notation,
                                      const geodesy::Ellipsoid& ellipsoid) {
  const std::size_t width = position_width(notation) - 1;
  if (line.size() < column + width) return std::nullopt;
  const std::string_view text = line.substr(column, width);
  const std::optional<Position> position =
      notation == Notation::Utm ? read_utm(text, ellipsoid) : read_degrees(text, notation);
  return position && is_on_earth(*position) ? position : std::nullopt;
}

std::optional<Position> shift_position(const geodesy::DatumShift& shift, const Position& position) {
  if (!is_on_earth(position)) return std::nullopt;
  Position shifted = shift.convert(position);
  // At a pole the formula divides by nothing; the longitude, which is any there, stays as it was.
  if (!(std::abs(shifted.longitude) <= kLargestLongitude)) shifted.longitude = position.longitude;
  return is_on_earth(shifted) ? std::optional(shifted) : std::nullopt;
}

}  // namespace textfile
