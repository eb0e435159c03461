#include "ui/wx/map_painter.h"

#include <wx/font.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>
#include <span>

#include "ui/map/graticule.h"
#include "ui/wx/symbol_pictures.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

const wxColour kPaper(0xF7, 0xF4, 0xEA);
const wxColour kInk(0x22, 0x22, 0x22);
const wxColour kGrid(0xC9, 0xD3, 0xD8);
const wxColour kGridText(0x5B, 0x70, 0x7A);
const wxColour kRoute(0x8E, 0x24, 0xAA);
const wxColour kProximity(0xC6, 0x28, 0x28);
const wxColour kEvent(0xD8, 0x43, 0x15);
const wxColour kDot(0x1F, 0x4E, 0x9E);
const wxColour kSelected(0xFF, 0xB3, 0x00);
const wxColour kLabelGround(0xF7, 0xF4, 0xEA, 0xC8);

// By the number in store::kColourNames; the last is that of logs which name none.
constexpr std::array<std::array<unsigned char, 3>, 17> kTrackColours{{{0, 0, 0},
                                                                      {128, 0, 0},
                                                                      {0, 128, 0},
                                                                      {128, 128, 0},
                                                                      {0, 0, 128},
                                                                      {128, 0, 128},
                                                                      {0, 128, 128},
                                                                      {192, 192, 192},
                                                                      {128, 128, 128},
                                                                      {255, 0, 0},
                                                                      {0, 200, 0},
                                                                      {230, 210, 0},
                                                                      {0, 0, 255},
                                                                      {255, 0, 255},
                                                                      {0, 200, 220},
                                                                      {255, 255, 255},
                                                                      {0xD0, 0x30, 0x10}}};

// Sizes in units.
constexpr double kSymbol = 18;
constexpr double kDotSize = 3;
constexpr double kGraticuleGap = 110;
constexpr double kScaleBar = 140;
constexpr double kEdge = 4;

constexpr std::size_t kMostSymbols = 1500;  // more are drawn as dots
constexpr std::size_t kMostNames = 250;
constexpr std::size_t kMostNamesTried = 1500;
// Long lines are drawn in pieces: the renderer's work grows faster than their length.
constexpr std::size_t kPiece = 64;

void stroke(wxGraphicsContext& context, const map::Polyline& line) {
  if (line.size() == 1) context.StrokeLine(line[0].x - 1, line[0].y, line[0].x + 1, line[0].y);
  for (std::size_t first = 0; first + 1 < line.size(); first += kPiece) {
    const std::size_t end = std::min(first + kPiece + 1, line.size());
    wxGraphicsPath path = context.CreatePath();
    path.MoveToPoint(line[first].x, line[first].y);
    for (std::size_t i = first + 1; i < end; ++i) path.AddLineToPoint(line[i].x, line[i].y);
    context.StrokePath(path);
  }
}

void draw_disc(wxGraphicsContext& context, const map::Pixel& at, double radius) {
  context.DrawEllipse(at.x - radius, at.y - radius, 2 * radius, 2 * radius);
}

}  // namespace

wxColour track_colour(std::uint8_t colour) {
  const auto& row = kTrackColours[std::min<std::size_t>(colour, store::kDefaultColour)];
  return {row[0], row[1], row[2]};
}

struct MapPainter::Frame {
  wxGraphicsContext& context;
  const map::Scene& scene;
  const map::Viewport& viewport;
  const map::Layers& layers;
};

MapPainter::MapPainter(const session::Session& session, double unit, double sharpness)
    : session_(session), unit_(unit), sharpness_(sharpness) {}

void MapPainter::draw(wxGraphicsContext& context, const map::Scene& scene, const map::Viewport& viewport,
                      const map::Layers& layers) {
  const Frame frame{context, scene, viewport, layers};
  context.SetPen(*wxTRANSPARENT_PEN);
  context.SetBrush(kPaper);
  context.DrawRectangle(0, 0, viewport.width(), viewport.height());
  if (layers.graticule) draw_graticule(frame);
  if (layers.tracks) draw_tracks(frame);
  if (layers.routes) draw_routes(frame);
  if (layers.waypoints) draw_marks(frame);
  draw_scale_bar(frame);
  if (!scene.empty()) return;
  use_font(frame, kInk);
  double width = 0, height = 0;
  const wxString text = "Nothing is loaded";
  context.GetTextExtent(text, &width, &height);
  draw_label(frame, text, (viewport.width() - width) / 2, (viewport.height() - height) / 2);
}

void MapPainter::draw_graticule(const Frame& frame) {
  const double width = frame.viewport.width(), height = frame.viewport.height();
  const auto lines = map::graticule(frame.viewport, session_.settings.DMSMode, kGraticuleGap * unit_);
  frame.context.SetPen(wxPen(kGrid, std::max(1, wxRound(unit_))));
  for (const map::GraticuleLine& line : lines) {
    if (line.is_meridian)
      frame.context.StrokeLine(line.pixel, 0, line.pixel, height);
    else
      frame.context.StrokeLine(0, line.pixel, width, line.pixel);
  }
  use_font(frame, kGridText);
  for (const map::GraticuleLine& line : lines) {
    const wxString text = wx_text(line.label);
    double across = 0, down = 0;
    frame.context.GetTextExtent(text, &across, &down);
    // Meridians are named at the top, parallels at the left; not where both would meet.
    if (line.is_meridian && line.pixel > across + kEdge * unit_)
      draw_label(frame, text, line.pixel - across / 2, kEdge * unit_);
    else if (!line.is_meridian && line.pixel > 3 * down && line.pixel < height - 3 * down)
      draw_label(frame, text, kEdge * unit_, line.pixel - down / 2);
  }
}

void MapPainter::draw_tracks(const Frame& frame) {
  const std::span points(frame.scene.track_points());
  for (const map::Path& track : frame.scene.tracks()) {
    const auto lines =
        map::visible_lines(points.subspan(track.first, track.end - track.first), frame.viewport, 1.5 * unit_);
    if (track_colour(track.colour).GetLuminance() > 0.7) {
      // Light colours would be lost on the paper.
      frame.context.SetPen(wxPen(kGridText, wxRound(4 * unit_)));
      for (const map::Polyline& line : lines) stroke(frame.context, line);
    }
    frame.context.SetPen(wxPen(track_colour(track.colour), wxRound(2 * unit_)));
    for (const map::Polyline& line : lines) stroke(frame.context, line);
  }
  map::Crowd crowd(frame.viewport, 3 * unit_);
  frame.context.SetPen(*wxTRANSPARENT_PEN);
  frame.context.SetBrush(kSelected);
  for (const map::Vertex& point : points) {
    if (!point.selected) continue;
    const map::Pixel at = frame.viewport.to_pixel(point.place);
    if (frame.viewport.shows(at) && crowd.take(at))
      frame.context.DrawRectangle(at.x - 2 * unit_, at.y - 2 * unit_, 4 * unit_, 4 * unit_);
  }
}

void MapPainter::draw_routes(const Frame& frame) {
  wxGraphicsContext& context = frame.context;
  for (const map::Path& route : frame.scene.routes()) {
    const std::span points = std::span(frame.scene.route_points()).subspan(route.first, route.end - route.first);
    const auto lines = map::visible_lines(points, frame.viewport, 0.5 * unit_);
    if (points.front().selected) {
      context.SetPen(wxPen(kSelected, wxRound(6 * unit_)));
      for (const map::Polyline& line : lines) stroke(context, line);
    }
    context.SetPen(wxPen(kRoute, wxRound(2 * unit_)));
    for (const map::Polyline& line : lines) stroke(context, line);
    context.SetBrush(kPaper);
    for (const map::Vertex& point : points) {
      const map::Pixel at = frame.viewport.to_pixel(point.place);
      if (frame.viewport.shows(at)) context.DrawRectangle(at.x - 3 * unit_, at.y - 3 * unit_, 6 * unit_, 6 * unit_);
    }
  }
}

void MapPainter::draw_marks(const Frame& frame) {
  std::vector<const map::Mark*> marks;
  map::Crowd crowd(frame.viewport, 4 * unit_);
  frame.context.SetPen(wxPen(kProximity, wxRound(2 * unit_)));
  frame.context.SetBrush(wxColour(kProximity.Red(), kProximity.Green(), kProximity.Blue(), 0x20));
  for (const map::Mark& mark : frame.scene.marks()) {
    const map::Pixel at = frame.viewport.to_pixel(mark.place);
    const double radius = mark.radius / frame.viewport.metres_per_pixel(mark.place);
    // A circle far greater than the drawing has no edge to see here.
    if (mark.item.kind == 'P' && radius > 1 && frame.viewport.shows(at, radius) && radius < 1e5)
      draw_disc(frame.context, at, radius);
    // Of those in one place a selected one must be seen.
    if (frame.viewport.shows(at) && (crowd.take(at) || mark.selected)) marks.push_back(&mark);
  }
  if (marks.size() > kMostSymbols) {
    draw_dots(frame, marks);
  } else {
    for (const map::Mark* mark : marks) draw_symbol_of(frame, *mark);
  }
  if (frame.layers.names) draw_names(frame, marks);
}

void MapPainter::draw_dots(const Frame& frame, const std::vector<const map::Mark*>& marks) {
  const wxAntialiasMode smooth = frame.context.GetAntialiasMode();
  frame.context.SetAntialiasMode(wxANTIALIAS_NONE);
  frame.context.SetPen(*wxTRANSPARENT_PEN);
  for (const bool selected : {false, true}) {
    frame.context.SetBrush(selected ? kSelected : kDot);
    const double size = (selected ? kDotSize + 1 : kDotSize) * unit_;
    map::Crowd crowd(frame.viewport, 2 * unit_);
    for (const map::Mark* mark : marks) {
      const map::Pixel at = frame.viewport.to_pixel(mark->place);
      if (mark->selected == selected && crowd.take(at))
        frame.context.DrawRectangle(std::round(at.x - size / 2), std::round(at.y - size / 2), size, size);
    }
  }
  frame.context.SetAntialiasMode(smooth);
}

void MapPainter::draw_symbol_of(const Frame& frame, const map::Mark& mark) {
  wxGraphicsContext& context = frame.context;
  const map::Pixel at = frame.viewport.to_pixel(mark.place);
  const double size = kSymbol * unit_;
  context.SetPen(*wxTRANSPARENT_PEN);
  if (mark.selected) {
    context.SetBrush(kSelected);
    draw_disc(context, at, size * 0.65);
  }
  if (mark.item.kind == 'I') {
    context.SetBrush(kEvent);
    wxGraphicsPath diamond = context.CreatePath();
    diamond.MoveToPoint(at.x, at.y - size / 3);
    diamond.AddLineToPoint(at.x + size / 3, at.y);
    diamond.AddLineToPoint(at.x, at.y + size / 3);
    diamond.AddLineToPoint(at.x - size / 3, at.y);
    diamond.CloseSubpath();
    context.FillPath(diamond);
    return;
  }
  wxGraphicsBitmap& picture = symbols_[mark.symbol];
  if (picture.IsNull()) picture = context.CreateBitmap(symbol_bitmap(mark.symbol, wxRound(size * sharpness_)));
  context.DrawBitmap(picture, at.x - size / 2, at.y - size / 2, size, size);
}

void MapPainter::draw_names(const Frame& frame, const std::vector<const map::Mark*>& marks) {
  use_font(frame, kInk);
  double height = 0;
  frame.context.GetTextExtent("Ag", nullptr, &height);
  map::LabelSpace space;
  std::size_t drawn = 0, tried = 0;
  for (const map::Mark* mark : marks) {
    if (drawn == kMostNames || ++tried > kMostNamesTried) break;
    if (mark->name.empty()) continue;
    const map::Pixel at = frame.viewport.to_pixel(mark->place);
    const double left = at.x + kSymbol / 2 * unit_, top = at.y - height / 2;
    if (!space.take(left, top, name_width(frame.context, mark->name) + 2 * unit_, height)) continue;
    draw_label(frame, wx_text(mark->name), left, top);
    ++drawn;
  }
}

void MapPainter::draw_scale_bar(const Frame& frame) {
  const map::ScaleBar bar = map::scale_bar(frame.viewport, session_.settings.DistValues, kScaleBar * unit_);
  const double left = 12 * unit_, bottom = frame.viewport.height() - 12 * unit_, tick = 5 * unit_;
  use_font(frame, kInk);
  const wxString text = wx_text(bar.label);
  double width = 0, height = 0;
  frame.context.GetTextExtent(text, &width, &height);
  frame.context.SetPen(*wxTRANSPARENT_PEN);
  frame.context.SetBrush(kLabelGround);
  frame.context.DrawRectangle(left - tick, bottom - height - 2 * tick, std::max(bar.pixels, width) + 2 * tick,
                              height + 3 * tick);
  frame.context.SetPen(wxPen(kInk, wxRound(2 * unit_)));
  const std::array<wxPoint2DDouble, 4> points{
      {{left, bottom - tick}, {left, bottom}, {left + bar.pixels, bottom}, {left + bar.pixels, bottom - tick}}};
  frame.context.StrokeLines(points.size(), points.data());
  frame.context.DrawText(text, left + kEdge * unit_, bottom - height - 2 * unit_);
}

// The paper shows faintly behind texts, so that lines do not cross them out.
void MapPainter::draw_label(const Frame& frame, const wxString& text, double left, double top) {
  frame.context.DrawText(text, left, top, frame.context.CreateBrush(kLabelGround));
}

void MapPainter::use_font(const Frame& frame, const wxColour& colour) {
  frame.context.SetFont(wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT).Smaller(), colour);
}

double MapPainter::name_width(wxGraphicsContext& context, std::string_view name) {
  double width = 0;
  for (const char character : name) {
    double& known = character_widths_[static_cast<unsigned char>(character)];
    if (known == 0) context.GetTextExtent(wx_text(std::string_view(&character, 1)), &known, nullptr);
    width += known;
  }
  return width;
}

}  // namespace ui::wx
