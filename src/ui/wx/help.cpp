#include "ui/wx/help.h"

#include <wx/generic/aboutdlgg.h>
#include <wx/msgdlg.h>
#include <wx/stdpaths.h>

#include <algorithm>

#include "ui/wx/help_frame.h"
#include "ui/wx/program_icon.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

// In pixels, as the systems' bars, lists and switchers ask for them.
constexpr int kIconSizes[] = {16, 24, 32, 48, 64, 128, 256};

HelpFrame* open_help_frame() {
  for (wxWindow* window : wxTopLevelWindows) {
    auto* frame = dynamic_cast<HelpFrame*>(window);
    if (frame != nullptr && !frame->IsBeingDeleted()) return frame;
  }
  return nullptr;
}

}  // namespace

std::vector<std::filesystem::path> manual_places(const std::filesystem::path& program) {
  const std::filesystem::path folder = program.parent_path();
  return {folder / "manual" / "manual.html", folder.parent_path() / "share" / "pelorix" / "manual.html"};
}

bool show_manual(wxWindow* parent) {
  HelpFrame* frame = open_help_frame();
  if (frame == nullptr) {
    const auto places = manual_places(path_of(wxStandardPaths::Get().GetExecutablePath()));
    std::error_code error;
    const auto manual =
        std::ranges::find_if(places, [&](const auto& place) { return std::filesystem::exists(place, error); });
    if (manual == places.end()) {
      wxString text = "The manual was looked for here, and is not there:\n";
      for (const std::filesystem::path& place : places) text += "\n" + wx_path(place);
      wxMessageBox(text, "Help", wxOK | wxICON_EXCLAMATION, parent);
      return false;
    }
    frame = new HelpFrame(parent, *manual);
  }
  if (frame->IsIconized()) frame->Iconize(false);
  frame->Show();
  frame->Raise();
  return true;
}

wxAboutDialogInfo about_texts() {
  wxAboutDialogInfo info;
  info.SetName("Pelorix");
  info.SetVersion(wx_text(session::kVersion));
  info.SetDescription(
      "Moves waypoints, routes and tracks between\n"
      "GPS receivers, files and the computer.\n\n"
      "Made with wxWidgets (wxWindows Library Licence),\n"
      "pugixml (MIT licence), zlib (zlib licence)\n"
      "and CLI11 (BSD licence).");
  info.SetCopyright("(C) 2026 The Pelorix developers\nMIT licence");
  info.SetIcon(wxIcon(program_icons().GetIcon(wxSize(64, 64))));
  return info;
}

void show_about(wxWindow* parent) { wxGenericAboutBox(about_texts(), parent); }

wxIconBundle program_icons() {
  wxIconBundle icons;
  for (const int size : kIconSizes) {
    wxIcon icon;
    icon.CopyFromBitmap(wxBitmap(draw_program_icon(size)));
    icons.AddIcon(icon);
  }
  return icons;
}

}  // namespace ui::wx
