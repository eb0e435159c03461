// What the system tells a program at its start.
#pragma once

#include "session/session.h"

namespace apps {

// The current directory, and where user datums are looked for: there, then along the PATH.
[[nodiscard]] session::Surroundings surroundings(const char* program_name);

}  // namespace apps
