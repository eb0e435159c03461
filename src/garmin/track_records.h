// Track point and track header records of Garmin receivers.
#pragma once

#include <span>

#include "garmin/record_format.h"

namespace garmin {

// D300, D301, D302. The segment flag is 1 on the first point after a break in the log, else 0.
extern const std::span<const RecordFormat> kTrackPointFormats;

// D310, D311, D312: the name of the log in ident, its colour as an index into store::kColourNames, segment
// flag 2. D311 has a number n alone: the name is "Track n", and a log of another name goes out with its `number`.
extern const std::span<const RecordFormat> kTrackHeaderFormats;

}  // namespace garmin
