#include "ui/wx/program_icon.h"

#include <wx/graphics.h>

#include <algorithm>
#include <memory>
#include <numbers>

namespace ui::wx {
namespace {

// The drawing measures 64 by 64 with its centre at 0, 0.
constexpr double kDrawing = 64;
constexpr double kDisc = 30;
constexpr double kRim = 4;
constexpr double kMarkFrom = 20, kMarkTo = 26;
constexpr double kNeedleLength = 20, kNeedleWidth = 7;
constexpr double kNeedleTurn = std::numbers::pi / 6;
constexpr double kPin = 2.5;
// Below this size, in pixels, only the quarters are marked, in bolder strokes.
constexpr int kFineFrom = 32;

constexpr char kBlue[] = "#1b3a5c", kGold[] = "#e8b03a", kWhite[] = "#ffffff", kRed[] = "#e03c31";

void draw_marks(wxGraphicsContext& context, bool fine) {
  context.SetPen(context.CreatePen(wxGraphicsPenInfo(wxColour(kWhite), fine ? 2.5 : 4)));
  const int marks = fine ? 12 : 4;
  for (int i = 0; i < marks; ++i) {
    context.StrokeLine(0, -kMarkFrom, 0, -kMarkTo);
    context.Rotate(2 * std::numbers::pi / marks);
  }
}

void draw_half_needle(wxGraphicsContext& context, const wxColour& colour, double length, double width) {
  wxGraphicsPath path = context.CreatePath();
  path.MoveToPoint(0, -length);
  path.AddLineToPoint(width, 0);
  path.AddLineToPoint(-width, 0);
  path.CloseSubpath();
  context.SetPen(wxNullGraphicsPen);
  context.SetBrush(wxBrush(colour));
  context.FillPath(path);
}

}  // namespace

wxImage draw_program_icon(int size) {
  wxImage image(size, size);
  image.InitAlpha();
  std::fill_n(image.GetAlpha(), static_cast<std::size_t>(size) * static_cast<std::size_t>(size), wxByte(0));
  // The image has the drawing when the context is gone.
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
  if (context == nullptr) return image;
  context->SetAntialiasMode(wxANTIALIAS_DEFAULT);
  context->Scale(size / kDrawing, size / kDrawing);
  context->Translate(kDrawing / 2, kDrawing / 2);
  context->SetBrush(wxBrush(wxColour(kBlue)));
  context->SetPen(context->CreatePen(wxGraphicsPenInfo(wxColour(kGold), kRim)));
  context->DrawEllipse(-kDisc + kRim / 2, -kDisc + kRim / 2, 2 * kDisc - kRim, 2 * kDisc - kRim);
  const bool fine = size >= kFineFrom;
  draw_marks(*context, fine);
  context->Rotate(kNeedleTurn);
  const double width = fine ? kNeedleWidth : kNeedleWidth * 1.2;
  draw_half_needle(*context, kRed, kNeedleLength, width);
  context->Rotate(std::numbers::pi);
  draw_half_needle(*context, kWhite, kNeedleLength, width);
  context->SetBrush(wxBrush(wxColour(kGold)));
  if (fine) context->DrawEllipse(-kPin, -kPin, 2 * kPin, 2 * kPin);
  return image;
}

}  // namespace ui::wx
