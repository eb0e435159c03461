// What a simulated Garmin receiver is to be, and what shall go wrong with it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulators/garmin_products.h"

namespace simulators {

// The port behind which the receiver in process stands.
inline constexpr std::string_view kGarminPortName = "sim:garmin";

// Something that goes wrong at one packet. Packets are those that the receiver sends on its own account and those
// that it takes in (counts, records and closing packets of uploads, the time, a position), counted from 1 since it was
// made; acknowledgements and repetitions are not counted, nor are requests and commands.
struct Fault {
  // At a packet that the receiver sends, and at one that it takes in.
  enum class Kind {
    DropAck,      // the host's first acknowledgement is lost; the packet is taken, but its ACK is lost
    BadChecksum,  // the packet is damaged the first time it is sent; it counts as damaged the first time
    Silent,       // neither the packet nor anything after it is sent; nor is anything taken any more
    Unplug,       // the port vanishes instead
    Noise,        // meaningless bytes, no DLE ETX among them, go out before the packet; before its ACK
  };
  Kind kind = Kind::DropAck;
  int packet = 1;
};

inline constexpr std::string_view kFaultForms =
    "drop-ack@N, bad-checksum@N, silent@N, unplug@N or noise@N, N a packet number from 1";
// A text of one of these forms; nothing for any other.
[[nodiscard]] std::optional<Fault> parse_fault(std::string_view text);

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
