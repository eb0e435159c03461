// The serial ports of the operating system that the program was built for.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "serial/serial_device.h"

namespace serial {

// A port of this machine, not yet open.
[[nodiscard]] std::unique_ptr<SerialDevice> make_system_device();

// What the system calls the port that the user calls `port_name`. On Linux a path stays as it is, "COM1"
// is /dev/ttyS0 and any other name stands in /dev or, if not there, in the current folder; on Windows "COM12" is
// \\.\COM12.
[[nodiscard]] std::string device_path(std::string_view port_name);

}  // namespace serial
