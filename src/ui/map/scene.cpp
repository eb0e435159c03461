#include "ui/map/scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <tuple>
#include <utility>

#include "base/text.h"
#include "ui/item_texts.h"
#include "ui/stored_items.h"

namespace ui::map {
namespace {

bool has_place(const store::ItemRecord& item) {
  return item.in_use != 0 && std::isfinite(item.position.latitude) && std::isfinite(item.position.longitude);
}

// The nearest of a kind so far.
struct Nearest {
  double distance;  // pixels, squared
  std::optional<ItemRef> item;

  void look_at(const Viewport& viewport, const Pixel& pixel, const Point& place, const ItemRef& other) {
    const Pixel at = viewport.to_pixel(place);
    const double x = at.x - pixel.x, y = at.y - pixel.y;
    if (x * x + y * y > distance) return;
    distance = x * x + y * y;
    item = other;
  }
};

}  // namespace

Scene::Scene(const session::Session& session) {
  read_marks(session);
  read_tracks(session.items);
  read_routes(session.items);
}

void Scene::read_marks(const session::Session& session) {
  const store::ItemStore& items = session.items;
  const std::array<std::pair<char, int>, 3> kinds{
      {{'W', items.waypoint_count()}, {'I', items.event_count()}, {'P', items.proximity_count()}}};
  for (const auto& [kind, count] : kinds) {
    for (int i = 1; i <= count; ++i) {
      const store::ItemRecord item = record_of(items, {kind, i});
      if (!has_place(item)) continue;
      const double radius = kind == 'P' && std::isfinite(item.proximity_distance) ? item.proximity_distance : 0;
      marks_.push_back({project(item.position),
                        {kind, i},
                        std::string(base::trim_blanks(item.ident)),
                        store::symbol_code(item, session.settings),
                        radius,
                        item.selected != 0});
    }
  }
}

void Scene::read_tracks(const store::ItemStore& items) {
  track_points_.reserve(static_cast<std::size_t>(items.track_point_count()));
  std::uint8_t colour = store::kDefaultColour;
  // A deleted point that began a segment leaves the beginning to the next one.
  bool begins = true;
  for (int i = 1; i <= items.track_point_count(); ++i) {
    const store::ItemRecord item = items.track_point(i);
    // Segments of a log have its colour; only the log's first point names it.
    if (item.segment_flag == store::kStartsNamedTrack) colour = std::min(item.colour, store::kDefaultColour);
    begins = begins || item.segment_flag != store::kContinues;
    if (!has_place(item)) continue;
    if (std::exchange(begins, false)) tracks_.push_back({track_points_.size(), 0, colour});
    track_points_.push_back({project(item.position), {'T', i}, item.selected != 0});
    tracks_.back().end = track_points_.size();
  }
}

void Scene::read_routes(const store::ItemStore& items) {
  for (int number = 0; number < store::kRouteCapacity; ++number) {
    const store::Route& route = items.route(number);
    if (!route.header || route.header->in_use == 0) continue;
    Path path{route_points_.size(), 0};
    for (std::size_t i = 0; i < route.points.size(); ++i) {
      const store::ItemRecord& point = route.points[i];
      if (has_place(point))
        route_points_.push_back(
            {project(point.position), {'R', number, static_cast<int>(i) + 1}, route.header->selected != 0});
    }
    path.end = route_points_.size();
    if (path.end > path.first) routes_.push_back(path);
  }
}

void Scene::read_selection(const store::ItemStore& items) {
  for (Mark& mark : marks_) mark.selected = is_selected(items, mark.item);
  for (Vertex& point : track_points_) point.selected = is_selected(items, point.item);
  for (Vertex& point : route_points_) point.selected = is_selected(items, point.item);
}

std::vector<Point> Scene::places() const {
  std::vector<Point> places;
  places.reserve(marks_.size() + track_points_.size() + route_points_.size());
  for (const Mark& mark : marks_) places.push_back(mark.place);
  for (const Vertex& point : track_points_) places.push_back(point.place);
  for (const Vertex& point : route_points_) places.push_back(point.place);
  return places;
}

std::vector<Point> Scene::places_of(const std::vector<ItemRef>& items) const {
  const auto order = [](const ItemRef& a, const ItemRef& b) {
    return std::tie(a.kind, a.index, a.point) < std::tie(b.kind, b.index, b.point);
  };
  std::vector<ItemRef> wanted = items;
  std::ranges::sort(wanted, order);
  const auto is_wanted = [&](const ItemRef& item) { return std::ranges::binary_search(wanted, item, order); };
  std::vector<Point> places;
  for (const Mark& mark : marks_)
    if (is_wanted(mark.item)) places.push_back(mark.place);
  for (const Vertex& point : track_points_)
    if (is_wanted(point.item)) places.push_back(point.place);
  for (const Vertex& point : route_points_)
    if (is_wanted(point.item) || is_wanted({'R', point.item.index})) places.push_back(point.place);
  return places;
}

std::optional<ItemRef> Scene::item_at(const Viewport& viewport, const Layers& layers, const Pixel& pixel,
                                      double reach) const {
  const auto nearest_of = [&](bool shown, const auto& things) {
    Nearest nearest{reach * reach, std::nullopt};
    if (shown)
      for (const auto& thing : things) nearest.look_at(viewport, pixel, thing.place, thing.item);
    return nearest.item;
  };
  if (const auto item = nearest_of(layers.waypoints, marks_)) return item;
  if (const auto item = nearest_of(layers.routes, route_points_)) return item;
  return nearest_of(layers.tracks, track_points_);
}

std::vector<ItemRef> Scene::items_within(const Viewport& viewport, const Layers& layers, const Pixel& from,
                                         const Pixel& to) const {
  const auto [left, right] = std::minmax(from.x, to.x);
  const auto [top, bottom] = std::minmax(from.y, to.y);
  const auto is_within = [&, left = left, right = right, top = top, bottom = bottom](const auto& thing) {
    const Pixel at = viewport.to_pixel(thing.place);
    return at.x >= left && at.x <= right && at.y >= top && at.y <= bottom;
  };
  std::vector<ItemRef> items;
  if (layers.waypoints)
    for (const Mark& mark : marks_)
      if (is_within(mark)) items.push_back(mark.item);
  if (layers.tracks)
    for (const Vertex& point : track_points_)
      if (is_within(point)) items.push_back(point.item);
  if (layers.routes)
    for (const Path& route : routes_) {
      const std::span points = std::span(route_points_).subspan(route.first, route.end - route.first);
      if (std::ranges::all_of(points, is_within)) items.push_back({'R', points.front().item.index});
    }
  return items;
}

std::string item_title(const session::Session& session, const ItemRef& item) {
  const store::ItemRecord record = record_of(session.items, item);
  const std::string ident(base::trim_blanks(record.ident));
  switch (item.kind) {
    case 'W':
      return "Waypoint " + ident;
    case 'P':
      return "Proximity waypoint " + ident + ", " + ItemTexts(session).distance(record.proximity_distance);
    case 'I':
      return base::format_text("Event %d", item.index);
    case 'R': {
      const std::string name(base::trim_blanks(record_of(session.items, {'R', item.index}).comment));
      const std::string route = base::format_text("Route %d ", item.index) + name;
      return item.point == 0 ? route : route + base::format_text(", point %d: ", item.point) + ident;
    }
    default:
      break;
  }
  const std::string time = ItemTexts(session).time(record.time, 'T');
  return base::format_text("Track point %d", item.index) + (time.empty() ? "" : ", " + time);
}

}  // namespace ui::map
