// The text of the title bar: family, port, speed and the counts of the stores.
#pragma once

#include <string>

#include "session/session.h"

namespace ui {

[[nodiscard]] std::string title_text(const session::Session& session);

}  // namespace ui
