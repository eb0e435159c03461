// The ports a user can choose from, and what a choice means.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"

namespace ui {

struct PortChoice {
  std::string name;   // as PortName takes it
  std::string label;  // as port_label(), or what it simulates
  bool is_chosen = false;
};

// How people are told that port_names() is empty.
inline constexpr std::string_view kNoPorts =
    "This machine has no serial port. An adapter shows up when it is plugged in.";
// The serial ports of this machine.
[[nodiscard]] std::vector<std::string> port_names();
// The name of a port with what the system knows of its adapter.
[[nodiscard]] std::string port_label(const serial::PortInfo& port);

// The ports of this machine, the simulated receivers, and the port that is chosen if it is none of them.
[[nodiscard]] std::vector<PortChoice> port_choices(const session::Session& session);
// Takes the port; a simulated receiver brings its family along. A port "COMn" is kept as its number.
void choose_port(session::Session& session, const std::string& name);

}  // namespace ui
