// The serial ports of Linux as the kernel shows them under /sys.
#pragma once

#include <filesystem>
#include <vector>

#include "serial/port_list.h"

namespace serial {

// The ports of the folder that is /sys/class/tty on a running system; none when it cannot be read.
[[nodiscard]] std::vector<PortInfo> ports_in(const std::filesystem::path& tty_class);

}  // namespace serial
