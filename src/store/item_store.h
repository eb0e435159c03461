// The stores of waypoints, routes, track points, events and proximity waypoints, and the almanac block: all
// that the program holds at run time. Every reader and download fills CurrentItem and calls a push; every
// writer, list and upload walks a store by index from 1. Positions are WGS-84, times UTC.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/front_end.h"
#include "store/almanac.h"
#include "store/item_record.h"
#include "store/packed_items.h"
#include "store/settings.h"
#include "store/waypoint_index.h"

namespace store {

inline constexpr int kWaypointCapacity = 100000;
inline constexpr int kTrackPointCapacity = 100000;
inline constexpr int kEventCapacity = 10001;
inline constexpr int kProximityCapacity = 10;
inline constexpr int kRouteCapacity = 100;      // routes 0 to 99
inline constexpr int kRoutePointCapacity = 99;  // points of one route

// One route: its header ('R'; the comment is the route's name, the ident its number text) and its points ('W').
struct Route {
  std::optional<ItemRecord> header;  // none: the row is free
  std::vector<ItemRecord> points;
};

// How the line of a route is drawn, as each of its points has it.
[[nodiscard]] std::array<std::uint8_t, 4> route_drawing(const Settings& settings);

class ItemStore {
 public:
  // Everything held, and the counters beside it. A copy taken before a transfer lets the transfer take back
  // what it stored when the receiver begins anew.
  struct Contents {
    PackedItems waypoints, track_points, events, proximity;
    std::array<Route, kRouteCapacity> routes;
    Almanac almanac;
    std::uint32_t last_waypoint_number = 0;
    std::uint32_t last_proximity_number = 0;
    std::uint32_t next_event_number = 1;
    int route_index = -1;              // of the current route; -1 none
    int last_route_index = -1;         // at the latest push_route
    std::uint16_t point_index = 0;     // of the latest point of the current route; 65535 before its header
    bool new_segment = false;          // for the next track point
    bool first_after_clearing = true;  // for the next track point
    bool new_track_log = false;        // for the next track point
  };

  // Both must outlive the store; the settings are read at every push.
  ItemStore(const Settings& settings, base::FrontEnd& front_end);

  // The working record: readers fill it, a push empties it.
  ItemRecord CurrentItem;
  // Makes CurrentItem a record with nothing known (blank_item).
  void start_item() { CurrentItem = blank_item(); }

  // All pushes return 0 when the record was stored or dropped as a duplicate, 1 when it was refused because
  // the store is full (said on line 1). '|' becomes '-' in ident and comment. `slot` 0 appends; a slot from 1
  // to waypoint_count() overwrites that waypoint, duplicates and capacity aside.
  [[nodiscard]] int push_waypoint(int slot);
  // With `is_point`, the header of a route just started (see start_route), then its points one by one; a
  // point also goes into the waypoint store, and keeps its time as given.
  [[nodiscard]] int push_route(bool is_point);
  [[nodiscard]] int push_track();
  [[nodiscard]] int push_event();
  [[nodiscard]] int push_proximity();

  // Makes the next push_route(true) create the header of route `number`, or of the next free one; above 99
  // there is none. CurrentItem becomes that header: its ident the number text, its name `name`.
  void start_route(std::uint32_t number, std::string_view number_text, std::string_view name);
  // The first free route number from `wanted` on, or of all when there is none behind it; `wanted` itself when all
  // are taken.
  [[nodiscard]] std::uint32_t free_route(std::uint32_t wanted) const;
  // The next track point begins a new segment...
  void start_segment() { contents_.new_segment = true; }
  // ... or a new named track log. A colour name outside kColourNames is "Default Color"; no style: the configured one.
  void start_track_log(std::string_view name, std::string_view colour_name,
                       std::optional<std::uint8_t> style = std::nullopt);
  // Colour, width and style of the line that the track points from now on are drawn with, in place of the settings'.
  void set_track_line(const std::array<std::uint8_t, 3>& properties) { track_line_ = properties; }
  // Nothing that was announced for the next track points holds any longer.
  void forget_pending_track() {
    contents_.new_segment = contents_.new_track_log = false;
    track_line_.reset();
  }
  // Gives the latest route point a link to the next one; false when there is no route point.
  bool set_route_link(std::uint16_t link_class, const std::array<std::uint8_t, 18>& subclass, std::string_view ident);
  // Gives every route point the number of its waypoint: the one of the same ident and place, else of the same ident.
  void link_route_points();

  // Local time minus UTC of the times that are pushed now, in seconds; every push of a waypoint, track point
  // or proximity waypoint takes it off. Readers set it from their file; receivers send UTC, so 0.
  void set_input_time_offset(std::int64_t seconds) { input_time_offset_ = seconds; }
  [[nodiscard]] std::int64_t input_time_offset() const { return input_time_offset_; }

  // Set when a route found no free row; cleared here, at clear_routes, when a file is opened and when a
  // download starts.
  [[nodiscard]] bool route_overflow() const { return route_overflow_; }
  void clear_route_overflow() { route_overflow_ = false; }

  [[nodiscard]] int waypoint_count() const { return static_cast<int>(contents_.waypoints.size()); }
  [[nodiscard]] int track_point_count() const { return static_cast<int>(contents_.track_points.size()); }
  [[nodiscard]] int event_count() const { return static_cast<int>(contents_.events.size()); }
  [[nodiscard]] int proximity_count() const { return static_cast<int>(contents_.proximity.size()); }
  [[nodiscard]] int route_count() const;
  // Runs of points, each from a point whose segment flag is not 0 to the next such.
  [[nodiscard]] int track_count() const;
  [[nodiscard]] bool empty() const;  // of items; the almanac does not count
  // Another number after every change of items or routes, but for their selection: those who show them ask it.
  [[nodiscard]] std::uint64_t revision() const { return revision_; }

  // Indices from 1 to the count; routes from 0 to 99. Records come by value: texts in them live as long as they.
  [[nodiscard]] ItemRecord waypoint(int index) const { return contents_.waypoints[slot_of(index)]; }
  [[nodiscard]] ItemRecord track_point(int index) const { return contents_.track_points[slot_of(index)]; }
  [[nodiscard]] ItemRecord event(int index) const { return contents_.events[slot_of(index)]; }
  [[nodiscard]] ItemRecord proximity(int index) const { return contents_.proximity[slot_of(index)]; }
  [[nodiscard]] const Route& route(int number) const { return contents_.routes[static_cast<std::size_t>(number)]; }
  [[nodiscard]] const Almanac& almanac() const { return contents_.almanac; }
  // In the place of the one held; refreshes the title.
  void set_almanac(const Almanac& almanac);

  // Index of the first waypoint of this ident in any letter case; 0 for none. The newest waypoint is not looked at.
  [[nodiscard]] int find_waypoint(std::string_view ident);
  // The same, but latitude and longitude must also be equal to the last bit.
  [[nodiscard]] int find_waypoint(std::string_view ident, const geodesy::Position& position);

  // Changes of what is held; indices as above. The record takes the place of another of its kind ('W', 'T', 'I', 'P')
  // and its number. Route points of a waypoint that had its name and place become the same, but for their time and what
  // they have of their route.
  void replace(char kind, int index, const ItemRecord& item);
  // The route in the place of another, or of none; without a header the row is free again.
  void replace_route(int number, Route route);
  // Items out of use stay where they are, but nothing writes or uploads them; of a route ('R') the header alone tells.
  void set_in_use(char kind, int index, bool in_use);
  // Waypoints in use that have the ident (in any letter case), and with `same_place` the very position too, of one
  // before them that is in use.
  [[nodiscard]] std::vector<int> duplicates(bool same_place) const;
  // Puts these out of use. How many they were.
  int remove_duplicates(bool same_place);

  // By ident without regard to letter case; equal ones keep their order. Numbers and route points stay as they are.
  void sort_waypoints();
  void sort_proximity();

  // What uploads and sends take. A kind is that of its records ('W', 'T', 'I', 'P') or 'R' for routes, each with its
  // points; any other kind has no items. Indices as above.
  void select_all(char kind, bool selected);
  void select(char kind, int index, bool selected);
  // Selected items that are in use; of routes, those whose header is.
  [[nodiscard]] int selected_count(char kind) const;

  // Clearing waypoints clears the routes too. Each refreshes the title.
  void clear_waypoints();
  void clear_routes();
  void clear_tracks();
  void clear_events();
  void clear_proximity();
  void clear_almanac();
  void clear_all();

  [[nodiscard]] const Contents& contents() const { return contents_; }
  void restore(const Contents& contents);

 private:
  static std::size_t slot_of(int index) { return static_cast<std::size_t>(index) - 1; }
  static PackedItems Contents::*records_of(char kind);
  [[nodiscard]] int without_newest(int index) const;
  [[nodiscard]] bool full(std::size_t count, int capacity, std::string_view text);
  void complete_item(char kind);
  void complete_waypoint();
  void store_current(PackedItems& records);
  int push_route_header();
  void forget_routes();

  const Settings& settings_;
  base::FrontEnd& front_end_;
  Contents contents_;
  WaypointIndex index_;
  std::uint64_t revision_ = 0;
  std::int64_t input_time_offset_ = 0;
  bool route_overflow_ = false;
  std::string track_log_name_, track_log_colour_;
  std::optional<std::uint8_t> track_log_style_;
  std::optional<std::array<std::uint8_t, 3>> track_line_;
};

}  // namespace store
