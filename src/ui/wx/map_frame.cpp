#include "ui/wx/map_frame.h"

#include <wx/menu.h>
#include <wx/sizer.h>

#include <array>

#include "ui/item_texts.h"
#include "ui/stored_items.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr int kWidth = 720;
constexpr int kHeight = 540;
constexpr int kPositionField = 200;
constexpr double kZoomStep = 2;

struct LayerEntry {
  const char* label;
  bool map::Layers::*layer;
};
constexpr std::array kLayerEntries{
    LayerEntry{"&Names", &map::Layers::names}, LayerEntry{"&Waypoints", &map::Layers::waypoints},
    LayerEntry{"&Routes", &map::Layers::routes}, LayerEntry{"&Tracks", &map::Layers::tracks},
    LayerEntry{"&Graticule", &map::Layers::graticule}};

}  // namespace

MapFrame::MapFrame(wxWindow* parent, Desk& desk)
    : wxFrame(parent, wxID_ANY, "Map", wxDefaultPosition, wxDefaultSize, wxDEFAULT_FRAME_STYLE, "map"),
      desk_(desk),
      registration_(desk, *this) {
  canvas_ = new MapCanvas(this, desk, [this](const auto& item, const auto& position) { show_pointer(item, position); });
  make_menu();
  CreateStatusBar(2);
  const std::array widths{-1, FromDIP(kPositionField)};
  GetStatusBar()->SetStatusWidths(widths.size(), widths.data());
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(canvas_, wxSizerFlags(1).Expand());
  SetSizer(sizer);
  SetSize(FromDIP(wxSize(kWidth, kHeight)));
  Layout();
  canvas_->SetFocus();
}

void MapFrame::make_menu() {
  auto* bar = new wxMenuBar;
  bar->Append(make_drawing_menu(*this, "Map", canvas_->drawing(), *canvas_), "&Map");
  auto* view = new wxMenu;
  const auto add = [this, view](int id, const wxString& label, auto action) {
    Bind(
        wxEVT_MENU, [action](wxCommandEvent&) { action(); }, view->Append(id, label)->GetId());
  };
  add(wxID_ZOOM_IN, "Zoom &In", [this] { canvas_->zoom(kZoomStep); });
  add(wxID_ZOOM_OUT, "Zoom &Out", [this] { canvas_->zoom(1 / kZoomStep); });
  add(wxID_ZOOM_FIT, "Show &All", [this] { canvas_->show_all(); });
  view->AppendSeparator();
  for (const LayerEntry& entry : kLayerEntries) {
    wxMenuItem* item = view->AppendCheckItem(wxID_ANY, entry.label);
    item->Check(canvas_->layers().*entry.layer);
    Bind(
        wxEVT_MENU,
        [this, layer = entry.layer](wxCommandEvent& event) {
          map::Layers layers = canvas_->layers();
          layers.*layer = event.IsChecked();
          canvas_->set_layers(layers);
        },
        item->GetId());
  }
  bar->Append(view, "&View");
  SetMenuBar(bar);
}

void MapFrame::show_change(Change change) {
  if (change != Change::Picture) canvas_->show_change(change);
}

void MapFrame::show_items(const std::vector<ItemRef>& items) { canvas_->show_items(items); }

void MapFrame::show_pointer(const std::optional<ItemRef>& item, const geodesy::Position& position) {
  const ItemTexts texts(desk_.session());
  const auto text_of = [&](const geodesy::Position& place) {
    const geodesy::PositionTexts columns = texts.position(place);
    return columns.first + " " + columns.second;
  };
  std::string title;
  if (item)
    title = map::item_title(desk_.session(), *item) + "  " + text_of(record_of(desk_.session().items, *item).position);
  SetStatusText(wx_text(title), 0);
  SetStatusText(wx_text(text_of(position)), 1);
}

}  // namespace ui::wx
