#include "store/item_store.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <tuple>
#include <utility>

#include "base/text.h"

namespace store {
namespace {

constexpr std::uint16_t kBeforeHeader = 65535;

std::uint8_t byte_of(int setting) { return static_cast<std::uint8_t>(setting); }

// Records and their texts travel through files and lists that use '|' as a separator.
void replace_bars(ItemRecord& item) {
  item.ident.replace('|', '-');
  item.comment.replace('|', '-');
}

void sort_by_ident(PackedItems& records) {
  std::vector<std::string> idents;
  idents.reserve(records.size());
  for (const ItemRecord& record : records) idents.push_back(base::lower_case(record.ident));
  if (std::is_sorted(idents.begin(), idents.end())) return;
  std::vector<std::uint32_t> order(records.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(),
                   [&](std::uint32_t left, std::uint32_t right) { return idents[left] < idents[right]; });
  records.reorder(order);
}

std::uint8_t flag_of(bool selected) { return selected ? 1 : 0; }

// The flag stands in a word that no stored record leaves at zero, so the record stays where it is.
void select_record(PackedItems& records, std::size_t slot, bool selected) {
  ItemRecord item = records[slot];
  if (item.selected == flag_of(selected)) return;
  item.selected = flag_of(selected);
  records.replace(slot, item);
}

void select_route(Route& route, bool selected) {
  if (route.header) route.header->selected = flag_of(selected);
  for (ItemRecord& point : route.points) point.selected = flag_of(selected);
}

// The waypoint as a point of the route that `old` was a point of.
ItemRecord route_point_of(const ItemRecord& waypoint, const ItemRecord& old) {
  ItemRecord point = waypoint;
  point.time = old.time;  // as given, where the waypoint's is UTC
  point.selected = old.selected;
  point.in_use = old.in_use;
  point.route_number = old.route_number;
  point.route_drawing = old.route_drawing;
  point.has_route_link = old.has_route_link;
  point.link_class = old.link_class;
  point.link_subclass = old.link_subclass;
  point.route_link_ident = old.route_link_ident;
  return point;
}

bool is_selected(const ItemRecord& item) { return item.in_use != 0 && item.selected != 0; }

}  // namespace

std::array<std::uint8_t, 4> route_drawing(const Settings& settings) {
  return {byte_of(settings.SA_Route_LineColor), byte_of(settings.SA_Route_LineWidth),
          byte_of(settings.SA_Route_LineStyle), byte_of(settings.SA_draw_route_0_line)};
}

ItemStore::ItemStore(const Settings& settings, base::FrontEnd& front_end)
    : settings_(settings), front_end_(front_end) {}

bool ItemStore::full(std::size_t count, int capacity, std::string_view text) {
  if (count < static_cast<std::size_t>(capacity)) return false;
  front_end_.write_line(1, text);
  return true;
}

// What every record but a route header gets at insertion.
void ItemStore::complete_item(char kind) {
  CurrentItem.kind = kind;
  CurrentItem.in_use = 1;
  set_hemispheres(CurrentItem);
  replace_bars(CurrentItem);
  if (CurrentItem.symbol_mode == kSymbolModeNotGiven)
    CurrentItem.symbol_mode = byte_of(static_cast<int>(settings_.IconSelector));
}

void ItemStore::store_current(PackedItems& records) {
  records.push_back(CurrentItem);
  CurrentItem = ItemRecord{};
}

// What every waypoint gets at insertion, appended or in place.
void ItemStore::complete_waypoint() {
  sign_position(CurrentItem);
  complete_item('W');
  CurrentItem.segment_flag = CurrentItem.detail_kind == kLongIdentDetails ? 2 : 0;
  CurrentItem.waypoint_drawing = {byte_of(settings_.SA_TextColor),    byte_of(settings_.SA_TextAlign),
                                  byte_of(settings_.SA_TextSize),     byte_of(settings_.SA_SA_IconSize),
                                  byte_of(settings_.SA_SA_IconColor), byte_of(settings_.SA_noname)};
  CurrentItem.number = ++contents_.last_waypoint_number;
  CurrentItem.time = shifted(CurrentItem.time, -input_time_offset_);
}

int ItemStore::push_waypoint(int slot) {
  ++revision_;
  PackedItems& waypoints = contents_.waypoints;
  if (slot > 0) {
    if (slot > waypoint_count()) return 1;
    complete_waypoint();
    waypoints.replace(slot_of(slot), CurrentItem);
    CurrentItem = ItemRecord{};
    index_.forget();
    return 0;
  }
  if (full(waypoints.size(), kWaypointCapacity, "Too many waypoints")) return 1;
  complete_waypoint();
  // Only a waypoint of the same ident can be an exact duplicate, so one look-up serves where there is none.
  const bool looks = settings_.HandleReadDups != Duplicates::Merge || settings_.ForceExactDupeRemoval != 0;
  const int same_ident = looks ? index_.first_of(waypoints, CurrentItem.ident) : 0;
  if (same_ident != 0) {
    bool dropped = settings_.HandleReadDups != Duplicates::Merge;
    if (settings_.HandleReadDups == Duplicates::Replace) {
      CurrentItem.number = waypoints[slot_of(same_ident)].number;
      waypoints.replace(slot_of(same_ident), CurrentItem);
      index_.forget_positions();
    }
    if (!dropped) dropped = index_.first_of(waypoints, CurrentItem.ident, CurrentItem.position) != 0;
    if (dropped) {
      CurrentItem = ItemRecord{};
      return 0;
    }
  }
  store_current(waypoints);
  return 0;
}

void ItemStore::start_route(std::uint32_t number, std::string_view number_text, std::string_view name) {
  contents_.route_index = static_cast<int>(std::min<std::uint32_t>(number, kRouteCapacity));
  contents_.last_route_index = contents_.route_index;
  contents_.point_index = kBeforeHeader;
  start_item();
  CurrentItem.ident = number_text;
  CurrentItem.comment = name;
}

std::uint32_t ItemStore::free_route(std::uint32_t wanted) const {
  for (std::uint32_t i = 0; i < kRouteCapacity; ++i) {
    const std::uint32_t number = (wanted + i) % kRouteCapacity;
    if (!contents_.routes[number].header) return number;
  }
  return wanted;
}

int ItemStore::push_route(bool is_point) {
  ++revision_;
  if (contents_.route_index != contents_.last_route_index) contents_.point_index = kBeforeHeader;
  contents_.last_route_index = contents_.route_index;
  if (is_point || contents_.point_index == kBeforeHeader) ++contents_.point_index;
  if (contents_.point_index == 0) return push_route_header();

  const ItemRecord point = CurrentItem;
  (void)push_waypoint(0);  // a full waypoint store has said so and does not keep the point out of its route
  CurrentItem = point;
  if (contents_.route_index < 0 || contents_.route_index >= kRouteCapacity) {
    front_end_.write_line(1, "Too many routes");
    return 1;
  }
  std::vector<ItemRecord>& points = contents_.routes[static_cast<std::size_t>(contents_.route_index)].points;
  if (contents_.point_index > kRoutePointCapacity) {
    --contents_.point_index;
    front_end_.write_line(1, "Too many route points");
    return 1;
  }
  const std::uint32_t number = contents_.last_waypoint_number;
  const std::int64_t offset = std::exchange(input_time_offset_, 0);  // Deliberate : points keep the time as given
  complete_waypoint();
  input_time_offset_ = offset;
  contents_.last_waypoint_number = number;
  CurrentItem.number = number;
  CurrentItem.route_drawing = route_drawing(settings_);
  CurrentItem.route_number = static_cast<std::uint32_t>(contents_.route_index);
  points.push_back(CurrentItem);
  CurrentItem = ItemRecord{};
  return 0;
}

int ItemStore::push_route_header() {
  int& row = contents_.route_index;
  while (row >= 0 && row < kRouteCapacity && contents_.routes[static_cast<std::size_t>(row)].header) ++row;
  contents_.last_route_index = row;
  if (row < 0 || row >= kRouteCapacity) {
    front_end_.message_box("RouteError", "Route Buffer Full");
    route_overflow_ = true;
    return 1;
  }
  CurrentItem.segment_flag = 1;
  CurrentItem.in_use = 1;
  CurrentItem.kind = 'R';
  CurrentItem.route_number = static_cast<std::uint32_t>(row);
  replace_bars(CurrentItem);
  CurrentItem.symbol_mode = 0;
  contents_.routes[static_cast<std::size_t>(row)].header = CurrentItem;
  CurrentItem = ItemRecord{};
  return 0;
}

bool ItemStore::set_route_link(std::uint16_t link_class, const std::array<std::uint8_t, 18>& subclass,
                               std::string_view ident) {
  if (contents_.route_index < 0 || contents_.route_index >= kRouteCapacity) return false;
  std::vector<ItemRecord>& points = contents_.routes[static_cast<std::size_t>(contents_.route_index)].points;
  if (points.empty()) return false;
  ItemRecord& point = points.back();
  point.has_route_link = 1;
  if (point.detail_kind == kNoDetails) point.detail_kind = kRouteLinkDetails;
  point.link_class = link_class;
  point.link_subclass = subclass;
  point.route_link_ident = ident;
  return true;
}

void ItemStore::link_route_points() {
  ++revision_;
  for (Route& route : contents_.routes) {
    for (ItemRecord& point : route.points) {
      int waypoint_index = index_.first_of(contents_.waypoints, point.ident, point.position);
      if (waypoint_index == 0) waypoint_index = index_.first_of(contents_.waypoints, point.ident);
      if (waypoint_index != 0) point.number = waypoint(waypoint_index).number;
    }
  }
}

void ItemStore::start_track_log(std::string_view name, std::string_view colour_name,
                                std::optional<std::uint8_t> style) {
  contents_.new_track_log = true;
  contents_.new_segment = true;
  track_log_name_ = name;
  track_log_colour_ = colour_name;
  track_log_style_ = style;
}

int ItemStore::push_track() {
  ++revision_;
  if (full(contents_.track_points.size(), kTrackPointCapacity, "Too many track points")) return 1;
  if (std::exchange(contents_.new_segment, false)) CurrentItem.segment_flag = kStartsSegment;
  if (std::exchange(contents_.first_after_clearing, false)) CurrentItem.segment_flag = kStartsSegment;
  if (std::exchange(contents_.new_track_log, false)) {
    CurrentItem.segment_flag = kStartsNamedTrack;
    CurrentItem.colour = colour_number(track_log_colour_);
    CurrentItem.track_style = track_log_style_.value_or(byte_of(settings_.SA_LineStyle));
    CurrentItem.ident = track_log_name_;
  }
  CurrentItem.track_drawing = track_line_.value_or(
      std::array{byte_of(settings_.SA_LineColor), byte_of(settings_.SA_LineWidth), byte_of(settings_.SA_LineStyle)});
  sign_position(CurrentItem);
  complete_item('T');
  CurrentItem.time = shifted(CurrentItem.time, -input_time_offset_);
  store_current(contents_.track_points);
  return 0;
}

int ItemStore::push_event() {
  ++revision_;
  if (full(contents_.events.size(), kEventCapacity, "Too many Events (LEI Icons)")) return 1;
  CurrentItem.number = contents_.next_event_number++;
  complete_item('I');
  store_current(contents_.events);
  return 0;
}

int ItemStore::push_proximity() {
  ++revision_;
  if (full(contents_.proximity.size(), kProximityCapacity, "Too many Proximity points")) return 1;
  CurrentItem.proximity_drawing = {byte_of(settings_.SA_CirFillColor), byte_of(settings_.SA_CirLineWidth),
                                   byte_of(settings_.SA_CirLineColor), byte_of(settings_.SA_CirFillStyle),
                                   byte_of(settings_.SA_DrawProxCircles)};
  CurrentItem.number = ++contents_.last_proximity_number;
  sign_position(CurrentItem);
  complete_item('P');
  CurrentItem.time = shifted(CurrentItem.time, -input_time_offset_);
  store_current(contents_.proximity);
  return 0;
}

int ItemStore::route_count() const {
  return static_cast<int>(std::count_if(contents_.routes.begin(), contents_.routes.end(),
                                        [](const Route& route) { return route.header.has_value(); }));
}

int ItemStore::track_count() const {
  return static_cast<int>(std::count_if(contents_.track_points.begin(), contents_.track_points.end(),
                                        [](const ItemRecord& point) { return point.segment_flag != kContinues; }));
}

bool ItemStore::empty() const {
  return contents_.waypoints.empty() && contents_.track_points.empty() && contents_.events.empty() &&
         contents_.proximity.empty() && route_count() == 0;
}

// Looked up from outside an insertion, the newest waypoint is the one that is being compared with the others.
int ItemStore::without_newest(int index) const { return index == waypoint_count() ? 0 : index; }

int ItemStore::find_waypoint(std::string_view ident) {
  return without_newest(index_.first_of(contents_.waypoints, ident));
}

int ItemStore::find_waypoint(std::string_view ident, const geodesy::Position& position) {
  return without_newest(index_.first_of(contents_.waypoints, ident, position));
}

void ItemStore::sort_waypoints() {
  ++revision_;
  sort_by_ident(contents_.waypoints);
  index_.forget();
}

void ItemStore::sort_proximity() {
  ++revision_;
  sort_by_ident(contents_.proximity);
}

// None for a kind that is no plain list of records.
PackedItems ItemStore::Contents::*ItemStore::records_of(char kind) {
  switch (kind) {
    case 'W':
      return &Contents::waypoints;
    case 'T':
      return &Contents::track_points;
    case 'I':
      return &Contents::events;
    case 'P':
      return &Contents::proximity;
    default:
      return nullptr;
  }
}

void ItemStore::select_all(char kind, bool selected) {
  if (const auto records = records_of(kind); records != nullptr) {
    for (std::size_t i = 0; i < (contents_.*records).size(); ++i) select_record(contents_.*records, i, selected);
  } else if (kind == 'R') {
    for (Route& route : contents_.routes) select_route(route, selected);
  }
}

void ItemStore::select(char kind, int index, bool selected) {
  if (const auto records = records_of(kind); records != nullptr) {
    select_record(contents_.*records, slot_of(index), selected);
  } else if (kind == 'R') {
    select_route(contents_.routes[static_cast<std::size_t>(index)], selected);
  }
}

int ItemStore::selected_count(char kind) const {
  if (const auto records = records_of(kind); records != nullptr)
    return static_cast<int>(std::count_if((contents_.*records).begin(), (contents_.*records).end(), is_selected));
  if (kind != 'R') return 0;
  return static_cast<int>(std::ranges::count_if(
      contents_.routes, [](const Route& route) { return route.header && is_selected(*route.header); }));
}

void ItemStore::replace(char kind, int index, const ItemRecord& item) {
  const auto records = records_of(kind);
  if (records == nullptr) return;
  ++revision_;
  const ItemRecord old = (contents_.*records)[slot_of(index)];
  ItemRecord changed = item;
  replace_bars(changed);
  changed.kind = kind;
  changed.number = old.number;
  set_hemispheres(changed);
  (contents_.*records).replace(slot_of(index), changed);
  if (kind != 'W') return;
  index_.forget();
  for (Route& route : contents_.routes)
    for (ItemRecord& point : route.points)
      if (point.number == old.number && point.ident == old.ident && point.position == old.position)
        point = route_point_of(changed, point);
}

void ItemStore::replace_route(int number, Route route) {
  ++revision_;
  if (route.header) {
    replace_bars(*route.header);
    route.header->kind = 'R';
    route.header->route_number = static_cast<std::uint32_t>(number);
  }
  for (ItemRecord& point : route.points) {
    point.kind = 'W';
    point.route_number = static_cast<std::uint32_t>(number);
  }
  contents_.routes[static_cast<std::size_t>(number)] = std::move(route);
}

void ItemStore::set_in_use(char kind, int index, bool in_use) {
  ++revision_;
  if (const auto records = records_of(kind); records != nullptr) {
    ItemRecord item = (contents_.*records)[slot_of(index)];
    item.in_use = flag_of(in_use);
    (contents_.*records).replace(slot_of(index), item);
  } else if (kind == 'R') {
    std::optional<ItemRecord>& header = contents_.routes[static_cast<std::size_t>(index)].header;
    if (header) header->in_use = flag_of(in_use);
  }
}

std::vector<int> ItemStore::duplicates(bool same_place) const {
  std::set<std::tuple<std::string, double, double>> seen;
  std::vector<int> found;
  for (int index = 1; index <= waypoint_count(); ++index) {
    const ItemRecord item = waypoint(index);
    if (item.in_use == 0) continue;
    const geodesy::Position place = same_place ? item.position : geodesy::Position{};
    if (!seen.emplace(base::lower_case(item.ident), place.latitude, place.longitude).second) found.push_back(index);
  }
  return found;
}

int ItemStore::remove_duplicates(bool same_place) {
  const std::vector<int> found = duplicates(same_place);
  for (const int index : found) set_in_use('W', index, false);
  return static_cast<int>(found.size());
}

void ItemStore::forget_routes() {
  ++revision_;
  contents_.routes.fill(Route{});
  contents_.route_index = -1;
  contents_.last_route_index = -1;
  contents_.point_index = 0;
  route_overflow_ = false;
}

void ItemStore::clear_waypoints() {
  contents_.waypoints = {};
  contents_.last_waypoint_number = 0;
  index_.forget();
  forget_routes();
  front_end_.refresh_title();
}

void ItemStore::clear_routes() {
  forget_routes();
  front_end_.refresh_title();
}

void ItemStore::clear_tracks() {
  ++revision_;
  contents_.track_points = {};
  forget_pending_track();
  contents_.first_after_clearing = true;
  front_end_.refresh_title();
}

void ItemStore::clear_events() {
  ++revision_;
  contents_.events = {};
  contents_.next_event_number = Contents{}.next_event_number;
  front_end_.refresh_title();
}

void ItemStore::clear_proximity() {
  ++revision_;
  contents_.proximity = {};
  contents_.last_proximity_number = 0;
  front_end_.refresh_title();
}

void ItemStore::set_almanac(const Almanac& almanac) {
  contents_.almanac = almanac;
  front_end_.refresh_title();
}

void ItemStore::clear_almanac() {
  contents_.almanac = {};
  front_end_.refresh_title();
}

void ItemStore::clear_all() {
  ++revision_;
  contents_ = {};
  route_overflow_ = false;
  index_.forget();
  front_end_.refresh_title();
}

void ItemStore::restore(const Contents& contents) {
  ++revision_;
  contents_ = contents;
  index_.forget();
  front_end_.refresh_title();
}

}  // namespace store
