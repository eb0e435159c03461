#include "ui/map/viewport.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace ui::map {
namespace {

using std::numbers::pi;

constexpr double kSteepest = 89;                   // degrees of latitude
constexpr double kWorldLatitude = 75;              // as far as an empty map reaches
constexpr double kEarthCircle = 2 * pi * 6367500;  // metres, of the sphere that distances are taken on
constexpr double kFarthest = 200;                  // pixels of the whole world

double wrap(double x) { return x - std::floor(x); }

}  // namespace

Point project(const geodesy::Position& position) {
  const double latitude = std::clamp(position.latitude, -kSteepest, kSteepest) * pi / 180;
  return {wrap(position.longitude / 360 + 0.5), 0.5 - std::asinh(std::tan(latitude)) / (2 * pi)};
}

geodesy::Position unproject(const Point& place) {
  return {std::atan(std::sinh((0.5 - place.y) * 2 * pi)) * 180 / pi, wrap(place.x) * 360 - 180};
}

std::optional<Bounds> bounds_of(std::span<const Point> places) {
  if (places.empty()) return std::nullopt;
  std::vector<double> x;
  x.reserve(places.size());
  for (const Point& place : places) x.push_back(place.x);
  std::ranges::sort(x);
  // All but the widest gap between neighbours, going once round the world.
  double left = x.front(), gap = x.front() + 1 - x.back();
  for (std::size_t i = 1; i < x.size(); ++i) {
    if (x[i] - x[i - 1] <= gap) continue;
    gap = x[i] - x[i - 1];
    left = x[i];
  }
  const auto [top, bottom] = std::ranges::minmax(places, {}, &Point::y);
  return Bounds{left, top.y, 1 - gap, bottom.y - top.y};
}

Bounds world_bounds() {
  const double top = project({kWorldLatitude, 0}).y;
  return {0, top, 1, 1 - 2 * top};
}

void Viewport::resize(double width, double height) {
  width_ = std::max(width, 1.0);
  height_ = std::max(height, 1.0);
  keep_in_world();
}

Viewport Viewport::fitted_to(double width, double height) const {
  Viewport fitted = *this;
  fitted.scale_ *= std::min(width / width_, height / height_);
  fitted.resize(width, height);
  return fitted;
}

void Viewport::show(const Bounds& bounds, double margin, double closest) {
  const double across = std::max(width_ - 2 * margin, width_ / 2), down = std::max(height_ - 2 * margin, height_ / 2);
  scale_ = closest;
  if (bounds.width > 0) scale_ = std::min(scale_, across / bounds.width);
  if (bounds.height > 0) scale_ = std::min(scale_, down / bounds.height);
  centre_on({bounds.left + bounds.width / 2, bounds.top + bounds.height / 2});
}

void Viewport::centre_on(const Point& place) {
  centre_ = place;
  keep_in_world();
}

void Viewport::zoom(double factor, const Pixel& about) {
  const Point fixed = to_place(about);
  scale_ = std::clamp(scale_ * factor, kFarthest, kClosest);
  centre_ = {fixed.x - (about.x - width_ / 2) / scale_, fixed.y - (about.y - height_ / 2) / scale_};
  keep_in_world();
}

void Viewport::pan(double x, double y) { centre_on({centre_.x - x / scale_, centre_.y - y / scale_}); }

Pixel Viewport::to_pixel(const Point& place) const {
  double x = place.x - centre_.x;
  x -= std::floor(x + 0.5);
  return {width_ / 2 + x * scale_, height_ / 2 + (place.y - centre_.y) * scale_};
}

Point Viewport::to_place(const Pixel& pixel) const {
  return {centre_.x + (pixel.x - width_ / 2) / scale_, centre_.y + (pixel.y - height_ / 2) / scale_};
}

bool Viewport::shows(const Pixel& pixel, double margin) const {
  return pixel.x >= -margin && pixel.x <= width_ + margin && pixel.y >= -margin && pixel.y <= height_ + margin;
}

double Viewport::metres_per_pixel(const Point& place) const {
  return kEarthCircle * std::cos(unproject(place).latitude * pi / 180) / scale_;
}

void Viewport::keep_in_world() {
  scale_ = std::clamp(scale_, kFarthest, kClosest);
  centre_ = {wrap(centre_.x), std::clamp(centre_.y, project({kSteepest, 0}).y, project({-kSteepest, 0}).y)};
}

}  // namespace ui::map
