// The text of the title bar: family, port, speed and the counts of the stores.
#pragma once

#include <string>
#include <string_view>

#include "session/session.h"

namespace ui {

[[nodiscard]] std::string title_text(const session::Session& session);
// "Ready -- GPS is Garmin"; for the status bar.
[[nodiscard]] std::string_view readiness_text(const session::Session& session);

}  // namespace ui
