#include "ui/wx/symbol_pictures.h"

#include <wx/image.h>
#include <wx/settings.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <utility>
#include <vector>

#include "base/text.h"
#include "session/session.h"
#include "ui/wx/symbol_drawings.h"

namespace ui::wx {
namespace {

constexpr double kGrid = 16;
constexpr double kOutline = 0.9;
constexpr double kStroke = 1.6;

struct NamedColour {
  std::string_view name;
  unsigned red_green_blue;
};
// As they stand in the names of symbols.
constexpr std::array kColours{NamedColour{"Red", 0xD62828},    NamedColour{"Green", 0x2A9D3A},
                              NamedColour{"Blue", 0x2563EB},   NamedColour{"White", 0xFFFFFF},
                              NamedColour{"Black", 0x202020},  NamedColour{"Amber", 0xFFB000},
                              NamedColour{"Orange", 0xF97316}, NamedColour{"Violet", 0x8B3FD9}};
// By Ground.
constexpr std::array<unsigned, 11> kGrounds{0x6B7280, 0x303030, 0xCC2936, 0xD97706, 0x92561F, 0x2F8F46,
                                            0x0E8C8C, 0x2563EB, 0x7C3AED, 0xFACC15, 0xF9A8D4};

wxColour colour_of(unsigned value) {
  return wxColour(static_cast<unsigned char>(value >> 16), static_cast<unsigned char>(value >> 8 & 0xFF),
                  static_cast<unsigned char>(value & 0xFF));
}

wxColour colour_of(Ground ground) { return colour_of(kGrounds[static_cast<std::size_t>(ground)]); }

wxColour colour_named(std::string_view name) {
  const auto row = std::ranges::find(kColours, name, &NamedColour::name);
  return colour_of(row == kColours.end() ? kGrounds[0] : row->red_green_blue);
}

// Seen on light ground and on dark: every shape has this line around it.
wxPen outline() { return wxPen(wxColour(112, 112, 112)); }

// The context is in units of the grid for as long as this draws.
class Pencil {
 public:
  explicit Pencil(wxGraphicsContext& context) : context_(context) {}

  void fill(const wxGraphicsPath& path, const wxColour& colour) {
    context_.SetBrush(wxBrush(colour));
    context_.SetPen(context_.CreatePen(wxGraphicsPenInfo(outline().GetColour()).Width(kOutline)));
    context_.DrawPath(path);
  }

  void fill_polygon(std::string_view text, const wxColour& colour) { fill(path_of(text), colour); }

  void fill_circle(double x, double y, double radius, const wxColour& colour) {
    wxGraphicsPath path = context_.CreatePath();
    path.AddCircle(x, y, radius);
    fill(path, colour);
  }

  void fill_box(double left, double top, double width, double height, double corner, const wxColour& colour) {
    wxGraphicsPath path = context_.CreatePath();
    path.AddRoundedRectangle(left, top, width, height, corner);
    fill(path, colour);
  }

  // See symbol_drawings.h.
  void draw(std::string_view text, const wxColour& ink, const wxColour& ground) {
    bool strokes = false;
    bool in_ink = true;
    std::size_t begin = 0;
    for (std::size_t at = 0; at <= text.size(); ++at) {
      const char letter = at < text.size() ? text[at] : 'F';
      if (std::string_view("SFKW").find(letter) == std::string_view::npos) continue;
      paint(path_of(text.substr(begin, at - begin)), in_ink ? ink : ground, strokes);
      if (letter == 'S' || letter == 'F') strokes = letter == 'S';
      if (letter == 'K' || letter == 'W') in_ink = letter == 'W';
      begin = at + 1;
    }
  }

  // In the middle of the square.
  void write(std::string_view letters, const wxColour& colour) {
    const wxString text = wxString::FromUTF8(letters.data(), letters.size());
    const double size = letters.size() > 1 ? 9.3 : 12;
    const wxString face = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT).GetFaceName();
    context_.SetFont(context_.CreateFont(size, face, wxFONTFLAG_BOLD, colour));
    double width = 0, height = 0, descent = 0, leading = 0;
    context_.GetTextExtent(text, &width, &height, &descent, &leading);
    context_.DrawText(text, (kGrid - width) / 2, (kGrid - height) / 2);
  }

 private:
  static double take_number(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
  }

  wxGraphicsPath path_of(std::string_view text) {
    wxGraphicsPath path = context_.CreatePath();
    while (true) {
      text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
      if (text.empty()) return path;
      const char letter = text.front();
      text.remove_prefix(1);
      if (letter == 'Z') {
        path.CloseSubpath();
        continue;
      }
      const double x = take_number(text);
      const double y = take_number(text);
      if (letter == 'M') path.MoveToPoint(x, y);
      if (letter == 'L') path.AddLineToPoint(x, y);
      if (letter == 'O') path.AddCircle(x, y, take_number(text));
      if (letter == 'Q') {
        const double end_x = take_number(text);
        path.AddQuadCurveToPoint(x, y, end_x, take_number(text));
      }
    }
  }

  void paint(const wxGraphicsPath& path, const wxColour& colour, bool strokes) {
    if (strokes) {
      context_.SetPen(context_.CreatePen(wxGraphicsPenInfo(colour).Width(kStroke).Cap(wxCAP_ROUND)));
      context_.StrokePath(path);
    } else {
      context_.SetPen(wxNullPen);
      context_.SetBrush(wxBrush(colour));
      context_.FillPath(path, wxWINDING_RULE);
    }
  }

  wxGraphicsContext& context_;
};

void draw_sign(Pencil& pencil, const SymbolDrawing& sign) {
  const wxColour ground = colour_of(sign.ground);
  pencil.fill_box(0.5, 0.5, 15, 15, 3, ground);
  pencil.draw(sign.pictogram, *wxWHITE, ground);
  if (!sign.letters.empty()) pencil.write(sign.letters, *wxWHITE);
}

void draw_face(Pencil& pencil, const SymbolDrawing& face) {
  const wxColour skin = colour_of(face.ground);
  const wxColour ink(48, 40, 40);
  pencil.fill_circle(8, 8.5, 5.9, skin);
  pencil.draw("O5.8 7.5 .9 O10.2 7.5 .9 S M5.5 11 Q8 13 10.5 11", ink, skin);
  if (face.pictogram.empty()) return;
  // Hair and hats reach beyond the face, where the ground may be as dark as they.
  pencil.draw(face.pictogram, colour_of(0x8A6D5C), skin);
}

struct Shape {
  std::string_view name;
  std::string_view path;
};
// Families whose names go on with their colour.
constexpr std::array kShapes{
    Shape{"Diamond", "M8 1 L15 8 L8 15 L1 8 Z"},
    Shape{"Square", "M2 2 L14 2 L14 14 L2 14 Z"},
    Shape{"Triangle", "M8 1.5 L15 14 L1 14 Z"},
    Shape{"Rectangle", "M1 4 L15 4 L15 12 L1 12 Z"},
    Shape{"Circle", "O8 8 6.5"},
    Shape{"Oval", "M1 8 Q1 3.5 8 3.5 Q15 3.5 15 8 Q15 12.5 8 12.5 Q1 12.5 1 8 Z"},
    Shape{"Block", "M4 4 L12 4 L12 12 L4 12 Z"},
    Shape{"Dot", "O8 8 3.5"},
    Shape{"Buoy", "M8 1 Q13 1.5 13 6 Q13 10 8.8 11 L8.8 15 L7.2 15 L7.2 11 Q3 10 3 6 Q3 1.5 8 1 Z"},
    Shape{"Flag", "M4 1.5 L14.5 5 L4 9 L4 15 L2.7 15 L2.7 1.5 Z"},
    Shape{"Pin", "M8 15.3 L6.6 9.6 Q3.5 8 3.5 5 Q4 .7 8 .7 Q12 .7 12.5 5 Q12.5 8 9.4 9.6 Z"}};

// Upper half and lower half in the two colours, on a stake.
void draw_navaid(Pencil& pencil, const wxColour& upper, const wxColour& lower) {
  pencil.fill_polygon("M7.2 11 L8.8 11 L8.8 15.3 L7.2 15.3 Z", colour_of(kGrounds[0]));
  pencil.fill_polygon("M8 .8 L13 6.3 L3 6.3 Z", upper);
  pencil.fill_polygon("M3 6.3 L13 6.3 L13 11.3 L3 11.3 Z", lower);
}

// Those that their name says all of: "Navaid, Red/White", "Letter A, Red". False when the name is no such.
bool draw_by_name(Pencil& pencil, std::string_view name) {
  const std::size_t comma = name.find(", ");
  if (comma == std::string_view::npos) return false;
  const std::string_view family = name.substr(0, comma);
  const std::vector<std::string_view> colours = base::split(name.substr(comma + 2), '/');
  const wxColour first = colour_named(colours.front());
  if (family.starts_with("Letter ") || family.starts_with("Number ")) {
    pencil.fill_box(0.5, 0.5, 15, 15, 1.5, first);
    pencil.write(family.substr(family.size() - 1), *wxWHITE);
    return true;
  }
  if (family == "Navaid") {
    draw_navaid(pencil, first, colour_named(colours.back()));
    return true;
  }
  const auto shape = std::ranges::find(kShapes, family, &Shape::name);
  if (shape == kShapes.end()) return false;
  pencil.fill_polygon(shape->path, first);
  return true;
}

template <std::size_t N>
const SymbolDrawing* find_drawing(const std::array<SymbolDrawing, N>& drawings, int code) {
  const auto row = std::ranges::find(drawings, code, &SymbolDrawing::code);
  return row == drawings.end() ? nullptr : &*row;
}

void draw(Pencil& pencil, int code) {
  const store::SymbolRow* row =
      std::in_range<std::int16_t>(code) ? store::find_symbol(static_cast<std::int16_t>(code)) : nullptr;
  if (const SymbolDrawing* sign = find_drawing(kSigns, code); sign != nullptr) return draw_sign(pencil, *sign);
  if (const SymbolDrawing* face = find_drawing(kFaces, code); face != nullptr) return draw_face(pencil, *face);
  if (row == nullptr || !draw_by_name(pencil, row->gpx_name)) pencil.fill_circle(8, 8, 3.5, colour_named("Blue"));
}

}  // namespace

void draw_symbol(wxGraphicsContext& context, int code, double left, double top, double size) {
  context.PushState();
  context.Translate(left, top);
  context.Scale(size / kGrid, size / kGrid);
  Pencil pencil(context);
  draw(pencil, code);
  context.PopState();
}

wxBitmap symbol_bitmap(int code, int size) {
  wxImage image(size, size);
  image.InitAlpha();
  std::fill_n(image.GetAlpha(), static_cast<std::size_t>(size) * static_cast<std::size_t>(size), '\0');
  std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
  draw_symbol(*context, code, 0, 0, size);
  context->Flush();
  context.reset();
  return wxBitmap(image);
}

}  // namespace ui::wx
