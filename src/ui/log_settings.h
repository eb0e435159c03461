// The files that are written along: the serial debug file and the log of the output lines.
#pragma once

#include "session/session.h"
#include "ui/display.h"

namespace ui {

// Does what the settings say of these files, where it is other than before; apply_settings() does the rest.
void follow_log_settings(session::Session& session, Display& display, const store::Settings& before);

}  // namespace ui
