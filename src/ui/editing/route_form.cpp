#include "ui/editing/route_form.h"

#include "base/encoding.h"
#include "base/text.h"

namespace ui {

RouteForm::RouteForm(session::Session& session, int number)
    : session_(session),
      number_(number),
      count_at_first_(session.items.route(number).points.size()),
      header_(session, session.items.route(number).header.value()) {
  for (const store::ItemRecord& point : session.items.route(number).points) points_.push_back({point, points_.size()});
}

std::vector<std::string> RouteForm::lines() const {
  const ItemTexts texts(session_);
  std::vector<std::string> lines;
  for (const Point& point : points_) {
    const geodesy::PositionTexts position = texts.position(point.item.position);
    lines.push_back(base::utf8_from_latin1(std::to_string(lines.size() + 1) + "   " + std::string(point.item.ident) +
                                           "   " + position.first + " " + position.second +
                                           (point.item.in_use == 0 ? "   (deleted)" : "")));
  }
  return lines;
}

bool RouteForm::move_up(std::size_t place) {
  if (place == 0 || place >= points_.size()) return false;
  std::swap(points_[place - 1], points_[place]);
  return true;
}

bool RouteForm::move_down(std::size_t place) { return move_up(place + 1); }

bool RouteForm::remove(std::size_t place) {
  if (place >= points_.size()) return false;
  points_.erase(points_.begin() + static_cast<std::ptrdiff_t>(place));
  return true;
}

bool RouteForm::add_waypoint(int index) {
  if (points_.size() >= store::kRoutePointCapacity) return false;
  store::ItemRecord point = session_.items.waypoint(index);
  point.in_use = 1;
  point.route_drawing = store::route_drawing(session_.settings);
  points_.push_back({point, kNew});
  return true;
}

std::vector<std::string> RouteForm::problems() const {
  std::vector<std::string> problems = header_.problems();
  const auto number = static_cast<int>(header_.result().route_number);
  std::string& problem = problems[header_.find("number")];
  if (problem.empty() && number != number_ && session_.items.route(number).header)
    problem = base::format_text("There is a route %d already", number);
  return problems;
}

bool RouteForm::is_reordered() const {
  if (points_.size() != count_at_first_) return true;
  for (std::size_t i = 0; i < points_.size(); ++i)
    if (points_[i].origin != i) return true;
  return false;
}

bool RouteForm::keeps_its_next(std::size_t place) const {
  const std::size_t origin = points_[place].origin;
  if (place + 1 == points_.size()) return origin + 1 == count_at_first_;
  return points_[place + 1].origin == origin + 1;
}

bool RouteForm::put_back() {
  if (!header_.has_changes() && !is_reordered()) return false;
  store::Route route;
  route.header = header_.result();
  const bool is_selected = route.header->selected != 0;
  for (std::size_t i = 0; i < points_.size(); ++i) {
    store::ItemRecord point = points_[i].item;
    // A link says what leads to the next point, which is another one now.
    if (point.has_route_link != 0 && !keeps_its_next(i)) {
      point.has_route_link = 0;
      point.link_class = 0;
      point.link_subclass = {};
      point.route_link_ident = "";
      if (point.detail_kind == store::kRouteLinkDetails) point.detail_kind = store::kNoDetails;
    }
    if (points_[i].origin == kNew) point.selected = route.header->selected;
    route.points.push_back(point);
  }
  const auto number = static_cast<int>(route.header->route_number);
  const bool selection_changed = header_.fields()[header_.find("selected")].is_changed();
  if (number != number_) session_.items.replace_route(number_, {});
  session_.items.replace_route(number, std::move(route));
  if (selection_changed) session_.items.select('R', number, is_selected);
  return true;
}

}  // namespace ui
