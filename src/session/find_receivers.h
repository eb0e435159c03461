// Looks for receivers: which of them answers on which port.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

#include "session/session.h"

namespace session {

// What stands behind one port.
struct PortFinding {
  std::string port;
  std::string text;  // "Garmin: eTrex Software Version 2.50", "silent", "in use", ...
  bool is_receiver = false;
};

struct FindResult {
  int receivers = 0;
  bool stopped = false;  // by the user; then not all ports were tried
};

// Tries the ports one after another: for a Garmin receiver, then for a Lowrance/Eagle unit at each speed, or for the
// one family alone. The session gives its settings, clock, front end and devices, and is left as it was; its
// debug log has the search too, and with `shows_all` its front end shows every step. `trying` is called before each
// port, `done` behind it, unless the user has stopped the search meanwhile. A silent port takes about 20 s.
FindResult find_receivers(Session& session, std::span<const std::string> ports, std::optional<store::Family> only,
                          bool shows_all, const std::function<void(const std::string& port)>& trying,
                          const std::function<void(const PortFinding& finding)>& done);

}  // namespace session
