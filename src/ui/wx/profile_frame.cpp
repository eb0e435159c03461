#include "ui/wx/profile_frame.h"

#include <wx/dcbuffer.h>
#include <wx/menu.h>
#include <wx/sizer.h>

#include <algorithm>
#include <memory>

#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr int kWidth = 760;
constexpr int kHeight = 440;

}  // namespace

ProfileFrame::ProfileFrame(wxWindow* parent, Desk& desk)
    : wxFrame(parent, wxID_ANY, "Profile", wxDefaultPosition, wxDefaultSize, wxDEFAULT_FRAME_STYLE, "profile"),
      desk_(desk),
      painter_(FromDIP(100) / 100.0),
      registration_(desk, *this) {
  SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
  CreateStatusBar();
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(make_head(), wxSizerFlags().Expand().Border(wxALL, FromDIP(6)));
  canvas_ = new wxWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxFULL_REPAINT_ON_RESIZE);
  canvas_->SetBackgroundStyle(wxBG_STYLE_PAINT);
  canvas_->SetMinSize(FromDIP(wxSize(300, 150)));
  canvas_->Bind(wxEVT_PAINT, [this](wxPaintEvent&) { on_paint(); });
  canvas_->Bind(wxEVT_MOTION, [this](wxMouseEvent& event) { on_motion(event); });
  canvas_->Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { on_double_click(); });
  sizer->Add(canvas_, wxSizerFlags(1).Expand());
  auto* bar = new wxMenuBar;
  bar->Append(make_drawing_menu(*this, "Profile", drawing(), *canvas_), "&Profile");
  SetMenuBar(bar);
  figures_ = new wxStaticText(this, wxID_ANY, "");
  sizer->Add(figures_, wxSizerFlags().Expand().Border(wxALL, FromDIP(6)));
  SetSizer(sizer);
  SetSize(FromDIP(wxSize(kWidth, kHeight)));
  read_tracks();
}

wxSizer* ProfileFrame::make_head() {
  auto* head = new wxBoxSizer(wxHORIZONTAL);
  tracks_ = new wxChoice(this, wxID_ANY);
  by_distance_ = new wxRadioButton(this, wxID_ANY, "Against &distance", wxDefaultPosition, wxDefaultSize, wxRB_GROUP);
  by_time_ = new wxRadioButton(this, wxID_ANY, "Against &time");
  const wxSizerFlags flags = wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(8));
  head->Add(new wxStaticText(this, wxID_ANY, "T&rack:"), wxSizerFlags().CentreVertical());
  head->Add(tracks_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(8)));
  head->Add(by_distance_, flags);
  head->Add(by_time_, flags);
  tracks_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { compute(); });
  by_distance_->Bind(wxEVT_RADIOBUTTON, [this](wxCommandEvent&) { compute(); });
  by_time_->Bind(wxEVT_RADIOBUTTON, [this](wxCommandEvent&) { compute(); });
  return head;
}

void ProfileFrame::read_tracks() {
  const int chosen = tracks_->GetSelection();
  revision_ = desk_.session().items.revision();
  ranges_ = map::track_ranges(desk_.session().items);
  const ItemTexts texts(desk_.session());
  wxArrayString titles;
  for (std::size_t i = 0; i < ranges_.size(); ++i)
    titles.push_back(wx_text(map::track_title(desk_.session().items, texts, static_cast<int>(i) + 1, ranges_[i])));
  tracks_->Set(titles);
  tracks_->Enable(!ranges_.empty());
  if (!ranges_.empty()) tracks_->SetSelection(std::clamp(chosen, 0, static_cast<int>(ranges_.size()) - 1));
  compute();
}

void ProfileFrame::compute() {
  // While a transfer runs the list of tracks is not that of the store.
  if (revision_ != desk_.session().items.revision()) return;
  const int chosen = tracks_->GetSelection();
  map::Profile profile;
  if (chosen != wxNOT_FOUND) {
    const map::TrackRange& range = ranges_[static_cast<std::size_t>(chosen)];
    profile = map::compute_profile(desk_.session().items, range.first, range.last);
  }
  const bool against_time = by_time_->GetValue();
  plot_ = {desk_.session(), std::move(profile), against_time ? map::Against::Time : map::Against::Distance};
  pointed_.reset();
  figures_->SetLabel(ranges_.empty() ? "" : wx_text(plot_.figures()));
  Layout();
  canvas_->Refresh(false);
}

void ProfileFrame::show_change(Change change) {
  const bool others = revision_ != desk_.session().items.revision();
  if (others || change == Change::Items || change == Change::Settings) read_tracks();
}

void ProfileFrame::show_track_of(int track_point) {
  const auto place = std::ranges::find_if(
      ranges_, [&](const auto& range) { return track_point >= range.first && track_point <= range.last; });
  if (place == ranges_.end()) return;
  tracks_->SetSelection(static_cast<int>(place - ranges_.begin()));
  compute();
}

void ProfileFrame::show_against(map::Against against) {
  (against == map::Against::Time ? by_time_ : by_distance_)->SetValue(true);
  compute();
}

Drawing ProfileFrame::drawing() const {
  return [this](wxGraphicsContext& context, double width, double height) {
    painter_.draw(context, plot_, paper_colours(), width, height);
  };
}

void ProfileFrame::on_paint() {
  wxAutoBufferedPaintDC dc(canvas_);
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::CreateFromUnknownDC(dc));
  const wxSize size = canvas_->GetClientSize();
  const PlotColours colours = screen_colours();
  area_ = painter_.draw(*context, plot_, colours, size.x, size.y);
  if (pointed_) painter_.draw_pointer(*context, plot_, colours, area_, *pointed_);
}

void ProfileFrame::on_motion(const wxMouseEvent& event) {
  const map::ProfilePoint* point = plot_.point_at(way_at(plot_, area_, event.GetX()));
  if (point == nullptr || !plot_.complaint().empty()) return;
  pointed_ = *point;
  SetStatusText(wx_text("Track point " + std::to_string(point->index) + ": " + plot_.text_of(*point)));
  canvas_->Refresh(false);
}

// The point is shown on the map.
void ProfileFrame::on_double_click() {
  if (pointed_ && !desk_.is_busy()) desk_.show_on_map({{'T', pointed_->index}});
}

}  // namespace ui::wx
