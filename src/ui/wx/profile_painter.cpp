#include "ui/wx/profile_painter.h"

#include <wx/settings.h>

#include <algorithm>

#include "base/text.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

// In units.
constexpr double kSide = 64;    // beside the curves, for the numbers
constexpr double kTop = 28;     // above them, for the titles
constexpr double kBottom = 44;  // below them
constexpr double kGap = 6;
constexpr double kAcross = 90;  // from one number to the next
constexpr double kDown = 40;

int steps(double length, double each) { return std::max(1, static_cast<int>(length / each)); }

}  // namespace

PlotColours screen_colours() {
  const wxColour paper = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW);
  const wxColour ink = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT);
  if (paper.GetLuminance() > 0.5)
    return {paper, ink, wxColour(0xDD, 0xDD, 0xDD), wxColour(0x2E, 0x7D, 0x32), wxColour(0x15, 0x65, 0xC0)};
  return {paper, ink, wxColour(0x50, 0x50, 0x50), wxColour(0x81, 0xC7, 0x84), wxColour(0x64, 0xB5, 0xF6)};
}

PlotColours paper_colours() {
  return {*wxWHITE, *wxBLACK, wxColour(0xDD, 0xDD, 0xDD), wxColour(0x2E, 0x7D, 0x32), wxColour(0x15, 0x65, 0xC0)};
}

struct ProfilePainter::Scale {
  wxGraphicsContext& context;
  PlotArea area;
  map::Axis way, heights, speeds;

  Scale(wxGraphicsContext& context_, const PlotArea& area_, const map::ProfilePlot& plot, double unit)
      : context(context_),
        area(area_),
        way(plot.way_axis(steps(area.width, kAcross * unit))),
        heights(plot.height_axis(steps(area.height, kDown * unit))),
        speeds(plot.speed_axis(steps(area.height, kDown * unit))) {}

  [[nodiscard]] double x(double value) const {
    return area.left + (value - way.first) / (way.last - way.first) * area.width;
  }
  [[nodiscard]] double y(double value, const map::Axis& axis) const {
    return area.top + area.height - (value - axis.first) / (axis.last - axis.first) * area.height;
  }
};

PlotArea ProfilePainter::draw(wxGraphicsContext& context, const map::ProfilePlot& plot, const PlotColours& colours,
                              double width, double height) const {
  context.SetPen(*wxTRANSPARENT_PEN);
  context.SetBrush(colours.paper);
  context.DrawRectangle(0, 0, width, height);
  const wxFont font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
  context.SetFont(font, colours.ink);
  const PlotArea area{kSide * unit_, kTop * unit_, std::max(width - 2 * kSide * unit_, 1.0),
                      std::max(height - (kTop + kBottom) * unit_, 1.0)};
  if (const wxString complaint = wx_text(plot.complaint()); !complaint.empty()) {
    double across = 0, down = 0;
    context.GetTextExtent(complaint, &across, &down);
    context.DrawText(complaint, (width - across) / 2, (height - down) / 2);
    return area;
  }
  const Scale scale(context, area, plot, unit_);
  draw_axes(scale, plot, colours);
  if (!plot.heights().empty()) draw_curve(scale, plot.heights(), scale.heights, colours.height, true);
  if (!plot.speeds().empty()) draw_curve(scale, plot.speeds(), scale.speeds, colours.speed, false);
  return area;
}

void ProfilePainter::draw_axes(const Scale& scale, const map::ProfilePlot& plot, const PlotColours& colours) const {
  wxGraphicsContext& context = scale.context;
  const PlotArea& area = scale.area;
  const wxFont font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
  const double right = area.left + area.width, bottom = area.top + area.height, gap = kGap * unit_;
  context.SetPen(wxPen(colours.grid, std::max(1, wxRound(unit_))));
  double across = 0, down = 0;
  context.SetFont(font, colours.ink);
  for (const double value : scale.way.ticks()) {
    const double x = scale.x(value);
    const wxString text = wx_text(plot.way_label(value));
    context.StrokeLine(x, area.top, x, bottom);
    context.GetTextExtent(text, &across, &down);
    context.DrawText(text, x - across / 2, bottom + gap / 2);
  }
  const wxString way_title = wx_text(plot.way_title());
  context.GetTextExtent(way_title, &across, &down);
  context.DrawText(way_title, area.left + (area.width - across) / 2, bottom + gap / 2 + down);
  const auto draw_side = [&](const map::Axis& axis, const wxString& title, const wxColour& colour, bool at_left) {
    context.SetFont(font, colour);
    for (const double value : axis.ticks()) {
      const double y = scale.y(value, axis);
      const wxString text = wx_text(base::format_text("%.6g", value));
      context.GetTextExtent(text, &across, &down);
      context.DrawText(text, at_left ? area.left - gap - across : right + gap, y - down / 2);
      // One set of lines is enough.
      if (at_left || plot.heights().empty()) context.StrokeLine(area.left, y, right, y);
    }
    context.GetTextExtent(title, &across, &down);
    context.DrawText(title, at_left ? gap : area.left + area.width + kSide * unit_ - gap - across, gap / 2);
  };
  if (!plot.heights().empty()) draw_side(scale.heights, wx_text(plot.height_title()), colours.height, true);
  if (!plot.speeds().empty()) draw_side(scale.speeds, wx_text(plot.speed_title()), colours.speed, false);
}

void ProfilePainter::draw_curve(const Scale& scale, const map::Curve& curve, const map::Axis& axis,
                                const wxColour& colour, bool filled) const {
  wxGraphicsContext& context = scale.context;
  const double bottom = scale.area.top + scale.area.height;
  for (const std::vector<map::CurvePoint>& run : curve) {
    const auto points = map::thinned(run, scale.way, static_cast<int>(scale.area.width / unit_) + 1);
    const auto x_of = [&](const map::CurvePoint& point) { return scale.x(point.x); };
    if (points.size() == 1) {
      context.SetPen(*wxTRANSPARENT_PEN);
      context.SetBrush(colour);
      context.DrawEllipse(x_of(points[0]) - 2 * unit_, scale.y(points[0].y, axis) - 2 * unit_, 4 * unit_, 4 * unit_);
      continue;
    }
    wxGraphicsPath line = context.CreatePath();
    line.MoveToPoint(x_of(points.front()), scale.y(points.front().y, axis));
    for (const map::CurvePoint& point : points) line.AddLineToPoint(x_of(point), scale.y(point.y, axis));
    context.SetPen(wxPen(colour, wxRound(2 * unit_)));
    context.StrokePath(line);
    if (!filled) continue;
    line.AddLineToPoint(x_of(points.back()), bottom);
    line.AddLineToPoint(x_of(points.front()), bottom);
    line.CloseSubpath();
    context.SetBrush(wxColour(colour.Red(), colour.Green(), colour.Blue(), 0x40));
    context.FillPath(line);
  }
}

void ProfilePainter::draw_pointer(wxGraphicsContext& context, const map::ProfilePlot& plot, const PlotColours& colours,
                                  const PlotArea& area, const map::ProfilePoint& point) const {
  const std::optional<double> way = plot.x_of(point);
  if (!way || !plot.complaint().empty()) return;
  const Scale scale(context, area, plot, unit_);
  const double x = scale.x(*way), gap = kGap * unit_;
  context.SetPen(wxPen(colours.ink, std::max(1, wxRound(unit_))));
  context.StrokeLine(x, area.top, x, area.top + area.height);
  const wxString text = wx_text(plot.text_of(point));
  double across = 0, down = 0;
  context.SetFont(wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT), colours.ink);
  context.GetTextExtent(text, &across, &down);
  // To the right of the line, or where there is no room, to the left.
  const double left = x + 2 * gap + across < area.left + area.width ? x + gap : std::max(x - gap - across, gap);
  context.DrawText(text, left, area.top + gap, context.CreateBrush(colours.paper));
}

double way_at(const map::ProfilePlot& plot, const PlotArea& area, double pixel) {
  const map::Axis axis = plot.way_axis(1);
  return axis.first + (pixel - area.left) / area.width * (axis.last - axis.first);
}

}  // namespace ui::wx
