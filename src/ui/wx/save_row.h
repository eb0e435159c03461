// The row at the bottom of dialogs of settings: Save Configuration, what came of it, and the dialog's own buttons.
#pragma once

#include <wx/dialog.h>
#include <wx/sizer.h>

#include <functional>

#include "session/session.h"

namespace ui::wx {

// `take` puts what the dialog shows into the session's settings; false when something in it is wrong.
[[nodiscard]] wxSizer* make_save_row(wxDialog& dialog, session::Session& session, std::function<bool()> take);

// The names of the row's windows.
inline constexpr const char* kSaveButton = "save configuration";
inline constexpr const char* kSavedText = "saved";

}  // namespace ui::wx
