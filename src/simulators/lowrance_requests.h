// What a simulated Lowrance/Eagle unit does with the requests of its host, without the wire between them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/byte_cursor.h"
#include "simulators/lowrance_framing.h"
#include "simulators/lowrance_memory.h"
#include "simulators/lowrance_options.h"
#include "simulators/lowrance_screen.h"

namespace simulators {

class LowranceRequests {
 public:
  LowranceRequests(const LowranceUnit& unit, LowranceMemory memory);

  // Whether the unit knows the request, now and with data of this length. Before a login it tells only what it is; from
  // a request for the screen until the one that lets the screen go on it gives away only its memory.
  [[nodiscard]] bool understands(const LowranceMessage& request) const { return row_of(request) != nullptr; }
  // Does what is asked and gives the data of the answer, the leading byte included. Nothing, and nothing done, when the
  // unit does not understand it, or cannot do it: what is asked for does not exist, what is sent makes no sense to it,
  // or deltas have no room. Records for slots that it does not have are answered and dropped: hosts are told how many
  // it has. How long its trails can be, no message tells, so hosts see it by this silence alone.
  [[nodiscard]] std::optional<base::Bytes> answer(const LowranceMessage& request);

  [[nodiscard]] const LowranceMemory& memory() const { return memory_; }

 private:
  using Data = std::span<const std::uint8_t>;
  using Answer = std::optional<base::Bytes>;  // without the leading byte
  struct Request;
  static std::span<const Request> requests();
  // Nothing for a request that the unit does not understand.
  [[nodiscard]] const Request* row_of(const LowranceMessage& request) const;
  // A trail that is on its way by commands.
  struct TrailTransfer {
    std::size_t next_sent = 0;  // the delta with which the next block begins
    std::size_t announced = 0;  // deltas of an upload
  };

  Answer log_in(Data data);
  Answer tell_what_it_is(Data data);
  Answer read_memory(Data data);
  Answer write_memory(Data data);
  Answer freeze_screen(Data data);
  Answer unfreeze_screen(Data data);
  Answer get_waypoint(Data data);
  Answer keep_waypoint(Data data);
  Answer get_route(Data data);
  Answer keep_route(Data data);
  Answer get_icon(Data data);
  Answer keep_icon(Data data);
  Answer count_icons(Data data);
  Answer set_icon_count(Data data);
  Answer count_symbols(Data data);
  Answer point_to_trail(Data data);
  Answer start_sending_trail(Data data);
  Answer send_deltas(Data data);
  Answer start_taking_trail(Data data);
  Answer take_deltas(Data data);

  // The address of a trail's area; areas stand one behind the other.
  [[nodiscard]] std::uint32_t area_address(std::size_t trail) const;

  const LowranceUnit& unit_;  // a row of the constant table
  LowranceMemory memory_;
  LowrancePlanes planes_;
  std::vector<TrailTransfer> transfers_;  // one a trail
  bool logged_in_ = false;
  bool frozen_ = false;
};

}  // namespace simulators
