// What receivers that send no capability array speak, by product id and, for some, by software version.
// Source: the maker's published interface document, with the differences listed in docs/protocols/garmin.md.
#pragma once

#include <array>
#include <cstdint>

#include "garmin/packet_ids.h"

namespace garmin {

struct ProductRow {
  std::uint16_t product_id;
  // n > 0: version x 100 of at least n; n < 0: below -n; 0: any. The first row of a product takes any when n >= 0.
  int version_limit;
  std::uint16_t link, command, waypoint_data, route_header, route_waypoint, track_transfer, track_data,
      proximity_transfer, proximity_data, almanac_data;
};

inline constexpr std::array kProducts{
    ProductRow{7, 0, 1, 10, 100, 200, 100, kNone, kNone, kNone, kNone, 500},
    ProductRow{13, 0, 1, 10, 100, 200, 100, 300, 300, 400, 400, 500},
    ProductRow{14, 0, 1, 10, 100, 200, 100, kNone, kNone, 400, 400, 500},
    ProductRow{15, 0, 1, 10, 151, 200, 151, kNone, kNone, 400, 151, 500},
    ProductRow{18, 0, 1, 10, 100, 200, 100, 300, 300, 400, 400, 500},
    ProductRow{20, 0, 2, 11, 150, 201, 150, kNone, kNone, 400, 450, 550},
    ProductRow{22, 0, 1, 10, 152, 200, 152, 300, 300, 400, 152, 500},
    ProductRow{23, 0, 1, 10, 100, 200, 100, 300, 300, 400, 400, 500},
    ProductRow{24, 0, 1, 10, 100, 200, 100, 300, 300, 400, 400, 500},
    ProductRow{25, 0, 1, 10, 100, 200, 100, 300, 300, 400, 400, 500},
    ProductRow{29, -400, 1, 10, 101, 201, 101, 300, 300, 400, 101, 500},
    ProductRow{29, 400, 1, 10, 102, 200, 102, 300, 300, 400, 102, 500},
    ProductRow{31, 0, 1, 10, 100, 201, 100, 300, 300, kNone, kNone, 500},
    ProductRow{33, 0, 2, 11, 150, 201, 150, kNone, kNone, 400, 450, 550},
    ProductRow{34, 0, 2, 11, 150, 201, 150, kNone, kNone, 400, 450, 550},
    ProductRow{35, 0, 1, 10, 100, 200, 100, 300, 300, 400, 400, 500},
    ProductRow{36, -300, 1, 10, 152, 200, 152, 300, 300, 400, 152, 500},
    ProductRow{36, 300, 1, 10, 152, 200, 152, 300, 300, kNone, kNone, 500},
    ProductRow{39, 0, 1, 10, 151, 201, 151, 300, 300, kNone, kNone, 500},
    ProductRow{41, 0, 1, 10, 100, 201, 100, 300, 300, kNone, kNone, 500},
    ProductRow{42, 0, 1, 10, 100, 200, 100, 300, 300, 400, 400, 500},
    ProductRow{44, 0, 1, 10, 101, 201, 101, 300, 300, 400, 101, 500},
    ProductRow{45, 0, 1, 10, 152, 201, 152, 300, 300, kNone, kNone, 500},
    ProductRow{47, 0, 1, 10, 100, 201, 100, 300, 300, kNone, kNone, 500},
    ProductRow{48, 0, 1, 10, 154, 201, 154, 300, 300, kNone, kNone, 501},
    ProductRow{49, 0, 1, 10, 102, 201, 102, 300, 300, 400, 102, 501},
    ProductRow{50, 0, 1, 10, 152, 201, 152, 300, 300, kNone, kNone, 501},
    ProductRow{52, 0, 2, 11, 150, 201, 150, kNone, kNone, 400, 450, 550},
    ProductRow{53, 0, 1, 10, 152, 201, 152, 300, 300, kNone, kNone, 501},
    ProductRow{55, 0, 1, 10, 100, 201, 100, 300, 300, kNone, kNone, 500},
    ProductRow{56, 0, 1, 10, 100, 201, 100, 300, 300, kNone, kNone, 500},
    ProductRow{59, 0, 1, 10, 100, 201, 100, 300, 300, kNone, kNone, 500},
    ProductRow{61, 0, 1, 10, 100, 201, 100, 300, 300, kNone, kNone, 500},
    ProductRow{62, 0, 1, 10, 100, 201, 100, 300, 300, kNone, kNone, 500},
    ProductRow{64, 0, 2, 11, 150, 201, 150, kNone, kNone, 400, 450, 551},
    ProductRow{71, 0, 1, 10, 155, 201, 155, 300, 300, kNone, kNone, 501},
    ProductRow{72, 0, 1, 10, 104, 201, 104, 300, 300, kNone, kNone, 501},
    ProductRow{73, 0, 1, 10, 103, 201, 103, 300, 300, kNone, kNone, 501},
    ProductRow{74, 0, 1, 10, 100, 201, 100, 300, 300, kNone, kNone, 500},
    ProductRow{76, 0, 1, 10, 102, 201, 102, 300, 300, 400, 102, 501},
    ProductRow{77, -301, 1, 10, 100, 201, 100, 300, 300, 400, 400, 501},
    ProductRow{77, -350, 1, 10, 103, 201, 103, 300, 300, 400, 403, 501},
    ProductRow{77, -361, 1, 10, 103, 201, 103, 300, 300, kNone, kNone, 501},
    ProductRow{77, 361, 1, 10, 103, 201, 103, 300, 300, 400, 403, 501},
    ProductRow{87, 0, 1, 10, 103, 201, 103, 300, 300, 400, 403, 501},
    ProductRow{88, 0, 1, 10, 102, 201, 102, 300, 300, 400, 102, 501},
    ProductRow{95, 0, 1, 10, 103, 201, 103, 300, 300, 400, 403, 501},
    ProductRow{96, 0, 1, 10, 103, 201, 103, 300, 300, 400, 403, 501},
    ProductRow{97, 0, 1, 10, 103, 201, 103, 300, 300, kNone, kNone, 501},
    ProductRow{98, 0, 2, 11, 150, 201, 150, kNone, kNone, 400, 450, 551},
    ProductRow{100, 0, 1, 10, 103, 201, 103, 300, 300, 400, 403, 501},
    ProductRow{105, 0, 1, 10, 103, 201, 103, 300, 300, 400, 403, 501},
    ProductRow{106, 0, 1, 10, 103, 201, 103, 300, 300, 400, 403, 501},
    ProductRow{112, 0, 1, 10, 152, 201, 152, 300, 300, kNone, kNone, 501},
};

// The row for a product and its software version x 100; nullptr when the table has none.
[[nodiscard]] constexpr const ProductRow* find_product(std::uint16_t product_id, int version) {
  bool first = true;
  for (const ProductRow& row : kProducts) {
    if (row.product_id != product_id) continue;
    const bool accepts = row.version_limit >= 0 ? first || version >= row.version_limit : version < -row.version_limit;
    if (accepts) return &row;
    first = false;
  }
  return nullptr;
}

}  // namespace garmin
