#include "ui/console/simulator_command.h"

namespace ui::console {

std::string serve_simulated_garmin(session::Session&, Display&, Terminal&, std::ostream&, const Arguments&) {
  return "Windows has no pseudo-terminals: use the port sim:garmin in this program.";
}

}  // namespace ui::console
