#include "ui/editing/stored_item.h"

#include <algorithm>

#include "ui/stored_items.h"

namespace ui {
namespace {

// The waypoint of the same name and place, of several the one with the point's number; 0 for none.
int waypoint_of(const store::ItemStore& items, const store::ItemRecord& point) {
  int found = 0;
  for (int index = 1; index <= items.waypoint_count(); ++index) {
    const store::ItemRecord waypoint = items.waypoint(index);
    if (!(waypoint.ident == point.ident) || !(waypoint.position == point.position)) continue;
    if (waypoint.number == point.number) return index;
    if (found == 0) found = index;
  }
  return found;
}

// Route points of the waypoint's name and place are its own.
void link_points(store::ItemStore& items, const store::ItemRecord& waypoint) {
  for (int number = 0; number < store::kRouteCapacity; ++number) {
    store::Route route = items.route(number);
    bool is_linked = false;
    for (store::ItemRecord& point : route.points) {
      if (!(point.ident == waypoint.ident) || !(point.position == waypoint.position)) continue;
      is_linked = point.number != waypoint.number || is_linked;
      point.number = waypoint.number;
    }
    if (is_linked) items.replace_route(number, std::move(route));
  }
}

std::optional<EditedItem> edited_of_route(const store::ItemStore& items, const ItemRef& place) {
  const store::ItemRecord* record = find_route_record(items, place);
  if (record == nullptr || find_route_record(items, {'R', place.index}) == nullptr) return std::nullopt;
  if (place.point == 0) return EditedItem{place, *record};
  const int index = waypoint_of(items, *record);
  if (index == 0) return EditedItem{place, *record};
  const store::ItemRecord waypoint = items.waypoint(index);
  return EditedItem{{'W', index}, waypoint, waypoint.number != record->number};
}

int default_symbol(const store::Settings& settings) {
  const auto of_lowrance = [](int number, int symbols) {
    return store::code_of_lowrance_symbol(number, symbols).value_or(store::kDotSymbol);
  };
  switch (settings.IconSelector) {
    case store::IconSet::Lei15:
      return of_lowrance(settings.default_LEI15_icon, store::kFewLowranceSymbols);
    case store::IconSet::Lei28:
      return of_lowrance(settings.default_LEI28_icon, store::kLowranceSymbols);
    case store::IconSet::G12xl:
      return settings.G12XL_II_Symbol_Mapping[static_cast<std::size_t>(std::clamp(settings.default_G12_icon, 0, 15))];
    case store::IconSet::StreetPilot:
      return settings.default_SP_icon;
    default:
      return settings.default_GPSIII_icon;
  }
}

}  // namespace

std::optional<EditedItem> edited_item(const store::ItemStore& items, const ItemRef& place) {
  if (place.kind == 'R') return edited_of_route(items, place);
  const std::optional<store::ItemRecord> item = find_record(items, place);
  return item ? std::optional(EditedItem{place, *item}) : std::nullopt;
}

void put_back(store::ItemStore& items, const EditedItem& edited) {
  const auto& [place, item, must_link] = edited;
  if (place.kind != 'R') {
    if (must_link) link_points(items, items.waypoint(place.index));
    items.replace(place.kind, place.index, item);
    return;
  }
  store::Route route = items.route(place.index);
  (place.point == 0 ? *route.header : route.points[static_cast<std::size_t>(place.point) - 1]) = item;
  items.replace_route(place.index, std::move(route));
}

store::ItemRecord new_item(const session::Session& session, char kind) {
  const store::Settings& settings = session.settings;
  store::ItemRecord item = store::blank_item();
  item.kind = kind;
  const int symbol = default_symbol(settings);
  item.symbol = std::in_range<std::int16_t>(symbol) ? static_cast<std::int16_t>(symbol) : store::kDotSymbol;
  item.symbol_mode = store::mode_of_codes(settings);
  item.display_mode = 3;
  // Events have the time as people of the chosen zone read it.
  const std::int64_t now = session.clock.unix_seconds() + store::offset_seconds(session.time_offset_hours());
  if (kind == 'I') item.time = {static_cast<std::uint32_t>(now - store::kGarminEpochUnix)};
  return item;
}

bool add_item(store::ItemStore& items, const store::ItemRecord& item) {
  items.set_input_time_offset(0);
  items.start_item();
  items.CurrentItem = item;
  if (item.kind == 'I') return items.push_event() == 0;
  return (item.kind == 'P' ? items.push_proximity() : items.push_waypoint(0)) == 0;
}

}  // namespace ui
