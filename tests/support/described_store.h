// What a store holds, as lines of text that tests compare: a difference shows which field of which record it
// is in. Positions stand apart, as they may be compared with a tolerance.
#pragma once

#include <string>
#include <vector>

#include "base/text.h"
#include "store/item_store.h"

namespace support {

// How much of a record is compared: all of it, or what a native text file of the version has room for.
enum class Detail { Everything, Version2, Version1 };

namespace internal {

// The fields that the columns of every line keep.
inline store::ItemRecord columns_of(const store::ItemRecord& item) {
  store::ItemRecord kept = store::blank_item();
  kept.kind = item.kind;
  kept.segment_flag = item.kind == 'T' || item.kind == 'R' ? item.segment_flag : std::uint8_t{0};
  kept.in_use = item.in_use;
  kept.route_number = item.route_number;
  kept.latitude_hemisphere = item.latitude_hemisphere;
  kept.longitude_hemisphere = item.longitude_hemisphere;
  kept.symbol = item.symbol;
  kept.symbol_mode = item.symbol_mode;
  kept.display_mode = item.display_mode;
  kept.time = item.time;
  kept.ident = item.ident;
  kept.comment = item.comment;
  if (item.kind == 'P') kept.proximity_distance = item.proximity_distance;
  return kept;
}

inline store::ItemRecord as_kept(store::ItemRecord item, Detail detail) {
  if (!store::is_known(item.altitude)) item.altitude = store::kNotKnown;
  if (!store::is_known(item.depth)) item.depth = store::kNotKnown;
  if (detail == Detail::Everything) return item;
  const bool short_layout = detail == Detail::Version1;
  if (item.kind == 'P' || short_layout) {
    const std::uint8_t colour = item.colour;
    item = columns_of(item);
    if (item.kind == 'P' && !short_layout) item.colour = colour;
    if (item.kind == 'W') item.ident = item.ident.view().substr(0, 6);
    if (item.kind == 'T' && item.segment_flag != 0) item.segment_flag = store::kStartsSegment;
    if (item.kind == 'T') item.ident = "";
  }
  item.number = 0;
  if (item.kind != 'T' && item.colour > 4) item.colour = 0;  // only five colours have a word
  if (item.waypoint_class == 0) item.waypoint_class = store::kClassNotSet;
  // A class other than "user" brings the lines of full details with it.
  if (item.record_type > 110 && item.detail_kind == store::kFullDetails) item.detail_kind = store::kNoDetails;
  if (item.kind == 'W') item.proximity_distance = 0;
  if (item.detail_kind == store::kLongIdentDetails) item.comment = "";  // the file says "SP WAYPOINT"
  return item;
}

}  // namespace internal

inline std::string described(const store::ItemRecord& record, Detail detail = Detail::Everything) {
  const store::ItemRecord item = internal::as_kept(record, detail);
  std::string text = base::format_text(
      "%c flag %d route %u details %d used %d number %u type %d %c%c colour %d style %d time %u "
      "alt %g depth %g distance %g symbol %d/%d display %d class %d link %d/%04x",
      item.kind, item.segment_flag, static_cast<unsigned>(item.route_number), item.detail_kind, item.in_use,
      static_cast<unsigned>(item.number), item.record_type, item.latitude_hemisphere, item.longitude_hemisphere,
      item.colour, item.track_style, static_cast<unsigned>(item.time.seconds), static_cast<double>(item.altitude),
      static_cast<double>(item.depth), static_cast<double>(item.proximity_distance), item.symbol, item.symbol_mode,
      item.display_mode, item.waypoint_class, item.has_route_link, static_cast<unsigned>(item.link_class));
  for (const std::string_view field : {item.ident.view(), item.comment.view(), item.name.view(), item.facility.view(),
                                       item.city.view(), item.address.view(), item.cross_road.view(), item.state.view(),
                                       item.country.view(), item.link_ident.view(), item.route_link_ident.view()})
    text += " |" + std::string(field);
  text += "| ";
  for (const auto& bytes : {item.subclass, item.link_subclass})
    for (const std::uint8_t byte : bytes) text += base::format_text("%02x", byte);
  return text;
}

// Every record of a store in its order; routes with their headers.
inline std::vector<store::ItemRecord> all_records(const store::ItemStore& items) {
  std::vector<store::ItemRecord> records(items.contents().waypoints.begin(), items.contents().waypoints.end());
  for (const store::Route& route : items.contents().routes) {
    if (route.header) records.push_back(*route.header);
    records.insert(records.end(), route.points.begin(), route.points.end());
  }
  for (const auto* store : {&items.contents().proximity, &items.contents().track_points, &items.contents().events})
    records.insert(records.end(), store->begin(), store->end());
  return records;
}

inline std::vector<std::string> described(const std::vector<store::ItemRecord>& records,
                                          Detail detail = Detail::Everything) {
  std::vector<std::string> lines;
  for (const store::ItemRecord& record : records) lines.push_back(described(record, detail));
  return lines;
}

}  // namespace support
