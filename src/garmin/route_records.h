// Route header and route link records of Garmin receivers. Route points are waypoint records.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "garmin/record_format.h"

namespace garmin {

struct RouteHeader {
  std::optional<int> number;  // 0 to 255; not every format has one
  std::string name;
};
using RouteHeaderFormat = FormatOf<RouteHeader>;

extern const std::span<const RouteHeaderFormat> kRouteHeaderFormats;  // D200, D201, D202

// D210, the leg from a route point to the next one: the link fields of an item.
extern const std::span<const RecordFormat> kRouteLinkFormats;

}  // namespace garmin
