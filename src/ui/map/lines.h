// Lines as a drawing needs them: nothing out of sight, and no two points on the same pixel.
#pragma once

#include <span>
#include <vector>

#include "ui/map/scene.h"

namespace ui::map {

using Polyline = std::vector<Pixel>;

// A path in pixels, cut where it is out of sight and where it goes round the world's edge. Points nearer to the one
// before than `step` pixels are left out, but never the ends. A single point gives a line of one.
[[nodiscard]] std::vector<Polyline> visible_lines(std::span<const Vertex> path, const Viewport& viewport, double step);

// Rectangles that are taken, for names that must not overlap.
class LabelSpace {
 public:
  // Takes the rectangle; false when something has a part of it already.
  bool take(double left, double top, double width, double height);

 private:
  struct Box {
    double left, top, right, bottom;
  };
  std::vector<Box> boxes_;
};

// Cells of the drawing that a mark stands in, so that one is drawn where thousands would cover each other.
class Crowd {
 public:
  Crowd(const Viewport& viewport, double cell);
  // Takes the cell of the pixel, which must be in sight; false when it was taken.
  bool take(const Pixel& pixel);

 private:
  double cell_;
  std::size_t columns_;
  std::vector<bool> taken_;
};

}  // namespace ui::map
