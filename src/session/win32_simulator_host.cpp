#include "session/simulator_host.h"

namespace session {

std::string serve_simulated(Session&, store::Family family, const std::string&,
                            const std::function<bool(const std::string&)>&, const std::function<bool()>&) {
  const std::string port = family == store::Family::Lowrance ? "sim:lowrance" : "sim:garmin";
  return "Windows has no pseudo-terminals: use the port " + port + " in this program.";
}

}  // namespace session
