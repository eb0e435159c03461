// Positions of files that may be in another datum than the stores.
#pragma once

#include <optional>
#include <string>

#include "geodesy/datum_shift.h"
#include "geodesy/position.h"
#include "store/file_context.h"

namespace formats {

// Prepares the shift from the stores' WGS-84 into the datum. The name of the datum that positions then are in:
// WGS-84 where nobody knows the other, which a message box says.
[[nodiscard]] std::string prepare_output_datum(const store::FileContext& context, const std::string& datum);

// The position after the prepared shift, within 90 and 180 degrees; nothing where the position itself is not.
[[nodiscard]] std::optional<geodesy::Position> shifted_position(const geodesy::DatumShift& shift,
                                                                const geodesy::Position& position);

}  // namespace formats
