// Which records can stand in a file of positions.
#pragma once

#include <cmath>

#include "formats/line_texts.h"
#include "geodesy/position.h"
#include "store/item_record.h"

namespace formats {

// False for what is not a number, too.
[[nodiscard]] inline bool is_on_globe(const geodesy::Position& position) {
  return std::abs(position.latitude) <= 90 && std::abs(position.longitude) <= 180;
}

// True when the record is in use and has a position; one that only lacks the position is counted as left out.
[[nodiscard]] inline bool is_writable(const store::ItemRecord& item, LineTexts& texts) {
  if (item.in_use == 0) return false;
  if (!is_on_globe(item.position)) texts.leave_out();
  return is_on_globe(item.position);
}

// An altitude or depth that is known, and a number that a file can hold.
[[nodiscard]] inline bool is_writable_metres(float metres) { return std::isfinite(metres) && store::is_known(metres); }

}  // namespace formats
