// The window program as a whole.
#pragma once

#include "session/session.h"

namespace ui::wx {

// Runs until the main window is closed; the exit status. The arguments are the toolkit's, and names of files to read.
int run_window_program(int argc, char** argv, base::Clock& clock, const session::Surroundings& surroundings);

}  // namespace ui::wx
