// Meridians and parallels (of WGS-84), the scale bar, and the round numbers of axes.
#pragma once

#include <string>
#include <vector>

#include "ui/map/viewport.h"

namespace ui::map {

struct GraticuleLine {
  bool is_meridian = false;
  double degrees = 0;
  double pixel = 0;   // from the left edge, or from the top
  std::string label;  // as positions are written: "N51 30", "W007.25"
};

// Lines at least `gap` pixels apart in the middle of the drawing. UTM has no lines of degrees: they are labelled in
// degrees and minutes then.
[[nodiscard]] std::vector<GraticuleLine> graticule(const Viewport& viewport, geodesy::Notation notation, double gap);

struct ScaleBar {
  double pixels = 0;
  std::string label;  // "5 km"
};

// The longest bar of 1, 2 or 5 times a power of ten that is at most `longest` pixels, right in the drawing's middle.
[[nodiscard]] ScaleBar scale_bar(const Viewport& viewport, geodesy::DistanceUnit unit, double longest);

// The least of 1, 2 or 5 times a power of ten that is not below `least`, which must be above 0.
[[nodiscard]] double round_step(double least);
// Likewise in seconds, of which people count 60 and 3600.
[[nodiscard]] double round_time_step(double least);
// "1:05:00" of seconds.
[[nodiscard]] std::string clock_text(double seconds);

}  // namespace ui::map
