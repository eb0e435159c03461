// Waypoint, route point and proximity waypoint records of Garmin receivers.
//
// What a decoded item holds beyond the plain fields:
//
// record_type is 105, 106, 151, 152, 154 or 155 as received, 108 for D109 and D110 (D108 with fields that the store
// does not have), 154 for D150 (the same fields and classes, "locked" renumbered), else 0.
//
// waypoint_class is in the numbering of record_type: 0 is a user waypoint in 106 and 108, an airport in 151 to 155.
// Formats without a class leave it not set.
//
// detail_kind is 2 for D108 to D110 unless the class is 0, and 1 for D105 and D106 whatever their class: only lines
// of that kind keep a link ident.
//
// symbol_mode is G12xl where the symbol is of the enumeration 0 to 15 of D103, D107 and D403, which must not be taken
// for a symbol_type. It stays not given with a symbol_type: which set that is depends on the receiver.
//
// colour has the numbers of the colour words of waypoint lines, see waypoint_records.cpp.
//
// proximity_distance is 0 when the receiver has none.
//
// Encoded in the format that it came in, an item gives the same bytes, but for what the store does not keep: unused
// bytes, attributes, times en route, temperature and categories go out as the maker's document says for none. In other
// formats its class, symbol and display option are those of the same meaning (see waypoint_values.h), and its name goes
// out as the facility or the other way round. D450 has `number` as its index.
#pragma once

#include <span>

#include "garmin/record_format.h"

namespace garmin {

extern const std::span<const RecordFormat> kWaypointFormats;   // D100 to D110, D150 to D155
extern const std::span<const RecordFormat> kProximityFormats;  // those with a distance, D400, D403, D450

}  // namespace garmin
