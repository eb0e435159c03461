#include "garmin/received_records.h"

#include <algorithm>
#include <limits>

#include "base/text.h"
#include "garmin/route_records.h"
#include "garmin/track_records.h"
#include "garmin/unknown_format.h"
#include "garmin/waypoint_records.h"

namespace garmin {

void ReceivedRecords::begin_kind() {
  refused_ = satellite_ = 0;
  route_number_ = -1;
  route_open_ = false;
  items_.forget_pending_track();
}

void ReceivedRecords::refuse(const std::string& why) {
  ++refused_;
  front_end_.write_line(1, why);
}

bool ReceivedRecords::decode_item(std::span<const RecordFormat> formats, std::uint16_t number, PacketKind packet,
                                  std::string_view packet_name, Data data) {
  items_.start_item();
  const DecodeResult result = decode_record(formats, number, packet_name, data, items_.CurrentItem);
  if (!result) {
    refuse(result.outcome == Decoded::UnknownFormat ? unknown_format_text(packet, number) : result.refusal);
    return false;
  }
  take_time(items_.CurrentItem.time);
  return true;
}

// A receiver whose calendar ran over counts its weeks from 0 again.
void ReceivedRecords::take_time(store::GarminTime& time) {
  constexpr std::uint32_t kLatest = std::numeric_limits<std::uint32_t>::max() - store::kRolloverSeconds;
  if (settings_.WeekRollover == 1 && time.seconds != 0 && time.seconds <= kLatest)
    time.seconds += store::kRolloverSeconds;
  newest_ = std::max(newest_, time);
}

void ReceivedRecords::take_waypoint(Data data) {
  if (decode_item(kWaypointFormats, protocols().waypoint_data, PacketKind::Pid_Wpt_Data, "Pid_Wpt_Data", data) &&
      items_.push_waypoint(0) != 0)
    ++refused_;
}

void ReceivedRecords::take_proximity(Data data) {
  if (decode_item(kProximityFormats, protocols().proximity_data, PacketKind::Pid_Prx_Wpt_Data, "Pid_Prx_Wpt_Data",
                  data) &&
      items_.push_proximity() != 0)
    ++refused_;
}

void ReceivedRecords::take_track_header(Data data) {
  if (!decode_item(kTrackHeaderFormats, protocols().track_header, PacketKind::Pid_Trk_Hdr, "Pid_Trk_Hdr", data)) return;
  const store::ItemRecord& header = items_.CurrentItem;
  items_.start_track_log(header.ident, store::kColourNames[std::min(header.colour, store::kDefaultColour)]);
}

void ReceivedRecords::take_track_point(Data data) {
  if (decode_item(kTrackPointFormats, protocols().track_data, PacketKind::Pid_Trk_Data, "Pid_Trk_Data", data)) {
    if (items_.push_track() != 0) ++refused_;
  } else if (!data.empty() && data.back() == 1) {
    // All point formats end with the mark of a new segment, which holds for the next point then.
    items_.start_segment();
  }
}

void ReceivedRecords::take_route_header(Data data) {
  RouteHeader header;
  const std::uint16_t format = protocols().route_header;
  const DecodeResult result = decode_record(kRouteHeaderFormats, format, "Pid_Rte_Hdr", data, header);
  route_open_ = false;
  if (!result) {
    refuse(result.outcome == Decoded::UnknownFormat ? unknown_format_text(PacketKind::Pid_Rte_Hdr, format)
                                                    : result.refusal);
    return;
  }
  // A format without numbers counts the routes itself.
  route_number_ = header.number.value_or(route_number_ + 1);
  items_.start_route(static_cast<std::uint32_t>(route_number_), base::format_text("%02d", route_number_), header.name);
  route_open_ = items_.push_route(true) == 0;
  if (!route_open_) ++refused_;
}

void ReceivedRecords::take_route_point(Data data) {
  if (!decode_item(kWaypointFormats, protocols().route_waypoint, PacketKind::Pid_Rte_Wpt_Data, "Pid_Rte_Wpt_Data",
                   data))
    return;
  if (route_open_) {
    if (items_.push_route(true) != 0) ++refused_;
    return;
  }
  refuse("Pid_Rte_Wpt_Data: a point without a route header before it: kept as a waypoint only");
  (void)items_.push_waypoint(0);
}

void ReceivedRecords::take_route_link(Data data) {
  if (!decode_item(kRouteLinkFormats, protocols().route_link, PacketKind::Pid_Rte_Link_Data, "Pid_Rte_Link_Data", data))
    return;
  const store::ItemRecord link = items_.CurrentItem;
  if (!route_open_ || !items_.set_route_link(link.link_class, link.link_subclass, link.route_link_ident))
    refuse("Pid_Rte_Link_Data: a link without a route point before it: record refused");
}

DecodeResult ReceivedRecords::decode_satellite(Data data, SatelliteRecord& satellite) const {
  return decode_record(kAlmanacFormats, protocols().almanac_data, "Pid_Almanac_Data", data, satellite);
}

void ReceivedRecords::take_satellite(Data data) {
  ++satellite_;
  if (satellite_ > store::kSatellites)
    return refuse(base::format_text("Pid_Almanac_Data: there is no satellite %d: record refused", satellite_));
  SatelliteRecord satellite;
  const DecodeResult result = decode_satellite(data, satellite);
  if (!result) return refuse(result.refusal);
  store::Almanac almanac = items_.almanac();
  almanac.satellites[static_cast<std::size_t>(satellite_) - 1] = satellite;
  items_.set_almanac(almanac);
}

bool ReceivedRecords::may_come_twice(PacketKind kind, Data data) const {
  if (kind == PacketKind::Pid_Trk_Data) {
    // A receiver that stands still writes equal points; without a time nothing tells them apart.
    store::ItemRecord point = store::blank_item();
    return decode_record(kTrackPointFormats, protocols().track_data, "", data, point) && point.time.seconds == 0;
  }
  if (kind == PacketKind::Pid_Almanac_Data) {
    // No two satellites are at one place, but those that nothing is known of look alike.
    SatelliteRecord satellite;
    return !decode_satellite(data, satellite) || !satellite || !(satellite->sqrt_semi_major_axis > 0);
  }
  return false;
}

}  // namespace garmin
