// Dates and times as XML and web formats write them (ISO 8601; xsd:dateTime).
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "store/garmin_time.h"

namespace formats {

// "2002-06-01T12:00:00Z".
void append_iso_time(std::string& out, store::GarminTime time);

// The reverse, also with fractions of seconds (which are cut off), an offset such as +02:00, +0200 or +02, or a
// blank in the place of the T; without zone the time is UTC. No time (0) where records cannot hold it: before
// 1990 or after the year 2125. Nothing when the text is no time.
[[nodiscard]] std::optional<store::GarminTime> parse_iso_time(std::string_view text);

}  // namespace formats
