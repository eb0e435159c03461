// The world as a plane, and the part of it that a drawing shows. Mercator: the whole world is one unit wide, x grows to
// the east from 180 degrees west, y to the south. Positions beyond 89 degrees are drawn on that parallel.
#pragma once

#include <optional>
#include <span>

#include "session/session.h"

namespace ui::map {

struct Point {
  double x = 0, y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

// x from 0 to 1 (the end not included), of any longitude.
[[nodiscard]] Point project(const geodesy::Position& position);
// Degrees; the longitude from -180 to 180, the end not included.
[[nodiscard]] geodesy::Position unproject(const Point& place);

// Part of the plane. `left` is from 0 to 1 and `width` at most 1: what lies round 180 degrees goes beyond 1.
struct Bounds {
  double left = 0, top = 0, width = 0, height = 0;
};
// The narrowest bounds of all places, over the date line where that is shorter; nothing for no places.
[[nodiscard]] std::optional<Bounds> bounds_of(std::span<const Point> places);
// What an empty map shows.
[[nodiscard]] Bounds world_bounds();

// Pixels go from the upper left corner of a drawing.
struct Pixel {
  double x = 0, y = 0;
  friend bool operator==(const Pixel&, const Pixel&) = default;
};

class Viewport {
 public:
  [[nodiscard]] double width() const { return width_; }    // pixels
  [[nodiscard]] double height() const { return height_; }  // pixels
  [[nodiscard]] double scale() const { return scale_; }    // pixels of the whole world's width
  [[nodiscard]] Point centre() const { return centre_; }

  // Another size of the drawing; middle and scale stay.
  void resize(double width, double height);
  // The same part of the world in a drawing of another size, as large as it fits.
  [[nodiscard]] Viewport fitted_to(double width, double height) const;
  // Brings all of the bounds into sight, with a margin in pixels; no closer than `closest` pixels a world.
  void show(const Bounds& bounds, double margin, double closest = kClosest);
  void centre_on(const Point& place);
  // What is at the pixel stays there; a factor above 1 comes closer.
  void zoom(double factor, const Pixel& about);
  // What is drawn moves by so many pixels.
  void pan(double x, double y);

  // Of the world's copies the one nearest to the middle.
  [[nodiscard]] Pixel to_pixel(const Point& place) const;
  [[nodiscard]] Point to_place(const Pixel& pixel) const;
  [[nodiscard]] bool shows(const Pixel& pixel, double margin = 0) const;
  // Metres on the ground that a pixel at this place covers.
  [[nodiscard]] double metres_per_pixel(const Point& place) const;

  static constexpr double kClosest = 8e8;  // about 5 cm a pixel at the equator

 private:
  void keep_in_world();

  double width_ = 1, height_ = 1;
  double scale_ = 1000;
  Point centre_{0.5, 0.5};
};

}  // namespace ui::map
