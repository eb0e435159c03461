// "simulate garmin": a simulated receiver on a pseudo-terminal of this machine.
#pragma once

#include <iosfwd>
#include <string>

#include "session/session.h"
#include "ui/console/arguments.h"
#include "ui/console/terminal.h"
#include "ui/display.h"

namespace ui::console {

// Prints the pseudo-terminal's path on `output` and serves until ESC, Ctrl-C or the receiver's unplugging;
// then writes what the receiver holds to the file of --save. The receiver holds what the session's stores
// hold when files were to be loaded, else its built-in data. Empty on success, else what went wrong.
[[nodiscard]] std::string serve_simulated_garmin(session::Session& session, Display& display, Terminal& terminal,
                                                 std::ostream& output, const Arguments& arguments);

}  // namespace ui::console
