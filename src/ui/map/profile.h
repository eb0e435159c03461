// A track against the way or the time: heights, speeds and what comes of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "session/session.h"
#include "ui/item_texts.h"

namespace ui::map {

struct ProfilePoint {
  int index = 0;                  // of the track point, from 1
  double distance = 0;            // metres along the track
  std::optional<double> seconds;  // since the first time of the track; below 0 where the clock went back
  std::optional<double> height;   // metres
  std::optional<double> speed;    // metres per second on the way here; none without times, or when they do not go on
};

struct Profile {
  std::vector<ProfilePoint> points;       // those that are not deleted
  double length = 0;                      // metres
  std::optional<double> duration;         // seconds in which time went on
  std::optional<double> moving_speed;     // metres per second, of the steps faster than kStandstill
  std::optional<double> highest, lowest;  // metres
  double climb = 0, descent = 0;          // metres; ups and downs below kNoise do not count

  [[nodiscard]] bool has_heights() const { return highest.has_value(); }
  [[nodiscard]] bool has_times() const { return duration.has_value(); }
};

inline constexpr double kStandstill = 0.3;  // metres per second
inline constexpr double kNoise = 5;         // metres that a height must turn back for the turn to be one

// Of the track points from `first` to `last`.
[[nodiscard]] Profile compute_profile(const store::ItemStore& items, int first, int last);

// The run of points from one whose segment flag is not 0 to the next such.
struct TrackRange {
  int first = 0, last = 0;  // indices from 1
};
[[nodiscard]] std::vector<TrackRange> track_ranges(const store::ItemStore& items);
// "1: NAME - Sun Dec 31 00:00:00 1989" of the track with this number from 1; without what is not known. Latin-1.
[[nodiscard]] std::string track_title(const store::ItemStore& items, const ItemTexts& texts, int number,
                                      const TrackRange& range);

}  // namespace ui::map
