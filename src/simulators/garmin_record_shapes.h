// What a simulated Garmin receiver looks at in records that are sent to it, after the maker's published data formats
// (D100 to D551): whether their length and a few of their values are right and what names them. Everything else it
// keeps as it came.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "simulators/garmin_framing.h"

namespace simulators {

// Whether the data bytes have a length that the format can have, its texts closed by a NUL and none longer than the
// format allows. False for a format that is none.
[[nodiscard]] bool has_shape_of(int format, std::span<const std::uint8_t> data);

// Whether the values of such a record are ones that there are: a latitude between the poles, a display code of the
// three or none (255) in D103, D107, D108 and D403, the data type of D109 and D110.
[[nodiscard]] bool has_possible_values(int format, std::span<const std::uint8_t> data);

// What tells a record of this shape from others of its kind: the ident of a waypoint, the number or the name of a
// route, the name of a track, the satellite of D550 and D551. Empty for formats whose records have no name.
[[nodiscard]] std::string record_key(int format, std::span<const std::uint8_t> data);

// The places of records by what tells them from others of their kind: no receiver holds two of one name.
class RecordPlaces {
 public:
  explicit RecordPlaces(int format, std::span<const Packet> records = {});

  // The place of the record that this one replaces, or else the one behind all others, which is then its own.
  std::size_t place_for(std::span<const std::uint8_t> data);

 private:
  int format_;
  std::size_t next_ = 0;
  std::unordered_map<std::string, std::size_t> places_;
};

// Puts the record into its place, which is one of the records' or the one behind them.
void put_record(Packet packet, std::size_t place, std::vector<Packet>& records);

}  // namespace simulators
