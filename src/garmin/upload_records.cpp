#include "garmin/upload_records.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "garmin/almanac_records.h"
#include "garmin/route_records.h"
#include "garmin/track_records.h"
#include "garmin/unknown_format.h"
#include "garmin/waypoint_records.h"

namespace garmin {
namespace {

using base::format_text;
using store::ItemRecord;

constexpr std::uint16_t kRoutesWithLinks = 201;
constexpr std::uint16_t kTracksWithHeaders = 301;
// What receivers call the log that has no name of its own.
constexpr std::string_view kUnnamedLog = "ACTIVE LOG";

bool is_sent(const ItemRecord& item) { return item.in_use != 0 && item.selected != 0; }

template <typename Record>
NameRule name_rule(std::span<const FormatOf<Record>> formats, std::uint16_t number) {
  const FormatOf<Record>* format = find_format(formats, number);
  return format == nullptr ? NameRule{} : format->name;
}

}  // namespace

std::string UploadRecords::problem(Kind kind) const {
  const Protocols& p = protocols_;
  const auto problem_with = [](const auto& formats, PacketKind packet, std::uint16_t number) {
    return find_format(formats, number) != nullptr ? std::string() : unknown_format_text(packet, number);
  };
  std::string problem;
  switch (kind) {
    case Kind::Almanac:
      return problem_with(kAlmanacFormats, PacketKind::Pid_Almanac_Data, p.almanac_data);
    case Kind::ProximityWaypoints:
      return problem_with(kProximityFormats, PacketKind::Pid_Prx_Wpt_Data, p.proximity_data);
    case Kind::Waypoints:
      return problem_with(kWaypointFormats, PacketKind::Pid_Wpt_Data, p.waypoint_data);
    case Kind::Routes:
      problem = problem_with(kRouteHeaderFormats, PacketKind::Pid_Rte_Hdr, p.route_header);
      if (problem.empty()) problem = problem_with(kWaypointFormats, PacketKind::Pid_Rte_Wpt_Data, p.route_waypoint);
      if (problem.empty() && p.route_transfer == kRoutesWithLinks)
        problem = problem_with(kRouteLinkFormats, PacketKind::Pid_Rte_Link_Data, p.route_link);
      return problem;
    case Kind::Tracks:
      problem = problem_with(kTrackPointFormats, PacketKind::Pid_Trk_Data, p.track_data);
      if (problem.empty() && p.track_transfer == kTracksWithHeaders)
        problem = problem_with(kTrackHeaderFormats, PacketKind::Pid_Trk_Hdr, p.track_header);
      return problem;
    case Kind::All:
      break;
  }
  return problem;
}

UploadRecordList UploadRecords::almanac() const {
  UploadRecordList records;
  const store::Almanac& almanac = items_.almanac();
  for (int prn = 1; !almanac.empty() && prn <= store::kSatellites; ++prn) {
    const std::string label = format_text("Sending PRN-%02d", prn);
    const auto& satellite = almanac.satellites[static_cast<std::size_t>(prn) - 1];
    records.push_back({PacketKind::Pid_Almanac_Data,
                       encode_record(kAlmanacFormats, protocols_.almanac_data, satellite, settings_), label,
                       format_text("PRN-%02d", prn)});
  }
  return records;
}

UploadRecordList UploadRecords::proximity() {
  return waypoint_records(PacketKind::Pid_Prx_Wpt_Data, kProximityFormats, protocols_.proximity_data, 'P',
                          items_.proximity_count(), &store::ItemStore::proximity);
}

UploadRecordList UploadRecords::waypoints() {
  return waypoint_records(PacketKind::Pid_Wpt_Data, kWaypointFormats, protocols_.waypoint_data, 'W',
                          items_.waypoint_count(), &store::ItemStore::waypoint);
}

UploadRecordList UploadRecords::waypoint_records(PacketKind packet, std::span<const RecordFormat> formats,
                                                 std::uint16_t number, char letter, int count,
                                                 ItemRecord (store::ItemStore::*item)(int) const) {
  UploadRecordList records;
  for (int i = 1; i <= count; ++i) {
    const ItemRecord record = (items_.*item)(i);
    if (is_sent(record))
      records.push_back(
          waypoint_record(packet, formats, number, record, records.size(), format_text("%c%05d", letter, i)));
  }
  return records;
}

UploadRecordList UploadRecords::routes() {
  UploadRecordList records;
  ReceiverNames names(name_rule(kRouteHeaderFormats, protocols_.route_header), "ROUTE");
  const auto for_all_routes = [this](auto&& take) {
    for (int number = 0; number < store::kRouteCapacity; ++number) {
      const store::Route& route = items_.route(number);
      if (route.header && is_sent(*route.header)) take(route, static_cast<std::uint64_t>(number));
    }
  };
  for_all_routes(
      [&](const store::Route& route, std::uint64_t number) { names.reserve(route.header->comment, number); });
  for_all_routes([&](const store::Route& route, std::uint64_t) { add_route(route, names, records); });
  return records;
}

void UploadRecords::add_route(const store::Route& route, ReceiverNames& names, UploadRecordList& records) {
  const int number = static_cast<int>(route.header->route_number);
  const std::string_view name = route.header->comment;
  const NameRule rule = name_rule(kRouteHeaderFormats, protocols_.route_header);
  RouteHeader header{number, receiver_name(name, rule)};
  if (rule.identifies) header.name = names.name_of(name, static_cast<std::uint64_t>(number));
  const std::string label = format_text("R%03d", number);
  records.push_back(
      {PacketKind::Pid_Rte_Hdr, encode_record(kRouteHeaderFormats, protocols_.route_header, header, settings_), label,
       header.name.empty() ? label : header.name, UploadRecord::Role::Header, rule.longest > 0 && header.name != name});
  const bool has_links =
      protocols_.route_transfer == kRoutesWithLinks && id_of(PacketKind::Pid_Rte_Link_Data, protocols_.link);
  std::optional<ItemRecord> before;
  int place = 0;
  for (const ItemRecord& point : route.points) {
    if (point.in_use == 0) {
      if (before) before->has_route_link = 0;  // the leg led there
      continue;
    }
    const std::string point_label = format_text("RW%02d", ++place);
    if (has_links && before) records.push_back(link_record(*before, point_label));
    records.push_back(waypoint_record(PacketKind::Pid_Rte_Wpt_Data, kWaypointFormats, protocols_.route_waypoint, point,
                                      records.size(), point_label));
    before = point;
  }
}

// The leg that leaves the point; a straight one where nothing else is known.
UploadRecord UploadRecords::link_record(const ItemRecord& point, const std::string& label) const {
  constexpr std::uint16_t kDirect = 3;
  ItemRecord leg = point;
  if (leg.has_route_link == 0) {
    leg.link_class = kDirect;
    leg.link_subclass = kPlainSubclass;
    leg.route_link_ident = "";
  }
  return {PacketKind::Pid_Rte_Link_Data, encode_record(kRouteLinkFormats, protocols_.route_link, leg, settings_), label,
          "link to " + label, UploadRecord::Role::Follower};
}

UploadRecordList UploadRecords::tracks() {
  UploadRecordList records;
  const bool has_headers = protocols_.track_transfer == kTracksWithHeaders;
  ReceiverNames names(name_rule(kTrackHeaderFormats, protocols_.track_header), "TRACK");
  ItemRecord log;  // the latest point that begins a named log, whether it is sent or not
  log.ident = kUnnamedLog;
  log.colour = store::kDefaultColour;
  int logs = 0;
  std::uint8_t starts = has_headers ? store::kStartsNamedTrack : store::kStartsSegment;  // what the next point does
  for (int i = 1; i <= items_.track_point_count(); ++i) {
    ItemRecord point = items_.track_point(i);
    if (point.segment_flag == store::kStartsNamedTrack) log = point;
    // The points that are left out may have begun what goes on behind them.
    starts = std::max(starts, point.segment_flag);
    if (!is_sent(point)) continue;
    point.segment_flag = std::exchange(starts, store::kContinues);
    if (has_headers && point.segment_flag == store::kStartsNamedTrack)
      records.push_back(log_header(log, logs++, i, names));
    const std::string label = format_text("T%05d", i);
    records.push_back({PacketKind::Pid_Trk_Data,
                       encode_record(kTrackPointFormats, protocols_.track_data, point, settings_), label, label});
  }
  return records;
}

UploadRecord UploadRecords::log_header(const ItemRecord& log, int place, int index, ReceiverNames& names) {
  const NameRule rule = name_rule(kTrackHeaderFormats, protocols_.track_header);
  ItemRecord header = log;
  header.number = static_cast<std::uint32_t>(place);
  if (rule.identifies) header.ident = names.name_of(log.ident, static_cast<std::uint64_t>(index));
  return {PacketKind::Pid_Trk_Hdr,     encode_record(kTrackHeaderFormats, protocols_.track_header, header, settings_),
          format_text("T%05d", index), std::string(header.ident),
          UploadRecord::Role::Header,  header.ident != log.ident};
}

UploadRecord UploadRecords::waypoint_record(PacketKind packet, std::span<const RecordFormat> formats,
                                            std::uint16_t number, ItemRecord item, std::size_t place,
                                            std::string label) {
  const NameRule rule = name_rule(formats, number);
  std::string name = waypoint_names(rule).name_of(item.ident, place_of(item));
  const bool is_renamed = item.ident != name;
  item.ident = name;
  item.number = static_cast<std::uint32_t>(place);
  return {packet,
          encode_record(formats, number, item, settings_),
          std::move(label),
          std::move(name),
          UploadRecord::Role::Single,
          is_renamed};
}

// The names of all waypoints are given in the order of the store, selected or not, so that a point of a route or a
// proximity waypoint is called like its waypoint in whichever upload it goes.
ReceiverNames& UploadRecords::waypoint_names(const NameRule& rule) {
  const auto found = waypoint_names_.find(rule);
  if (found != waypoint_names_.end()) return found->second;
  ReceiverNames names(rule);
  for_all_waypoints([&](const ItemRecord& item) { names.reserve(item.ident, place_of(item)); });
  for_all_waypoints([&](const ItemRecord& item) { (void)names.name_of(item.ident, place_of(item)); });
  return waypoint_names_.emplace(rule, std::move(names)).first->second;
}

void UploadRecords::for_all_waypoints(const std::function<void(const ItemRecord& item)>& take) const {
  for (int i = 1; i <= items_.waypoint_count(); ++i) {
    const ItemRecord item = items_.waypoint(i);
    if (item.in_use != 0) take(item);
  }
}

}  // namespace garmin
