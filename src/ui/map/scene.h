// All that the map can show, projected once: records are unpacked when items change, not for every frame. What is
// deleted, or has no place on earth, is left out.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/session.h"
#include "ui/item_ref.h"
#include "ui/map/viewport.h"

namespace ui::map {

// What is drawn, and what the pointer finds.
struct Layers {
  bool names = true, waypoints = true, routes = true, tracks = true, graticule = true;
};

// A waypoint, proximity waypoint or event.
struct Mark {
  Point place;
  ItemRef item;
  std::string name;   // Latin-1
  int symbol = 0;     // a Garmin code
  double radius = 0;  // metres, of proximity waypoints
  bool selected = false;
};

// A track point, or a point of a route.
struct Vertex {
  Point place;
  ItemRef item;
  bool selected = false;
};

// A run of vertices that a line connects.
struct Path {
  std::size_t first = 0, end = 0;
  std::uint8_t colour = store::kDefaultColour;  // index into store::kColourNames
};

class Scene {
 public:
  Scene() = default;
  explicit Scene(const session::Session& session);
  // Looks again at what is selected. Nothing else may have changed.
  void read_selection(const store::ItemStore& items);

  [[nodiscard]] const std::vector<Mark>& marks() const { return marks_; }
  [[nodiscard]] const std::vector<Vertex>& track_points() const { return track_points_; }
  [[nodiscard]] const std::vector<Path>& tracks() const { return tracks_; }
  [[nodiscard]] const std::vector<Vertex>& route_points() const { return route_points_; }
  [[nodiscard]] const std::vector<Path>& routes() const { return routes_; }

  [[nodiscard]] bool empty() const { return marks_.empty() && track_points_.empty() && route_points_.empty(); }
  // Of everything, and of some items: a route without a point is all of its points.
  [[nodiscard]] std::vector<Point> places() const;
  [[nodiscard]] std::vector<Point> places_of(const std::vector<ItemRef>& items) const;

  // The item nearest to the pixel within `reach` pixels; marks come before route points and these before track points,
  // which they cover.
  [[nodiscard]] std::optional<ItemRef> item_at(const Viewport& viewport, const Layers& layers, const Pixel& pixel,
                                               double reach) const;
  // What lies within a rectangle with these corners; routes when all of their points do.
  [[nodiscard]] std::vector<ItemRef> items_within(const Viewport& viewport, const Layers& layers, const Pixel& from,
                                                  const Pixel& to) const;

 private:
  void read_marks(const session::Session& session);
  void read_tracks(const store::ItemStore& items);
  void read_routes(const store::ItemStore& items);

  std::vector<Mark> marks_;
  std::vector<Vertex> track_points_, route_points_;
  std::vector<Path> tracks_, routes_;
};

// What people call it: "Waypoint HOME", "Route 3 TOUR, point 2: HOME", "Track point 17, Sun Dec 31 ...". Latin-1.
[[nodiscard]] std::string item_title(const session::Session& session, const ItemRef& item);

}  // namespace ui::map
