#include "simulators/garmin_uploads.h"

#include <algorithm>

#include "simulators/garmin_record_shapes.h"
#include "simulators/garmin_records.h"

namespace simulators {

namespace {

constexpr int kToHostOnly = 302;  // the track transfer that receivers do not take

auto same_key(int format, const Packet& packet) {
  return [format, id = packet.id, key = record_key(format, packet.data)](const Packet& other) {
    return other.id == id && record_key(format, other.data) == key;
  };
}

// Takes out the group that has this header's number or name.
void remove_group(int format, const Packet& header, std::vector<Packet>& records) {
  const auto begin = std::ranges::find_if(records, same_key(format, header));
  if (begin == records.end()) return;
  const auto end = std::find_if(begin + 1, records.end(), [&](const Packet& each) { return each.id == header.id; });
  records.erase(begin, end);
}

}  // namespace

GarminUpload::GarminUpload(const GarminCapabilities& can) : capabilities_(can), ids_(link_ids(can.link)) {
  using M = GarminMemory;
  const bool has_track_headers = can.track_header != 0;
  const std::uint8_t track_point = can.track_transfer == kToHostOnly ? std::uint8_t{0} : ids_.track_point;
  rows_ = {{
      {ids_.waypoint, can.waypoint_data, Role::Item, &M::waypoints},
      {ids_.proximity, can.proximity_data, Role::Item, &M::proximity},
      {ids_.route_header, can.route_header, Role::Header, &M::routes},
      {ids_.route_waypoint, can.route_waypoint, Role::Member, &M::routes},
      {ids_.route_link, can.route_link, Role::Member, &M::routes},
      {ids_.track_header, can.track_header, Role::Header, &M::tracks},
      {track_point, can.track_data, has_track_headers ? Role::Member : Role::Point, &M::tracks},
      {ids_.almanac, can.almanac_data, names_satellite(can.almanac_data) ? Role::Item : Role::Satellite, &M::almanac},
  }};
}

bool GarminUpload::knows(std::uint8_t id) const {
  if (id == 0) return false;  // what the link does not have
  return id == ids_.records || id == kTransferComplete || std::ranges::find(rows_, id, &Row::id) != rows_.end();
}

bool GarminUpload::take(const Packet& packet, GarminMemory& memory) {
  if (packet.id == ids_.records) return begin(packet);
  if (packet.id == kTransferComplete) return end(packet);
  const bool taken = open_ && knows(packet.id) && take_record(packet, memory);
  refused_any_ = refused_any_ || !taken;
  return taken;
}

bool GarminUpload::begin(const Packet& packet) {
  base::ByteReader in(packet.data);
  const std::uint16_t count = in.u16();
  if (!in.ok() || in.remaining() > 0) return false;
  open_ = true;
  left_ = count;
  kind_ = nullptr;
  in_group_ = false;
  last_in_group_ = 0;
  refused_any_ = false;
  places_.reset();
  satellites_.clear();
  return true;
}

// Without an upload it ends nothing and does no harm.
bool GarminUpload::end(const Packet& packet) {
  base::ByteReader in(packet.data);
  const std::uint16_t number = in.u16();
  if (!in.ok() || in.remaining() > 0) return false;
  const bool fits = std::ranges::any_of(kTransferCommands, [&](const TransferCommand& command) {
    const bool is_its_number =
        number == command.numbers.a010 || (capabilities_.command == 11 && number == command.numbers.a011);
    return is_its_number && (kind_ == nullptr || kind_ == command.records);
  });
  if (open_ && !fits) return false;
  // What is missing was never sent, or a link leads nowhere: said once, since a host can hardly mend it now.
  if (open_ && !refused_any_ && (left_ > 0 || ends_in_link())) {
    refused_any_ = true;
    return false;
  }
  open_ = false;
  return true;
}

bool GarminUpload::take_record(const Packet& packet, GarminMemory& memory) {
  const Row& row = *std::ranges::find(rows_, packet.id, &Row::id);
  if (row.role == Role::Header) {
    const bool leads_nowhere = ends_in_link();
    in_group_ = false;  // its members do not belong to the group before, come what may
    if (leads_nowhere) return false;
  }
  GarminMemory::Records& records = memory.*row.kind;
  if (left_ == 0 || (kind_ != nullptr && kind_ != row.kind)) return false;
  if (!records || !has_shape_of(row.format, packet.data) || !has_possible_values(row.format, packet.data)) return false;
  if (!keep(row, packet, *records)) return false;
  kind_ = row.kind;
  --left_;
  return true;
}

// A link stands between two points; without links a point follows anything.
bool GarminUpload::follows_in_group(std::uint8_t id) const {
  return ids_.route_link == 0 || id != ids_.route_link || last_in_group_ == ids_.route_waypoint;
}

bool GarminUpload::ends_in_link() const {
  return in_group_ && ids_.route_link != 0 && last_in_group_ == ids_.route_link;
}

bool GarminUpload::keep(const Row& row, const Packet& packet, std::vector<Packet>& records) {
  constexpr std::size_t kSatellites = 32;
  if (row.role == Role::Point && kind_ == nullptr) records.clear();
  if (records.size() == kMostRecords) return false;  // one more could never be sent back
  switch (row.role) {
    case Role::Item:
      if (!places_) places_.emplace(row.format, records);  // nothing else changes these records during the upload
      put_record(packet, places_->place_for(packet.data), records);
      break;
    case Role::Header:
      remove_group(row.format, packet, records);
      records.push_back(packet);
      in_group_ = true;
      last_in_group_ = packet.id;
      break;
    case Role::Member:
      if (!in_group_ || !follows_in_group(packet.id)) return false;
      records.push_back(packet);
      last_in_group_ = packet.id;
      break;
    case Role::Point:
      records.push_back(packet);
      break;
    case Role::Satellite:
      if (satellites_.size() == kSatellites) return false;
      satellites_.push_back(packet);
      if (satellites_.size() == kSatellites) records = satellites_;
      break;
  }
  return true;
}

}  // namespace simulators
