#include "ui/map/profile.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/text.h"
#include "ui/item_texts.h"

namespace ui::map {
namespace {

// Adds up ups and downs from turn to turn; a turn counts once the height has gone back by kNoise.
class Ascents {
 public:
  void add(double height) {
    if (!turn_) turn_ = highest_ = lowest_ = height;
    if (direction_ == 0) {
      highest_ = std::max(highest_, height);
      lowest_ = std::min(lowest_, height);
      if (height - lowest_ >= kNoise) set_out(1, lowest_);
      if (highest_ - height >= kNoise) set_out(-1, highest_);
    }
    const double ahead = (height - *turn_) * direction_;
    if (ahead > 0) {
      (direction_ > 0 ? climb_ : descent_) += ahead;
      turn_ = height;
    } else if (-ahead >= kNoise) {
      direction_ = -direction_;
      (direction_ > 0 ? climb_ : descent_) -= ahead;
      turn_ = height;
    }
  }
  [[nodiscard]] double climb() const { return climb_; }
  [[nodiscard]] double descent() const { return descent_; }

 private:
  void set_out(int direction, double from) {
    direction_ = direction;
    turn_ = from;
  }

  std::optional<double> turn_;  // the farthest height in the present direction
  double highest_ = 0, lowest_ = 0;
  int direction_ = 0;  // 0 as long as all is noise
  double climb_ = 0, descent_ = 0;
};

// Adds up points one after the other.
class Walk {
 public:
  void add(int index, const store::ItemRecord& item) {
    ProfilePoint point{index, 0, {}, {}, {}};
    const double step = profile_.points.empty() ? 0 : step_to(item.position);
    profile_.length += step;
    since_time_ += step;
    point.distance = profile_.length;
    add_time(point, item.time, step);
    if (store::is_known(item.altitude) && std::isfinite(item.altitude)) add_height(point, item.altitude);
    last_position_ = item.position;
    profile_.points.push_back(point);
  }

  Profile take() {
    if (moving_seconds_ > 0) profile_.moving_speed = moving_metres_ / moving_seconds_;
    profile_.climb = ascents_.climb();
    profile_.descent = ascents_.descent();
    return std::move(profile_);
  }

 private:
  [[nodiscard]] double step_to(const geodesy::Position& position) const {
    const double step = geodesy::great_circle_distance(last_position_, position, geodesy::DistanceUnit::Metres);
    return std::isfinite(step) ? step : 0;
  }

  void add_time(ProfilePoint& point, store::GarminTime time, double step) {
    // A gap: the speed across it is no one's speed here.
    const bool follows = std::exchange(previous_has_time_, time.seconds != 0);
    if (time.seconds == 0) return;
    if (!first_time_) first_time_ = last_time_ = time.seconds;
    point.seconds = static_cast<double>(time.seconds) - static_cast<double>(*first_time_);
    const double seconds = static_cast<double>(time.seconds) - static_cast<double>(last_time_);
    if (seconds > 0) {
      profile_.duration = profile_.duration.value_or(0) + seconds;
      if (since_time_ / seconds > kStandstill) {
        moving_metres_ += since_time_;
        moving_seconds_ += seconds;
      }
      if (follows) point.speed = step / seconds;
    }
    last_time_ = time.seconds;
    since_time_ = 0;
  }

  void add_height(ProfilePoint& point, double height) {
    point.height = height;
    profile_.highest = std::max(profile_.highest.value_or(height), height);
    profile_.lowest = std::min(profile_.lowest.value_or(height), height);
    ascents_.add(height);
  }

  Profile profile_;
  Ascents ascents_;
  geodesy::Position last_position_;
  std::optional<std::uint32_t> first_time_;
  std::uint32_t last_time_ = 0;
  bool previous_has_time_ = false;
  double since_time_ = 0;  // metres since the last point that had a time
  double moving_metres_ = 0, moving_seconds_ = 0;
};

}  // namespace

Profile compute_profile(const store::ItemStore& items, int first, int last) {
  Walk walk;
  for (int i = first; i <= last; ++i)
    if (const store::ItemRecord item = items.track_point(i); item.in_use != 0) walk.add(i, item);
  return walk.take();
}

std::vector<TrackRange> track_ranges(const store::ItemStore& items) {
  std::vector<TrackRange> ranges;
  for (int i = 1; i <= items.track_point_count(); ++i) {
    if (ranges.empty() || items.track_point(i).segment_flag != store::kContinues) ranges.push_back({i, i});
    ranges.back().last = i;
  }
  return ranges;
}

std::string track_title(const store::ItemStore& items, const ItemTexts& texts, int number, const TrackRange& range) {
  const store::ItemRecord start = items.track_point(range.first);
  std::string title = std::to_string(number) + ":";
  const std::string name(base::trim_blanks(start.ident));
  const int points = range.last - range.first + 1;
  title += name.empty() ? base::format_text(" %d point%s", points, points == 1 ? "" : "s") : " " + name;
  const std::string time = texts.time(start.time, 'T');
  return time.empty() ? title : title + " - " + time;
}

}  // namespace ui::map
