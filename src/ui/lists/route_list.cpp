#include "ui/lists/route_list.h"

#include "base/text.h"

namespace ui::lists {
namespace {

// From the point before that is in use, if there is one; a deleted point has no leg.
std::optional<double> leg_metres(const store::Route& route, std::size_t point) {
  if (route.points[point].in_use == 0) return std::nullopt;
  for (std::size_t before = point; before-- > 0;) {
    if (route.points[before].in_use == 0) continue;
    return geodesy::great_circle_distance(route.points[before].position, route.points[point].position,
                                          geodesy::DistanceUnit::Metres);
  }
  return std::nullopt;
}

}  // namespace

RouteList::RouteList(const session::Session& session) : session_(session) { take_settings(); }

std::vector<ItemRef> RouteList::routes() const {
  std::vector<ItemRef> found;
  for (int number = 0; number < store::kRouteCapacity; ++number)
    if (session_.items.route(number).header) found.push_back({'R', number, 0});
  return found;
}

std::vector<ItemRef> RouteList::points(int number) const {
  std::vector<ItemRef> found;
  const int count = static_cast<int>(session_.items.route(number).points.size());
  for (int point = 1; point <= count; ++point) found.push_back({'R', number, point});
  return found;
}

std::string RouteList::title(RouteField field) const {
  const bool utm = session_.settings.DMSMode == geodesy::Notation::Utm;
  switch (field) {
    case RouteField::Name:
      return "Route";
    case RouteField::Latitude:
      return utm ? "Zone" : "Latitude";
    case RouteField::Longitude:
      return utm ? "Easting, Northing" : "Longitude";
    case RouteField::Leg:
      return "Leg (" + std::string(texts_->distance_unit()) + ")";
    case RouteField::Comment:
      break;
  }
  return "Comment";
}

std::string RouteList::name(const ItemRef& item) const {
  const store::ItemRecord& shown = *record(item);
  if (item.point != 0) return std::string(shown.ident.view());
  std::string text = base::format_text("%d", item.index);
  if (!shown.comment.empty()) text += "  " + std::string(shown.comment.view());
  return text;
}

std::string RouteList::leg(const ItemRef& item) const {
  const store::Route& route = session_.items.route(item.index);
  double metres = 0;
  if (item.point > 0) {
    const std::optional<double> leg = leg_metres(route, static_cast<std::size_t>(item.point) - 1);
    if (!leg) return {};
    metres = *leg;
  } else {
    for (std::size_t point = 0; point < route.points.size(); ++point) metres += leg_metres(route, point).value_or(0);
  }
  return base::format_text("%.3f", metres / geodesy::metres_per(session_.settings.DistValues));
}

std::string RouteList::text(const ItemRef& item, RouteField field) const {
  const store::ItemRecord* shown = record(item);
  if (shown == nullptr) return {};
  if (field == RouteField::Name) return name(item);
  if (field == RouteField::Leg) return leg(item);
  if (item.point == 0) return {};
  if (field == RouteField::Latitude) return texts_->position(shown->position).first;
  if (field == RouteField::Longitude) return texts_->position(shown->position).second;
  return std::string(shown->comment.view());
}

std::optional<int> RouteList::symbol(const ItemRef& item) const {
  const store::ItemRecord* shown = item.point == 0 ? nullptr : record(item);
  return shown == nullptr ? std::nullopt : std::optional(store::symbol_code(*shown, session_.settings));
}

bool RouteList::is_selected(const ItemRef& item) const { return ui::is_selected(session_.items, item); }

bool RouteList::is_in_use(const ItemRef& item) const {
  return !has(item) || (ui::is_in_use(session_.items, {'R', item.index}) && ui::is_in_use(session_.items, item));
}

}  // namespace ui::lists
