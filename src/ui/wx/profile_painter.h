// Draws the profile of a track, in the colours of the theme.
#pragma once

#include <wx/graphics.h>
#include <wx/window.h>

#include "ui/map/profile_plot.h"

namespace ui::wx {

// Paper and ink of a drawing.
struct PlotColours {
  wxColour paper, ink, grid, height, speed;
};
// Of the theme; for paper and files, a light one.
[[nodiscard]] PlotColours screen_colours();
[[nodiscard]] PlotColours paper_colours();

// Where curves are drawn, in pixels.
struct PlotArea {
  double left = 0, top = 0, width = 1, height = 1;
};

class ProfilePainter {
 public:
  // A unit is a pixel of a plain screen, in the window's pixels.
  explicit ProfilePainter(double unit) : unit_(unit) {}

  // Returns where the curves are; what is missing is said in their place.
  PlotArea draw(wxGraphicsContext& context, const map::ProfilePlot& plot, const PlotColours& colours, double width,
                double height) const;
  // The line, the dots and the text at a point.
  void draw_pointer(wxGraphicsContext& context, const map::ProfilePlot& plot, const PlotColours& colours,
                    const PlotArea& area, const map::ProfilePoint& point) const;

 private:
  struct Scale;

  void draw_axes(const Scale& scale, const map::ProfilePlot& plot, const PlotColours& colours) const;
  void draw_curve(const Scale& scale, const map::Curve& curve, const map::Axis& axis, const wxColour& colour,
                  bool filled) const;

  double unit_;
};

// The place on the axis below of a pixel; the reverse of what draw() does.
[[nodiscard]] double way_at(const map::ProfilePlot& plot, const PlotArea& area, double pixel);

}  // namespace ui::wx
