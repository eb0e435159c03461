#include "ui/title.h"

#include "base/text.h"

namespace ui {

std::string title_text(const session::Session& session) {
  const store::ItemStore& items = session.items;
  const std::string& port_name = session.port.port_name();
  const char* port = port_name.c_str();
  const int speed = session.port.speed();
  const int w = items.waypoint_count(), t = items.track_count(), tp = items.track_point_count();
  const int p = items.proximity_count(), r = items.route_count(), e = items.event_count();
  switch (session.settings.GPS) {
    case store::Family::Garmin:
      return base::format_text("Pelorix -- GPS Garmin - %s - %d -- W:%d T:%d (TP:%d) P:%d R:%d [E:%d]", port, speed, w,
                               t, tp, p, r, e);
    case store::Family::Lowrance:
      return base::format_text("Pelorix -- GPS LEI - %s - %d -- W:%d T:%d (TP:%d) E:%d R:%d [P:%d]", port, speed, w, t,
                               tp, e, r, p);
    case store::Family::None:
      break;
  }
  return base::format_text("Pelorix -- GPS ? %s - %d -- W:%d T:%d (TP:%d) E:%d P:%d R:%d", port, speed, w, t, tp, e, p,
                           r);
}

std::string_view readiness_text(const session::Session& session) {
  switch (session.settings.GPS) {
    case store::Family::Garmin:
      return "Ready -- GPS is Garmin";
    case store::Family::Lowrance:
      return "Ready -- GPS is Lowrance/Eagle";
    case store::Family::None:
      break;
  }
  return "Ready -- GPS is UNKNOWN";
}

}  // namespace ui
