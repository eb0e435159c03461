// What the products that a simulated Garmin receiver can be are able to speak: those without a capability
// array from a table by product id and software version, the others from the text of their array.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/byte_cursor.h"

namespace simulators {

// Protocol and data format numbers; 0 where the product has none.
struct GarminCapabilities {
  int link = 1;
  int command = 10;
  int waypoint_transfer = 0;
  int waypoint_data = 0;
  int route_transfer = 0;
  int route_header = 0;
  int route_waypoint = 0;
  int route_link = 0;
  int track_transfer = 0;
  int track_header = 0;
  int track_data = 0;
  int proximity_transfer = 0;
  int proximity_data = 0;
  int almanac_transfer = 0;
  int almanac_data = 0;
  int date_time_transfer = 0;
  int date_time_data = 0;
  int position_transfer = 0;
  int position_data = 0;
  int pvt_transfer = 0;
  int pvt_data = 0;
};

// The capabilities of a product that sends no array; nothing for a product that is not in the table.
// `software_version` is the version times 100.
[[nodiscard]] std::optional<GarminCapabilities> capabilities_from_table(std::uint16_t product_id,
                                                                        std::int16_t software_version);

// The array text that a product sends; empty for the products of the table, a rich set for unknown ones.
[[nodiscard]] std::string_view usual_protocols(std::uint16_t product_id, std::int16_t software_version);

struct CapabilityArray {
  base::Bytes data;  // as the protocol array packet carries it: three bytes an entry
  GarminCapabilities capabilities;
};

// An array text such as "L001 A010 A100 D108". Protocols that the simulated receiver does not know are sent
// like the others and mean nothing to it. Nothing, with the reason in words, for a text that is no array, or
// that names a data format which the receiver could not send.
[[nodiscard]] std::optional<CapabilityArray> parse_protocols(std::string_view text, std::string& problem);

}  // namespace simulators
