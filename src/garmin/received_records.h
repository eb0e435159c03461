// Puts the records that a download brings into the stores. Each is decoded in the format that was selected for its
// kind; one that cannot be is refused by name and counted, and those behind it go on.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/front_end.h"
#include "garmin/almanac_records.h"
#include "garmin/protocol_selection.h"
#include "garmin/record_format.h"
#include "store/item_store.h"
#include "store/settings.h"

namespace garmin {

class ReceivedRecords {
 public:
  using Data = std::span<const std::uint8_t>;

  // All must outlive the object.
  ReceivedRecords(const ProtocolSelection& selection, store::ItemStore& items, const store::Settings& settings,
                  base::FrontEnd& front_end)
      : selection_(selection), items_(items), settings_(settings), front_end_(front_end) {}

  // At the start of a download...
  void forget_times() { newest_ = {}; }
  // ... and of each kind, also when the receiver begins it anew: nothing has come yet.
  void begin_kind();

  void take_waypoint(Data data);
  void take_proximity(Data data);
  void take_track_header(Data data);
  void take_track_point(Data data);
  void take_route_header(Data data);
  void take_route_point(Data data);
  void take_route_link(Data data);
  void take_satellite(Data data);  // of the PRN number after the latest one's, which the record does not tell

  // Whether a record that is equal to the last byte to the one before it may be another one all the same.
  [[nodiscard]] bool may_come_twice(PacketKind kind, Data data) const;

  [[nodiscard]] int refused() const { return refused_; }
  [[nodiscard]] int route_number() const { return route_number_; }    // of the latest header; -1: there was none
  [[nodiscard]] store::GarminTime newest() const { return newest_; }  // of all times that came

 private:
  [[nodiscard]] const Protocols& protocols() const { return selection_.protocols(); }
  [[nodiscard]] DecodeResult decode_satellite(Data data, SatelliteRecord& satellite) const;
  // A record of a format with a row, decoded into CurrentItem; false when it was refused, which is told.
  bool decode_item(std::span<const RecordFormat> formats, std::uint16_t number, PacketKind packet,
                   std::string_view packet_name, Data data);
  void take_time(store::GarminTime& time);
  void refuse(const std::string& why);

  const ProtocolSelection& selection_;
  store::ItemStore& items_;
  const store::Settings& settings_;
  base::FrontEnd& front_end_;
  int refused_ = 0;
  int route_number_ = -1;
  bool route_open_ = false;  // points belong to the latest header
  int satellite_ = 0;        // PRN number of the latest almanac record
  store::GarminTime newest_;
};

}  // namespace garmin
