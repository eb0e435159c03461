// The ports a user can choose from, and what a choice means.
#pragma once

#include <string>
#include <vector>

#include "session/session.h"

namespace ui {

struct PortChoice {
  std::string name;   // as PortName takes it
  std::string label;  // with what the system knows of the adapter
  bool is_chosen = false;
};

// The ports of this machine, the simulated receivers, and the port that is chosen if it is none of them.
[[nodiscard]] std::vector<PortChoice> port_choices(const session::Session& session);
// Takes the port; a simulated receiver brings its family along. A port "COMn" is kept as its number.
void choose_port(session::Session& session, const std::string& name);

}  // namespace ui
