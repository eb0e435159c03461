// Altitude and speed along a track.
#pragma once

#include <wx/choice.h>
#include <wx/frame.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>

#include <optional>
#include <vector>

#include "ui/map/profile_plot.h"
#include "ui/wx/desk.h"
#include "ui/wx/drawing_output.h"
#include "ui/wx/profile_painter.h"

namespace ui::wx {

class ProfileFrame : public wxFrame, public View {
 public:
  ProfileFrame(wxWindow* parent, Desk& desk);

  void show_change(Change change) override;
  // Shows the track that this point belongs to (an index from 1).
  void show_track_of(int track_point);
  void show_against(map::Against against);

  [[nodiscard]] const map::ProfilePlot& plot() const { return plot_; }
  [[nodiscard]] wxChoice& tracks() { return *tracks_; }
  [[nodiscard]] wxString figures() const { return figures_->GetLabel(); }
  // What is shown, for paper and files.
  [[nodiscard]] Drawing drawing() const;

 private:
  wxSizer* make_head();
  void read_tracks();
  void compute();
  void on_paint();
  void on_motion(const wxMouseEvent& event);
  void on_double_click();

  Desk& desk_;
  ProfilePainter painter_;
  std::uint64_t revision_ = 0;
  std::vector<map::TrackRange> ranges_;  // as the choice lists them
  map::ProfilePlot plot_;
  PlotArea area_;
  std::optional<map::ProfilePoint> pointed_;
  wxChoice* tracks_ = nullptr;
  wxRadioButton* by_distance_ = nullptr;
  wxRadioButton* by_time_ = nullptr;
  wxStaticText* figures_ = nullptr;
  wxWindow* canvas_ = nullptr;
  Registration registration_;
};

}  // namespace ui::wx
