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

  // Does what is asked and gives the data of the answer, the leading byte included. Nothing when the unit does not
  // answer: it does not know the request, or not now, or the data have another length than the request's, or what is
  // asked for does not exist. Before a login it tells only what it is; from a request for the screen until the one that
  // lets the screen go on it gives away only its memory. Records for slots that it does not have, and deltas beyond the
  // trail's room, are answered and dropped: hosts know the limits.
  [[nodiscard]] std::optional<base::Bytes> answer(const LowranceMessage& request);

  [[nodiscard]] const LowranceMemory& memory() const { return memory_; }

 private:
  using Data = std::span<const std::uint8_t>;
  using Answer = std::optional<base::Bytes>;  // without the leading byte
  struct Request;
  static std::span<const Request> requests();
  // A trail that is on its way by commands.
  struct TrailTransfer {
    std::size_t next_sent = 0;             // the delta with which the next block begins
    std::size_t announced = 0, taken = 0;  // deltas of an upload
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
