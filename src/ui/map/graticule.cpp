#include "ui/map/graticule.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

#include "base/text.h"
#include "ui/item_texts.h"

namespace ui::map {
namespace {

// Steps in degrees, the greatest first.
constexpr std::array kDegrees{30.0, 15.0, 10.0, 5.0, 2.0, 1.0};
constexpr std::array kMinutes{30.0, 20.0, 10.0, 5.0, 2.0, 1.0, 0.5, 0.2, 0.1, 0.05, 0.02, 0.01, 0.005, 0.002, 0.001};
constexpr std::array kSeconds{30.0, 20.0, 10.0, 5.0, 2.0, 1.0, 0.5, 0.2, 0.1, 0.05};
constexpr std::array kDecimals{0.5,   0.2,    0.1,    0.05,   0.02,    0.01,    0.005,  0.002,
                               0.001, 0.0005, 0.0002, 0.0001, 0.00005, 0.00002, 0.00001};
constexpr std::array kTimeSteps{1.0,   2.0,   5.0,    10.0,   15.0,   30.0,    60.0,    120.0,   300.0,
                                600.0, 900.0, 1800.0, 3600.0, 7200.0, 10800.0, 21600.0, 43200.0, 86400.0};

double degree_step(double least, geodesy::Notation notation) {
  double step = kDegrees.front();
  const auto try_steps = [&](std::span<const double> steps, double unit, double below) {
    for (const double value : steps)
      if (value < below && value / unit >= least) step = value / unit;
  };
  try_steps(kDegrees, 1, 360);
  if (notation == geodesy::Notation::Ddd) {
    try_steps(kDecimals, 1, 1);
  } else if (notation == geodesy::Notation::Dms) {
    try_steps(kMinutes, 60, 60);
    // Below a minute there are seconds.
    if (step <= 1.0 / 60) try_steps(kSeconds, 3600, 60);
  } else {
    try_steps(kMinutes, 60, 60);
  }
  return step;
}

// A number without the zeros that say nothing; at least two digits before the point.
std::string plain(double value, int decimals) {
  std::string text = base::format_text("%0*.*f", decimals + 3, decimals, value);
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text;
}

std::string label_of(double degrees, bool is_meridian, geodesy::Notation notation) {
  const double size = std::abs(degrees);
  const char letter = is_meridian ? (degrees < 0 ? 'W' : 'E') : (degrees < 0 ? 'S' : 'N');
  const int digits = is_meridian ? 3 : 2;
  if (notation == geodesy::Notation::Ddd) {
    const std::string number = plain(size, 6);
    const std::size_t whole = std::min(number.find('.'), number.size());
    return letter +
           std::string(whole < static_cast<std::size_t>(digits) ? static_cast<std::size_t>(digits) - whole : 0, '0') +
           number;
  }
  // Rounded in the smallest unit, so that 59.99999 minutes are a degree.
  const double units = std::round(size * 3600000);
  const double whole = std::floor(units / 3600000), minutes = (units - whole * 3600000) / 60000;
  std::string text = base::format_text("%c%0*.0f", letter, digits, whole);
  if (notation != geodesy::Notation::Dms) return minutes == 0 ? text : text + " " + plain(minutes, 4);
  const double whole_minutes = std::floor(minutes), seconds = (minutes - whole_minutes) * 60;
  if (minutes != 0) text += " " + plain(whole_minutes, 1);
  return seconds < 0.001 ? text : text + " " + plain(seconds, 2);
}

}  // namespace

std::vector<GraticuleLine> graticule(const Viewport& viewport, geodesy::Notation notation, double gap) {
  std::vector<GraticuleLine> lines;
  const double least = gap * 360 / viewport.scale();
  const double step = degree_step(least, notation);
  const double left = viewport.to_place({0, 0}).x * 360 - 180;
  // No meridian twice, should the world be narrower than the drawing.
  const double right = left + std::min(viewport.width() * 360 / viewport.scale(), 360 - step / 2);
  for (double i = std::ceil(left / step); i * step <= right; ++i) {
    const double degrees = std::remainder(i * step, 360);
    lines.push_back({true, degrees, (i * step - left) * viewport.scale() / 360, label_of(degrees, true, notation)});
  }
  const geodesy::Position middle = unproject(viewport.centre());
  // Towards the poles parallels stand farther apart.
  const double closer = std::cos(middle.latitude * std::numbers::pi / 180);
  const double down = degree_step(least * closer, notation);
  const double top = unproject(viewport.to_place({0, 0})).latitude;
  const double bottom = unproject(viewport.to_place({0, viewport.height()})).latitude;
  for (double i = std::ceil(bottom / down); i * down <= top; ++i) {
    const double degrees = i * down;
    if (std::abs(degrees) < 90)
      lines.push_back({false, degrees, viewport.to_pixel(project({degrees, middle.longitude})).y,
                       label_of(degrees, false, notation)});
  }
  return lines;
}

ScaleBar scale_bar(const Viewport& viewport, geodesy::DistanceUnit unit, double longest) {
  const double unit_pixels = geodesy::metres_per(unit) / viewport.metres_per_pixel(viewport.centre());
  const double most = longest / unit_pixels;
  double length = round_step(most);
  // The one before it: 1, 2 and 5 are at most 2.5 apart.
  if (length > most) length = round_step(length / 2.6);
  const std::string name(geodesy::unit_name(unit));
  return {length * unit_pixels, base::format_text("%.10g %s", length, name.c_str())};
}

double round_step(double least) {
  const double power = std::pow(10, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0})
    if (factor * power >= least * (1 - 1e-9)) return factor * power;
  return 10 * power;
}

double round_time_step(double least) {
  const auto* step = std::ranges::lower_bound(kTimeSteps, least);
  return step != kTimeSteps.end() ? *step : round_step(least / 86400) * 86400;
}

std::string clock_text(double seconds) {
  const auto whole = static_cast<long long>(std::llround(seconds));
  return base::format_text("%lld:%02lld:%02lld", whole / 3600, whole / 60 % 60, whole % 60);
}

}  // namespace ui::map
