// A route as its dialog edits it: name and number as a form, and the order of its points.
#pragma once

#include <string>
#include <vector>

#include "ui/editing/item_form.h"

namespace ui {

class RouteForm {
 public:
  // The route must have a header. The session must outlive the form.
  RouteForm(session::Session& session, int number);

  [[nodiscard]] ItemForm& header() { return header_; }
  // One line for each point, UTF-8: its name and position.
  [[nodiscard]] std::vector<std::string> lines() const;

  // Places from 0; false where there is nothing to do.
  bool move_up(std::size_t place);
  bool move_down(std::size_t place);
  bool remove(std::size_t place);
  // A waypoint of the store (index from 1) becomes the last point; false when the route is full.
  bool add_waypoint(int index);

  // As ItemForm's; a number that another route has is a problem too.
  [[nodiscard]] std::vector<std::string> problems() const;
  // Puts the route back, under its new number; only when there is no problem. False when nothing was changed.
  bool put_back();

 private:
  struct Point {
    store::ItemRecord item;
    std::size_t origin = 0;  // its place at first, kNew for one that was added
  };
  static constexpr std::size_t kNew = store::kRoutePointCapacity;
  [[nodiscard]] bool is_reordered() const;
  [[nodiscard]] bool keeps_its_next(std::size_t place) const;

  session::Session& session_;
  const int number_;
  const std::size_t count_at_first_;
  ItemForm header_;
  std::vector<Point> points_;
};

}  // namespace ui
