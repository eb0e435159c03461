// Something that goes wrong at one packet, or one message, of a simulated receiver.
#pragma once

#include <optional>
#include <string_view>

namespace simulators {

// Packets of a Garmin receiver are those that it sends on its own account and those that it takes in (counts, records
// and closing packets of uploads, the time, a position), counted from 1 since it was made; acknowledgements and
// repetitions are not counted, nor are requests and commands. Messages of a Lowrance/Eagle unit are the requests that
// it understands, each with its answer.
struct Fault {
  // At a packet that the receiver sends, and at one that it takes in; at a request.
  enum class Kind {
    DropAck,  // the host's first acknowledgement is lost; the packet is taken, but its ACK is lost; so is the answer
    BadChecksum,  // the packet is damaged the first time it is sent; it counts as damaged the first time; the answer's
                  // last checksum is wrong
    Silent,       // neither the packet nor anything after it is sent; nor is anything taken any more
    Unplug,       // the port vanishes instead
    Noise,        // meaningless bytes go out before the packet; before its ACK; before the answer
  };
  Kind kind = Kind::DropAck;
  int packet = 1;
};

inline constexpr std::string_view kFaultForms =
    "drop-ack@N, bad-checksum@N, silent@N, unplug@N or noise@N, N a packet number from 1";
// A text of one of these forms; nothing for any other.
[[nodiscard]] std::optional<Fault> parse_fault(std::string_view text);

}  // namespace simulators
