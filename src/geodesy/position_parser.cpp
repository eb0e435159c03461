#include "geodesy/position_parser.h"

#include <array>
#include <cmath>
#include <span>
#include <utility>

#include "base/text.h"
#include "geodesy/position_tokens.h"

namespace geodesy {
namespace {

using Span = std::span<const Token>;

constexpr double kLatitudeLimit = 90.0;
constexpr double kLongitudeLimit = 180.0;
constexpr double kLongitudeSlack = 0.01;

// As written: nothing is known yet about ranges.
struct Angle {
  char letter = '\0';  // N, S, E, W
  char sign = '\0';    // +, -
  std::array<double, 3> parts{};
  std::size_t count = 0;
  bool seconds_by_letter = false;  // an 's' was taken as the mark of seconds
};

struct UtmText {
  double zone = 0;
  char letter = '\0';
  double easting = 0;
  double northing = 0;
};

// What a text says, or why it says nothing.
struct Reading {
  std::optional<UtmText> utm;
  std::optional<std::array<Angle, 2>> angles;
  std::string problem;
  [[nodiscard]] bool found() const { return utm.has_value() || angles.has_value(); }
};

class TokenReader {
 public:
  explicit TokenReader(Span tokens) : tokens_(tokens) {}

  // nullptr, and nothing taken, when another kind is next.
  const Token* take(TokenKind kind) {
    if (at_end() || tokens_[at_].kind != kind) return nullptr;
    return &tokens_[at_++];
  }
  // A letter standing alone, or NUL.
  char take_single_letter() {
    const char letter = at_end() ? '\0' : tokens_[at_].single_letter();
    if (letter != '\0') ++at_;
    return letter;
  }
  [[nodiscard]] bool at_end() const { return at_ == tokens_.size(); }

 private:
  Span tokens_;
  std::size_t at_ = 0;
};

// The first letter of N, S, north and so on; any other makes no angle.
bool take_hemisphere(TokenReader& reader, Angle& angle) {
  const Token* const token = reader.take(TokenKind::Letter);
  if (token == nullptr) return true;
  if (angle.letter != '\0') return false;
  angle.letter = static_cast<char>(token->text[0] & ~('a' - 'A'));
  return std::string_view("NSEW").find(angle.letter) != std::string_view::npos;
}

// [letter] [sign] degrees [mark] [minutes [mark] [seconds [mark]]] [letter], all the tokens and no more.
std::optional<Angle> read_angle(Span tokens) {
  constexpr std::array kMarks{TokenKind::DegreeMark, TokenKind::MinuteMark, TokenKind::SecondMark};
  TokenReader reader(tokens);
  Angle angle;
  if (!take_hemisphere(reader, angle)) return std::nullopt;
  if (const Token* const sign = reader.take(TokenKind::Sign)) angle.sign = sign->text == "+" ? '+' : '-';
  bool must_go_on = false;
  bool may_go_on = true;
  while (may_go_on && angle.count < angle.parts.size()) {
    const Token* const number = reader.take(TokenKind::Number);
    if (number == nullptr) break;
    const Token* const mark = reader.take(kMarks[angle.count]);
    angle.seconds_by_letter = mark != nullptr && angle.count == 2 && mark->single_letter() == 'S';
    angle.parts[angle.count++] = number->value;
    may_go_on = !number->has_decimals;
    must_go_on = mark == nullptr && reader.take(TokenKind::Colon) != nullptr;
  }
  if (angle.count == 0 || must_go_on) return std::nullopt;
  if (!take_hemisphere(reader, angle) || !reader.at_end()) return std::nullopt;
  return angle;
}

// Cuts the tokens in two angles at the separator, else where both halves make sense. Of several such places
// one at a blank, then one that gives both angles the same number of parts is taken, if it is the only one.
Reading read_angles(Span tokens) {
  Reading reading;
  int best_rank = 0;
  bool ambiguous = false;
  for (std::size_t cut = 1; cut < tokens.size(); ++cut) {
    const bool separated = tokens[cut].kind == TokenKind::Separator;
    const std::optional<Angle> first = read_angle(tokens.first(cut));
    const std::optional<Angle> second = read_angle(tokens.subspan(separated ? cut + 1 : cut));
    if (!first || !second) continue;
    const int rank = (tokens[cut].after_blank || separated ? 0 : 2) + (first->count == second->count ? 0 : 1);
    if (reading.angles && rank > best_rank) continue;
    ambiguous = reading.angles && rank == best_rank;
    best_rank = rank;
    reading.angles = {*first, *second};
  }
  if (ambiguous) {
    reading.angles.reset();
    reading.problem = "it is not clear where the first angle ends and the second begins";
  } else if (!reading.angles) {
    reading.problem = read_angle(tokens) ? "a position needs a latitude and a longitude"
                                         : "this is neither latitude and longitude nor a UTM position";
  }
  return reading;
}

// zone [letter] easting ["m"] ["E"] northing ["m"] ["N"], with separators between.
std::optional<UtmText> read_utm(Span tokens) {
  constexpr double kLeastEasting = 1000.0;  // what tells it from degrees
  TokenReader reader(tokens);
  const Token* const zone = reader.take(TokenKind::Number);
  if (zone == nullptr || zone->has_decimals || zone->text.size() > 2) return std::nullopt;
  UtmText utm;
  utm.zone = zone->value;
  utm.letter = reader.take_single_letter();
  reader.take(TokenKind::Separator);
  const Token* const easting = reader.take(TokenKind::Number);
  if (easting == nullptr || easting->value < kLeastEasting) return std::nullopt;
  reader.take(TokenKind::MinuteMark);
  reader.take(TokenKind::Letter);
  reader.take(TokenKind::Separator);
  const Token* const northing = reader.take(TokenKind::Number);
  if (northing == nullptr) return std::nullopt;
  reader.take(TokenKind::MinuteMark);
  reader.take(TokenKind::Letter);
  if (!reader.at_end()) return std::nullopt;
  utm.easting = easting->value;
  utm.northing = northing->value;
  return utm;
}

Reading read(std::string_view text, InnerComma inner_comma) {
  const Tokens tokens = tokenize(text, inner_comma);
  Reading reading;
  if (!tokens.problem.empty()) {
    reading.problem = tokens.problem;
  } else if (tokens.count == 0) {
    reading.problem = "the text is empty";
  } else if (reading.utm = read_utm(tokens.all()); !reading.utm) {
    reading = read_angles(tokens.all());
  }
  return reading;
}

ParsedPosition refuse(std::string problem) { return {std::nullopt, std::move(problem)}; }

bool is_latitude(char letter) { return letter == 'N' || letter == 'S'; }

// Signed degrees into `degrees`; the problem, or empty.
std::string signed_degrees(const Angle& angle, bool latitude, double& degrees) {
  constexpr std::array<const char*, 3> kNames{"degrees", "minutes", "seconds"};
  for (std::size_t i = 1; i < angle.count; ++i)
    if (angle.parts[i] > 60.0 || (angle.parts[i] == 60.0 && i + 1 < angle.count))
      return base::format_text("%s %.10g are 60 or more", kNames[i], angle.parts[i]);
  const bool negative_letter = angle.letter == 'S' || angle.letter == 'W';
  if (angle.letter != '\0' && angle.sign != '\0' && negative_letter != (angle.sign == '-'))
    return base::format_text("the sign %c contradicts the letter %c", angle.sign, angle.letter);
  degrees = angle.parts[0] + (angle.parts[1] + angle.parts[2] / 60.0) / 60.0;
  const double limit = latitude ? kLatitudeLimit : kLongitudeLimit;
  if (degrees > limit + (latitude ? 0.0 : kLongitudeSlack))
    return base::format_text("%s %.10g is beyond %.0f degrees", latitude ? "latitude" : "longitude", degrees, limit);
  if (negative_letter || angle.sign == '-') degrees = -degrees;
  return {};
}

ParsedPosition evaluate(const std::array<Angle, 2>& angles) {
  const auto& [first, second] = angles;
  if (first.letter != '\0' && second.letter != '\0' && is_latitude(first.letter) == is_latitude(second.letter))
    return refuse(is_latitude(first.letter) ? "there are two latitudes" : "there are two longitudes");
  // "12d30m15s 7d15mE": the s may as well be the hemisphere that the other angle has.
  if ((first.seconds_by_letter && first.letter == '\0' && second.letter != '\0') ||
      (second.seconds_by_letter && second.letter == '\0' && first.letter != '\0'))
    return refuse("the s may be seconds or south");
  const bool latitude_first = first.letter != '\0' ? is_latitude(first.letter) : !is_latitude(second.letter);
  Position position;
  std::string problem = signed_degrees(latitude_first ? first : second, true, position.latitude);
  if (problem.empty()) problem = signed_degrees(latitude_first ? second : first, false, position.longitude);
  if (!problem.empty()) return refuse(std::move(problem));
  return {position, {}};
}

ParsedPosition evaluate_polar(const UtmText& utm, const Ellipsoid& ellipsoid) {
  constexpr double kLowestLatitude = 79.0;  // half a degree and more below where maps change to the polar grid
  if (std::string_view("ABYZ").find(utm.letter) == std::string_view::npos)
    return refuse("zone 00 takes the letters A, B, Y and Z");
  const Position position = utm_to_latlon(0, utm.letter < 'N', utm.easting, utm.northing, ellipsoid);
  if (!(std::abs(position.latitude) >= kLowestLatitude))
    return refuse("easting and northing lie outside the polar cap");
  return {position, {}};
}

ParsedPosition evaluate(const UtmText& utm, const Ellipsoid& ellipsoid) {
  constexpr std::string_view kBands = "CDEFGHJKLMNPQRSTUVWXY";
  constexpr double kBandHeight = 8.0;
  constexpr double kWidestEasting = 1000000.0;
  constexpr double kFarthestFromEquator = 9400000.0;  // 84 North is at about 9 329 000
  constexpr double kSouthernNorthing = 10000000.0;
  if (utm.letter == '\0') return refuse("Zone letter required!");
  if (utm.zone == 0) return evaluate_polar(utm, ellipsoid);
  // Zone 61 is how longitude 180 is printed.
  if (utm.zone > 61) return refuse(base::format_text("zone %.0f is beyond 60", utm.zone));
  const std::size_t band = kBands.find(utm.letter);
  if (band == std::string_view::npos) return refuse(base::format_text("'%c' is no zone letter", utm.letter));
  const bool southern = utm.letter < 'N';
  if (utm.easting >= kWidestEasting) return refuse(base::format_text("easting %.1f is out of range", utm.easting));
  if (std::abs(southern ? kSouthernNorthing - utm.northing : utm.northing) > kFarthestFromEquator)
    return refuse(base::format_text("northing %.1f is out of range", utm.northing));
  const Position position = utm_to_latlon(static_cast<int>(utm.zone), southern, utm.easting, utm.northing, ellipsoid);
  // Whoever writes S for "southern hemisphere" names a northern band: that must not turn the position over.
  // The neighbouring band is let pass, as maps carry one letter across their edge.
  const double band_south = -80.0 + kBandHeight * static_cast<double>(band);
  if (utm.letter != 'N' &&
      !(position.latitude >= band_south - kBandHeight && position.latitude <= band_south + 2.0 * kBandHeight))
    return refuse(base::format_text("northing %.1f is far from latitude band %c", utm.northing, utm.letter));
  if (!(std::abs(position.longitude) <= kLongitudeLimit + kLongitudeSlack))
    return refuse(base::format_text("longitude %.10g is beyond 180 degrees", position.longitude));
  return {position, {}};
}

ParsedPosition evaluate(const Reading& reading, const Ellipsoid& ellipsoid) {
  if (reading.utm) return evaluate(*reading.utm, ellipsoid);
  if (reading.angles) return evaluate(*reading.angles);
  return refuse(reading.problem);
}

}  // namespace

ParsedPosition parse_position(std::string_view text, const Ellipsoid& ellipsoid) {
  const Reading decimal = read(text, InnerComma::Decimal);
  if (!has_inner_comma(text)) return evaluate(decimal, ellipsoid);
  const Reading separated = read(text, InnerComma::Separates);
  if (decimal.found() && separated.found())
    return refuse("the comma is ambiguous: it may separate two numbers or be a decimal sign");
  return evaluate(separated.found() ? separated : decimal, ellipsoid);
}

std::optional<double> parse_angle(std::string_view text) {
  const Tokens tokens = tokenize(text, InnerComma::Decimal);
  if (!tokens.problem.empty()) return std::nullopt;
  const std::optional<Angle> angle = read_angle(tokens.all());
  double degrees = 0;
  if (!angle || !signed_degrees(*angle, is_latitude(angle->letter), degrees).empty()) return std::nullopt;
  return degrees;
}

}  // namespace geodesy
