#include "ui/wx/map_canvas.h"

#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/menu.h>

#include <chrono>
#include <cmath>

#include "ui/stored_items.h"

namespace ui::wx {
namespace {

// In units of a plain screen.
constexpr int kReach = 9;      // of the pointer
constexpr int kClickable = 4;  // a shorter drag is a click
constexpr int kRing = 16;
constexpr int kMargin = 48;
constexpr double kPanStep = 0.2;  // of the drawing
constexpr double kZoomStep = 1.4;
constexpr double kFluent = 40;         // milliseconds; slower pictures are moved as they are while the map is dragged
constexpr double kOneItemScale = 2e6;  // about 20 m a pixel: the way round one item

map::Pixel pixel_of(const wxMouseEvent& event) {
  return {static_cast<double>(event.GetX()), static_cast<double>(event.GetY())};
}

}  // namespace

MapCanvas::MapCanvas(wxWindow* parent, Desk& desk, Pointer pointer)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE),
      desk_(desk),
      pointer_(std::move(pointer)),
      painter_(desk.session(), FromDIP(100) / 100.0, GetContentScaleFactor()) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  SetMinSize(FromDIP(wxSize(200, 150)));
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { on_paint(); });
  Bind(wxEVT_SIZE, [this](wxSizeEvent&) { on_size(); });
  Bind(wxEVT_LEFT_DOWN, &MapCanvas::on_left_down, this);
  Bind(wxEVT_LEFT_UP, &MapCanvas::on_left_up, this);
  Bind(wxEVT_LEFT_DCLICK, &MapCanvas::on_double_click, this);
  Bind(wxEVT_RIGHT_UP, [this](wxMouseEvent& event) { on_context_menu(pixel_of(event)); });
  Bind(wxEVT_MOTION, &MapCanvas::on_motion, this);
  Bind(wxEVT_MOUSEWHEEL, &MapCanvas::on_wheel, this);
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { end_drag(); });
  Bind(wxEVT_KEY_DOWN, &MapCanvas::on_key, this);
  read_items();
}

void MapCanvas::read_items() {
  scene_ = map::Scene(desk_.session());
  revision_ = desk_.session().items.revision();
  rings_.clear();
  if (shows_all_) show_all();
}

void MapCanvas::show_change(Change change) {
  // Selections are told of before the items that came with them.
  const bool others = revision_ != desk_.session().items.revision();
  if (others || change == Change::Items || change == Change::Settings)
    read_items();
  else if (change == Change::Selection)
    scene_.read_selection(desk_.session().items);
  redraw();
}

void MapCanvas::show_items(const std::vector<ItemRef>& items) {
  const std::vector<map::Point> places = scene_.places_of(items);
  const std::optional<map::Bounds> bounds = map::bounds_of(places);
  if (!bounds) return;
  shows_all_ = false;
  // One place says nothing of a scale: the present one does, unless that is far away.
  const double closest =
      bounds->width == 0 && bounds->height == 0 ? std::max(viewport_.scale(), kOneItemScale) : map::Viewport::kClosest;
  viewport_.show(*bounds, FromDIP(kMargin), closest);
  constexpr std::size_t kMostRings = 500;
  rings_ = places.size() <= kMostRings ? places : std::vector<map::Point>{};
  redraw();
}

void MapCanvas::show_all() {
  const std::optional<map::Bounds> bounds = map::bounds_of(scene_.places());
  shows_all_ = true;
  if (bounds)
    viewport_.show(*bounds, FromDIP(kMargin),
                   bounds->width == 0 && bounds->height == 0 ? kOneItemScale : map::Viewport::kClosest);
  else
    viewport_.show(map::world_bounds(), 0);
  redraw();
}

void MapCanvas::zoom(double factor) {
  shows_all_ = false;
  viewport_.zoom(factor, {viewport_.width() / 2, viewport_.height() / 2});
  redraw();
}

void MapCanvas::set_layers(const map::Layers& layers) {
  layers_ = layers;
  redraw();
}

Drawing MapCanvas::drawing() {
  return [this](wxGraphicsContext& context, double width, double height) {
    painter_.draw(context, scene_, viewport_.fitted_to(width, height), layers_);
  };
}

void MapCanvas::redraw() {
  picture_is_old_ = true;
  Refresh(false);
}

void MapCanvas::on_size() {
  const wxSize size = GetClientSize();
  viewport_.resize(size.x, size.y);
  if (shows_all_) show_all();
  redraw();
}

void MapCanvas::render() {
  const auto start = std::chrono::steady_clock::now();
  const wxSize size = GetClientSize();
  picture_.CreateScaled(std::max(size.x, 1), std::max(size.y, 1), 24, GetContentScaleFactor());
  wxMemoryDC dc(picture_);
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  painter_.draw(*context, scene_, viewport_, layers_);
  picture_viewport_ = viewport_;
  picture_is_old_ = false;
  milliseconds_ = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void MapCanvas::on_paint() {
  wxPaintDC dc(this);
  const bool may_wait = is_moving() && milliseconds_ > kFluent && picture_.IsOk();
  if (picture_is_old_ && !may_wait) render();
  const map::Pixel moved = viewport_.to_pixel(picture_viewport_.centre());
  const wxPoint corner(wxRound(moved.x - viewport_.width() / 2), wxRound(moved.y - viewport_.height() / 2));
  if (corner != wxPoint()) {
    dc.SetBackground(*wxWHITE_BRUSH);
    dc.Clear();
  }
  dc.DrawBitmap(picture_, corner);
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  draw_pointer_marks(*context);
}

void MapCanvas::draw_pointer_marks(wxGraphicsContext& context) {
  context.SetBrush(*wxTRANSPARENT_BRUSH);
  context.SetPen(wxPen(wxColour(0xE0, 0x00, 0x60), FromDIP(3)));
  const double radius = FromDIP(kRing);
  for (const map::Point& place : rings_) {
    const map::Pixel at = viewport_.to_pixel(place);
    if (viewport_.shows(at, radius)) context.DrawEllipse(at.x - radius, at.y - radius, 2 * radius, 2 * radius);
  }
  if (drag_ != Drag::Rectangle) return;
  context.SetPen(wxPen(wxColour(0x20, 0x20, 0x20), FromDIP(1), wxPENSTYLE_SHORT_DASH));
  context.SetBrush(wxColour(0xFF, 0xB3, 0x00, 0x30));
  context.DrawRectangle(std::min(drag_from_.x, drag_to_.x), std::min(drag_from_.y, drag_to_.y),
                        std::abs(drag_to_.x - drag_from_.x), std::abs(drag_to_.y - drag_from_.y));
}

std::optional<ItemRef> MapCanvas::item_at(const map::Pixel& at) const {
  // While a transfer runs the places may mean other items already.
  if (desk_.is_busy() || revision_ != desk_.session().items.revision()) return std::nullopt;
  return scene_.item_at(viewport_, layers_, at, FromDIP(kReach));
}

void MapCanvas::on_left_down(wxMouseEvent& event) {
  SetFocus();
  drag_ = event.ShiftDown() ? Drag::Rectangle : Drag::Click;
  drag_from_ = drag_to_ = pixel_of(event);
  if (!HasCapture()) CaptureMouse();
}

void MapCanvas::on_motion(wxMouseEvent& event) {
  const map::Pixel at = pixel_of(event);
  if (drag_ == Drag::Click && std::hypot(at.x - drag_from_.x, at.y - drag_from_.y) > FromDIP(kClickable))
    drag_ = Drag::Map;
  if (drag_ == Drag::Map) {
    shows_all_ = false;
    viewport_.pan(at.x - drag_to_.x, at.y - drag_to_.y);
    redraw();
  } else if (drag_ == Drag::Rectangle) {
    Refresh(false);
  } else {
    pointer_(item_at(at), map::unproject(viewport_.to_place(at)));
  }
  drag_to_ = at;
}

void MapCanvas::end_drag() {
  drag_ = Drag::None;
  Refresh(false);
}

void MapCanvas::on_left_up(wxMouseEvent& event) {
  if (HasCapture()) ReleaseMouse();
  const Drag drag = drag_;
  drag_to_ = pixel_of(event);
  end_drag();
  if (desk_.is_busy()) return;
  if (drag == Drag::Click) {
    if (const auto item = item_at(drag_from_)) toggle(*item);
  } else if (drag == Drag::Rectangle) {
    for (const ItemRef& item : scene_.items_within(viewport_, layers_, drag_from_, drag_to_))
      desk_.session().items.select(item.kind, item.index, true);
    desk_.tell(Change::Selection);
  }
}

void MapCanvas::toggle(const ItemRef& item) {
  store::ItemStore& items = desk_.session().items;
  items.select(item.kind, item.index, !is_selected(items, item));
  desk_.tell(Change::Selection);
}

void MapCanvas::on_double_click(wxMouseEvent& event) {
  const std::optional<ItemRef> item = item_at(pixel_of(event));
  if (!item || desk_.is_busy()) return;
  toggle(*item);  // takes back what the first of the two clicks did
  // The dialog must not run within the click that opens it.
  CallAfter([this, item = *item] { desk_.edit(item); });
}

void MapCanvas::on_context_menu(const map::Pixel& at) {
  const std::optional<ItemRef> item = item_at(at);
  if (!item || desk_.is_busy()) return;
  wxMenu menu;
  const int edit = menu.Append(wxID_ANY, "&Edit...")->GetId();
  const int list = menu.Append(wxID_ANY, "Show in &List")->GetId();
  const int profile = item->kind == 'T' ? menu.Append(wxID_ANY, "&Profile of the Track")->GetId() : wxID_NONE;
  const bool selected = is_selected(desk_.session().items, *item);
  const int select = menu.Append(wxID_ANY, selected ? "&Unselect" : "&Select")->GetId();
  const int chosen = GetPopupMenuSelectionFromUser(menu);
  if (chosen == edit) desk_.edit(*item);
  if (chosen == list) desk_.show_in_list(*item);
  if (chosen == profile) desk_.show_profile_of(item->index);
  if (chosen == select) toggle(*item);
}

void MapCanvas::on_wheel(wxMouseEvent& event) {
  if (event.GetWheelAxis() != wxMOUSE_WHEEL_VERTICAL || event.GetWheelDelta() == 0) return;
  shows_all_ = false;
  const double notches = static_cast<double>(event.GetWheelRotation()) / event.GetWheelDelta();
  viewport_.zoom(std::pow(kZoomStep, notches), pixel_of(event));
  redraw();
}

void MapCanvas::on_key(wxKeyEvent& event) {
  const auto pan = [this](double x, double y) {
    shows_all_ = false;
    viewport_.pan(x * kPanStep * viewport_.width(), y * kPanStep * viewport_.height());
    redraw();
  };
  switch (event.GetKeyCode()) {
    case '+':
    case '=':
    case WXK_ADD:
    case WXK_NUMPAD_ADD:
      return zoom(kZoomStep);
    case '-':
    case WXK_SUBTRACT:
    case WXK_NUMPAD_SUBTRACT:
      return zoom(1 / kZoomStep);
    case WXK_LEFT:
      return pan(1, 0);
    case WXK_RIGHT:
      return pan(-1, 0);
    case WXK_UP:
      return pan(0, 1);
    case WXK_DOWN:
      return pan(0, -1);
    case WXK_HOME:
      return show_all();
    default:
      event.Skip();
  }
}

}  // namespace ui::wx
