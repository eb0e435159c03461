// What a simulated Garmin receiver is to be, and what shall go wrong with it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulators/fault.h"
#include "simulators/garmin_products.h"

namespace simulators {

// The port behind which the receiver in process stands.
inline constexpr std::string_view kGarminPortName = "sim:garmin";

struct ScreenShape {
  int width = 160;
  int lines = 240;
  int bits_per_pixel = 2;  // 1, 2, 4 or 8
};
[[nodiscard]] bool is_possible(const ScreenShape& shape);

struct GarminOptions {
  std::uint16_t product_id = 128;
  std::int16_t software_version = 250;  // times 100
  std::string description;              // empty: made from product and version
  // The capability array, such as "L001 A010 A100 D108"; "none" for a receiver that sends none. Where it is
  // not given, products of the table of those without an array send none, others the array usual for them. A
  // product outside the table that sends none can do what products unknown to this program usually can.
  std::optional<std::string> protocols;
  int baud = 0;  // bits per second on the wire, both ways; 0 takes no time
  std::vector<Fault> faults;
  std::optional<ScreenShape> screen = std::nullopt;  // where it is not given, that of the product
};

// Why a receiver cannot be made like this; empty when it can.
[[nodiscard]] std::string garmin_options_problem(const GarminOptions& options);

// What a receiver of these options can do. Its array is empty when it sends none. Options with a problem
// count as if `protocols` were not given.
[[nodiscard]] CapabilityArray chosen_capabilities(const GarminOptions& options);

// The description, made from product and version where the options have none.
[[nodiscard]] std::string product_description(const GarminOptions& options);

}  // namespace simulators
