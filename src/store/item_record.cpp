#include "store/item_record.h"

#include <cmath>

#include "base/text.h"

namespace store {

ItemRecord blank_item() {
  ItemRecord item;
  item.altitude = kNotKnown;
  item.depth = kNotKnown;
  item.waypoint_class = kClassNotSet;
  item.symbol_mode = kSymbolModeNotGiven;
  return item;
}

void sign_position(ItemRecord& item) {
  if (item.latitude_hemisphere != 0)
    item.position.latitude = std::copysign(item.position.latitude, item.latitude_hemisphere == 'S' ? -1.0 : 1.0);
  if (item.longitude_hemisphere != 0)
    item.position.longitude = std::copysign(item.position.longitude, item.longitude_hemisphere == 'W' ? -1.0 : 1.0);
}

void set_hemispheres(ItemRecord& item) {
  item.latitude_hemisphere = item.position.latitude >= 0 ? 'N' : 'S';
  item.longitude_hemisphere = item.position.longitude >= 0 ? 'E' : 'W';
}

std::uint8_t colour_number(std::string_view name) {
  for (std::size_t number = 0; number < kColourNames.size(); ++number)
    if (base::equal_ignoring_case(kColourNames[number], name)) return static_cast<std::uint8_t>(number);
  return kDefaultColour;
}

}  // namespace store
