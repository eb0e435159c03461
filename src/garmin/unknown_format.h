// What the user is told of a record format that has no row.
#pragma once

#include <cstdint>
#include <string>

#include "base/text.h"
#include "garmin/packet_ids.h"

namespace garmin {

[[nodiscard]] inline std::string unknown_format_text(PacketKind packet, std::uint16_t number) {
  switch (packet) {
    case PacketKind::Pid_Wpt_Data:
      return "Unknown Waypoint Protocol in doWaypoint -- aborting";
    case PacketKind::Pid_Rte_Wpt_Data:
      return "Unknown Data protocol in readD100";
    case PacketKind::Pid_Trk_Data:
      return base::format_text("Unknown TrackDataRecord protocol: %d", int{number});
    case PacketKind::Pid_Prx_Wpt_Data:
      return base::format_text("Unknown Proximity Protocol %d", int{number});
    case PacketKind::Pid_Almanac_Data:
      return base::format_text("Almanac data record D%03d not implemented", int{number});
    case PacketKind::Pid_Rte_Hdr:
      return base::format_text("Unknown route header protocol: %d", int{number});
    case PacketKind::Pid_Rte_Link_Data:
      return base::format_text("Unknown route link protocol: %d", int{number});
    default:
      return base::format_text("Unknown track header protocol: %d", int{number});
  }
}

}  // namespace garmin
