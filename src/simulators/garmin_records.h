// Records as a simulated Garmin receiver keeps and sends them, after the maker's published data formats (D100
// to D551). Texts are cut to their fields; records never exceed the 255 bytes of a packet.
#pragma once

#include <optional>

#include "base/byte_cursor.h"
#include "simulators/simulated_data.h"

namespace simulators {

[[nodiscard]] bool is_waypoint_format(int format);
// Waypoint formats included, as long as they have a distance.
[[nodiscard]] bool is_proximity_format(int format);
[[nodiscard]] bool is_route_header_format(int format);
[[nodiscard]] bool is_track_point_format(int format);
[[nodiscard]] bool is_almanac_format(int format);
// Of an almanac format: whether its records say which satellite they describe.
[[nodiscard]] bool names_satellite(int format);

// The encoders return nothing for a format that is not theirs.

// `index` is the record's place in its transfer, which D450 carries.
[[nodiscard]] std::optional<base::Bytes> encode_waypoint(int format, const SimWaypoint& waypoint, int index = 0);
[[nodiscard]] std::optional<base::Bytes> encode_route_header(int format, const SimRoute& route);
[[nodiscard]] base::Bytes encode_route_link(const SimRouteLink& link);  // D210
// `index` is the track's place in its transfer, which D311 carries.
[[nodiscard]] std::optional<base::Bytes> encode_track_header(int format, const SimTrack& track, int index);
[[nodiscard]] std::optional<base::Bytes> encode_track_point(int format, const SimTrackPoint& point,
                                                            bool starts_segment);
// `index` is the PRN number minus 1; no satellite gives the record of one that is not known, a negative week.
[[nodiscard]] std::optional<base::Bytes> encode_satellite(int format, int index,
                                                          const std::optional<SimSatellite>& satellite);

}  // namespace simulators
