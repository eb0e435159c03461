// Altitude and speed along a track.
#pragma once

#include <wx/frame.h>

#include "ui/wx/desk.h"

namespace ui::wx {

class ProfileFrame : public wxFrame, public View {
 public:
  ProfileFrame(wxWindow* parent, Desk& desk);

  void show_change(Change change) override;
  // Shows the track that this point belongs to (an index from 1).
  void show_track_of(int track_point);

 private:
  Desk& desk_;
  Registration registration_;
};

}  // namespace ui::wx
