// What the system tells a program at its start.
#pragma once

#include <string>
#include <vector>

#include "session/session.h"

namespace apps {

// The command line in words, the program's name first; in UTF-8 on Windows, which gives main another encoding.
[[nodiscard]] std::vector<std::string> command_line(int argc, const char* const* argv);

// The current directory, and where user datums are looked for: there, then along the PATH.
[[nodiscard]] session::Surroundings surroundings(const std::string& program_name);

}  // namespace apps
