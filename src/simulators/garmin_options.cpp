#include "simulators/garmin_options.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace simulators {

namespace {

constexpr int kFastestBaud = 1'000'000;
constexpr std::size_t kLongestDescription = 250;

bool sends_no_array(const GarminOptions& options) {
  return options.protocols && base::equal_ignoring_case(*options.protocols, "none");
}

}  // namespace

bool is_possible(const ScreenShape& shape) {
  constexpr int kLongestSide = 1024;
  constexpr std::array kDepths{1, 2, 4, 8};
  const auto is_side = [](int pixels) { return pixels >= 1 && pixels <= kLongestSide; };
  return is_side(shape.width) && is_side(shape.lines) &&
         std::ranges::find(kDepths, shape.bits_per_pixel) != kDepths.end();
}

std::string garmin_options_problem(const GarminOptions& options) {
  if (options.baud < 0 || options.baud > kFastestBaud) {
    return base::format_text("A wire of %d bits per second cannot be simulated: 1 to %d, or 0 for no limit",
                             options.baud, kFastestBaud);
  }
  if (options.description.size() > kLongestDescription) {
    return "A description has at most " + std::to_string(kLongestDescription) + " characters";
  }
  if (const ScreenShape screen = options.screen.value_or(ScreenShape{}); !is_possible(screen)) {
    return base::format_text("A screen of %d by %d pixels of %d bits cannot be simulated", screen.width, screen.lines,
                             screen.bits_per_pixel);
  }
  std::string problem;
  if (options.protocols && !sends_no_array(options)) (void)parse_protocols(*options.protocols, problem);
  return problem;
}

CapabilityArray chosen_capabilities(const GarminOptions& options) {
  std::string problem;
  if (options.protocols && !sends_no_array(options)) {
    if (const auto array = parse_protocols(*options.protocols, problem)) return *array;
  }
  if (const auto row = capabilities_from_table(options.product_id, options.software_version)) return {{}, *row};
  CapabilityArray array = parse_protocols(usual_protocols(options.product_id, options.software_version), problem)
                              .value_or(CapabilityArray{});
  if (sends_no_array(options)) array.data.clear();
  return array;
}

std::string product_description(const GarminOptions& options) {
  if (!options.description.empty()) return options.description.substr(0, kLongestDescription);
  const int version = options.software_version;
  return base::format_text("Simulated GPS %d Software Version %d.%02d", options.product_id, version / 100,
                           version < 0 ? -(version % 100) : version % 100);
}

}  // namespace simulators
