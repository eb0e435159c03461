#include "ui/wx/save_row.h"

#include <wx/button.h>
#include <wx/stattext.h>

#include "ui/actions.h"
#include "ui/wx/window_place.h"

namespace ui::wx {

wxSizer* make_save_row(wxDialog& dialog, session::Session& session, std::function<bool()> take) {
  auto* button = new wxButton(&dialog, wxID_ANY, "Save Configuration");
  button->SetName(kSaveButton);
  button->SetToolTip("Take these values over and write the configuration file");
  auto* saved = new wxStaticText(&dialog, wxID_ANY, "");
  saved->SetName(kSavedText);
  // Kept free for what comes, so that nothing moves then.
  saved->SetMinSize(wxSize(dialog.GetTextExtent("Saved in pelorix.ini").x, -1));
  button->Bind(wxEVT_BUTTON, [&dialog, &session, saved, take = std::move(take)](wxCommandEvent&) {
    saved->SetLabel("");
    if (!take()) return;
    saved->SetLabel(write_configuration(session, main_window_place(dialog)) ? "Saved in pelorix.ini" : "Not saved");
  });
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(button, wxSizerFlags().CentreVertical());
  row->Add(saved, wxSizerFlags().CentreVertical().Border(wxLEFT | wxRIGHT, dialog.FromDIP(8)));
  row->AddStretchSpacer();
  row->Add(dialog.CreateButtonSizer(wxOK | wxCANCEL), wxSizerFlags().CentreVertical());
  return row;
}

}  // namespace ui::wx
