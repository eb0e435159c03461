#include "ui/map/lines.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ui::map {
namespace {

// So far beyond the edge a line is followed, for its width.
constexpr double kMargin = 16;

bool may_be_seen(const Pixel& from, const Pixel& to, const Viewport& viewport) {
  const auto [left, right] = std::minmax(from.x, to.x);
  const auto [top, bottom] = std::minmax(from.y, to.y);
  return right >= -kMargin && left <= viewport.width() + kMargin && bottom >= -kMargin &&
         top <= viewport.height() + kMargin;
}

// Collects the points of lines that follow each other.
class Pen {
 public:
  explicit Pen(double step) : step_(step) {}

  void move_to(const Pixel& pixel) {
    lift();
    line_.push_back(pixel);
  }
  void draw_to(const Pixel& pixel) {
    const Pixel& last = line_.back();
    skipped_ = std::abs(pixel.x - last.x) < step_ && std::abs(pixel.y - last.y) < step_;
    if (!skipped_) line_.push_back(pixel);
    end_ = pixel;
  }
  void lift() {
    if (std::exchange(skipped_, false)) line_.push_back(end_);
    if (!line_.empty()) lines_.push_back(std::exchange(line_, {}));
  }
  [[nodiscard]] bool is_down() const { return !line_.empty(); }
  std::vector<Polyline> take() {
    lift();
    return std::move(lines_);
  }

 private:
  double step_;
  std::vector<Polyline> lines_;
  Polyline line_;
  Pixel end_;
  bool skipped_ = false;
};

}  // namespace

std::vector<Polyline> visible_lines(std::span<const Vertex> path, const Viewport& viewport, double step) {
  Pen pen(step);
  if (path.empty()) return {};
  Pixel last = viewport.to_pixel(path.front().place);
  if (path.size() == 1 && viewport.shows(last, kMargin)) pen.move_to(last);
  for (const Vertex& vertex : path.subspan(1)) {
    const Pixel next = viewport.to_pixel(vertex.place);
    // The short way round the world: when the next point is on the far edge, the line leaves here and comes back there.
    const double round = std::round((next.x - last.x) / viewport.scale()) * viewport.scale();
    const Pixel here{next.x - round, next.y};
    if (may_be_seen(last, here, viewport)) {
      if (!pen.is_down()) pen.move_to(last);
      pen.draw_to(here);
    } else {
      pen.lift();
    }
    if (round != 0) {
      pen.lift();
      const Pixel there{last.x + round, last.y};
      if (may_be_seen(there, next, viewport)) {
        pen.move_to(there);
        pen.draw_to(next);
      }
    }
    last = next;
  }
  return pen.take();
}

bool LabelSpace::take(double left, double top, double width, double height) {
  const Box box{left, top, left + width, top + height};
  const auto overlaps = [&](const Box& other) {
    return box.left < other.right && other.left < box.right && box.top < other.bottom && other.top < box.bottom;
  };
  if (std::ranges::any_of(boxes_, overlaps)) return false;
  boxes_.push_back(box);
  return true;
}

Crowd::Crowd(const Viewport& viewport, double cell)
    : cell_(cell),
      columns_(static_cast<std::size_t>(viewport.width() / cell) + 1),
      taken_(columns_ * (static_cast<std::size_t>(viewport.height() / cell) + 1)) {}

bool Crowd::take(const Pixel& pixel) {
  const std::size_t place =
      static_cast<std::size_t>(pixel.y / cell_) * columns_ + static_cast<std::size_t>(pixel.x / cell_);
  if (taken_[place]) return false;
  taken_[place] = true;
  return true;
}

}  // namespace ui::map
