// The system's file dialogs, as commands ask for them.
#pragma once

#include <wx/window.h>

#include "ui/windows.h"

namespace ui::wx {

// Empty: the user has cancelled.
[[nodiscard]] std::vector<std::filesystem::path> ask_files_to_open(wxWindow* parent, FileQuestion& question);
// Asks before a file is overwritten. A name without extension gets that of the chosen type.
[[nodiscard]] std::optional<std::filesystem::path> ask_file_to_save(wxWindow* parent, FileQuestion& question);

}  // namespace ui::wx
