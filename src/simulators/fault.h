// Something that goes wrong at one packet, or one request, of a simulated receiver.
#pragma once

#include <optional>
#include <string_view>

namespace simulators {

// A Garmin receiver counts the packets that it sends on its own account and those that it takes in (counts, records and
// closing packets of uploads, the time, a position), from 1 since it was made; neither acknowledgements and repetitions
// nor requests and commands. At a packet that it sends, and at one that it takes in:
// - DropAck: the host's first acknowledgement is lost; it is taken, but its ACK is lost.
// - BadChecksum: it is damaged the first time it is sent; it counts as damaged the first time.
// - Silent: neither it nor anything after it is sent; nor is anything taken any more.
// - Unplug: the port vanishes instead; it is not taken.
// - Noise: meaningless bytes go out before it; before its ACK.
//
// A Lowrance/Eagle unit counts the requests that it understands, from 1 since it was made, repetitions included:
// - DropAck: what is asked is done, but the answer is lost.
// - BadChecksum: the lowest bit of the answer's last data byte is wrong, so that the checksum does not fit.
// - Silent: neither this request nor any after it is done or answered.
// - Unplug: the port vanishes, and nothing is done.
// - Noise: meaningless bytes go out before the answer.
struct Fault {
  enum class Kind { DropAck, BadChecksum, Silent, Unplug, Noise };
  Kind kind = Kind::DropAck;
  int packet = 1;  // or request
};

inline constexpr std::string_view kFaultForms =
    "drop-ack@N, bad-checksum@N, silent@N, unplug@N or noise@N, N a packet number from 1";
// A text of one of these forms; nothing for any other.
[[nodiscard]] std::optional<Fault> parse_fault(std::string_view text);

}  // namespace simulators
