// The serial ports of this machine.
#pragma once

#include <string>
#include <vector>

namespace serial {

struct PortInfo {
  std::string name;         // what --port takes
  std::string description;  // what the system knows of the adapter; may be empty
};

// Ports that exist now, ordered by name; pseudo-terminals are not among them.
[[nodiscard]] std::vector<PortInfo> list_serial_ports();

}  // namespace serial
