// An upload as a Garmin receiver takes it: a count, records of one kind, a closing packet. Records go into the
// memory as the bytes that came, each as soon as it is there, so that what an upload that breaks off has brought
// stays. A waypoint takes the place of one with its ident, a route and a track that of one with its number or name;
// without track headers the points of an upload are the new track; an almanac without satellite numbers takes effect
// with its 32nd record.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "simulators/garmin_memory.h"
#include "simulators/garmin_record_shapes.h"

namespace simulators {

class GarminUpload {
 public:
  explicit GarminUpload(const GarminCapabilities& capabilities);

  [[nodiscard]] bool is_open() const { return open_; }
  // Whether packets of this id open, feed or end uploads.
  [[nodiscard]] bool knows(std::uint8_t id) const;
  // Takes the packet. False when it is refused: a record of a wrong length or with values that there are not, one more
  // than announced, a link that does not stand between two points, or a packet that does not belong to this upload or
  // this receiver; and once the end of an upload that brought less than announced though nothing was refused. The
  // memory is then as it was.
  [[nodiscard]] bool take(const Packet& packet, GarminMemory& memory);
  // The upload breaks off.
  void stop() { open_ = false; }

 private:
  enum class Role {
    Item,       // stands for itself
    Header,     // opens a group
    Member,     // belongs to the group
    Point,      // of a track without headers
    Satellite,  // known by its place among 32
  };
  struct Row {
    std::uint8_t id;
    int format;
    Role role;
    GarminMemory::Records GarminMemory::*kind;
  };

  bool begin(const Packet& packet);
  bool end(const Packet& packet);
  bool take_record(const Packet& packet, GarminMemory& memory);
  bool keep(const Row& row, const Packet& packet, std::vector<Packet>& records);
  [[nodiscard]] bool follows_in_group(std::uint8_t id) const;
  [[nodiscard]] bool ends_in_link() const;

  GarminCapabilities capabilities_;
  LinkIds ids_;
  std::array<Row, 8> rows_;

  bool open_ = false;
  std::size_t left_ = 0;                                 // records that may still come
  GarminMemory::Records GarminMemory::*kind_ = nullptr;  // that of the first record kept
  bool in_group_ = false;                                // members belong to the latest header
  std::uint8_t last_in_group_ = 0;                       // packet id of its latest record
  bool refused_any_ = false;                             // of this upload
  std::optional<RecordPlaces> places_;                   // of the kind, once an item has come
  std::vector<Packet> satellites_;                       // of an almanac that is not complete
};

}  // namespace simulators
