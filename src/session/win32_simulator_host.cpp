#include "session/simulator_host.h"

namespace session {

std::string serve_simulated_garmin(Session&, const std::string&, const std::function<bool(const std::string&)>&,
                                   const std::function<bool()>&) {
  return "Windows has no pseudo-terminals: use the port sim:garmin in this program.";
}

}  // namespace session
