// The manual, the about box and the program's icon.
#pragma once

#include <wx/aboutdlg.h>
#include <wx/iconbndl.h>
#include <wx/window.h>

#include <filesystem>
#include <vector>

#include "ui/wx/desk.h"

namespace ui::wx {

// Opens the manual's window; false, after a box, when the manual is not where the program is.
bool show_manual(wxWindow* parent);
// Where the manual is looked for, in order, by a program of this name.
[[nodiscard]] std::vector<std::filesystem::path> manual_places(const std::filesystem::path& program);
void show_about(wxWindow* parent);
// What the about box says.
[[nodiscard]] wxAboutDialogInfo about_texts();
// Drawn, in the sizes that systems ask for.
[[nodiscard]] wxIconBundle program_icons();

}  // namespace ui::wx
