// Positions as they stand in the columns of a native text line.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "geodesy/datum_shift.h"
#include "geodesy/notation.h"
#include "geodesy/position.h"
#include "geodesy/utm.h"

namespace textfile {

// The position whose columns begin at `column` (from 0), in the file's own datum; `ellipsoid` is that
// datum's. Nothing when the line ends within the columns, or they hold something else. A degree sign is as
// good as a blank. The result prints as the same text again.
[[nodiscard]] std::optional<geodesy::Position> read_position(std::string_view line, std::size_t column,
                                                             geodesy::Notation notation,
                                                             const geodesy::Ellipsoid& ellipsoid);

// The position after the prepared shift; nothing when there is no such point on the earth.
[[nodiscard]] std::optional<geodesy::Position> shift_position(const geodesy::DatumShift& shift,
                                                              const geodesy::Position& position);

}  // namespace textfile
