// Draws the map. It has its own paper and ink, which do not follow the theme: symbols and track colours are made for a
// light ground.
#pragma once

#include <wx/graphics.h>

#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ui/map/lines.h"
#include "ui/map/scene.h"

namespace ui::wx {

class MapPainter {
 public:
  // A unit is a pixel of a plain screen, in the window's pixels; each of these is `sharpness` pixels of the screen.
  MapPainter(const session::Session& session, double unit, double sharpness);

  // All of the map but what moves with the pointer.
  void draw(wxGraphicsContext& context, const map::Scene& scene, const map::Viewport& viewport,
            const map::Layers& layers);

 private:
  struct Frame;

  void draw_graticule(const Frame& frame);
  void draw_tracks(const Frame& frame);
  void draw_routes(const Frame& frame);
  void draw_marks(const Frame& frame);
  void draw_dots(const Frame& frame, const std::vector<const map::Mark*>& marks);
  void draw_symbol_of(const Frame& frame, const map::Mark& mark);
  void draw_names(const Frame& frame, const std::vector<const map::Mark*>& marks);
  void draw_scale_bar(const Frame& frame);
  void draw_label(const Frame& frame, const wxString& text, double left, double top);
  void use_font(const Frame& frame, const wxColour& colour);
  [[nodiscard]] double name_width(wxGraphicsContext& context, std::string_view name);

  const session::Session& session_;
  double unit_, sharpness_;
  std::map<int, wxGraphicsBitmap> symbols_;     // by Garmin code
  std::array<double, 256> character_widths_{};  // of Latin-1, as far as they are known
};

// The colour that a track log's colour number stands for.
[[nodiscard]] wxColour track_colour(std::uint8_t colour);

}  // namespace ui::wx
