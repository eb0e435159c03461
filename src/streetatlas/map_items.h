// What the bytes of a Street Atlas map file (.SA3 to .SA7) say, before any of it goes into a store.
// docs/formats/street-atlas.md has the layout, and tells what of it is a choice of ours.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "geodesy/position.h"

namespace streetatlas {

// The numbers are those of the files; 4 to 6 are items that nobody knows.
enum class ItemType : std::uint16_t { Text = 1, Symbol = 2, Note = 3, Line = 7, Area = 8, Circle = 9 };

struct MapItem {
  ItemType type = ItemType::Text;
  geodesy::Position position;             // of texts, symbols, notes, and a circle's centre
  std::string text;                       // the item's own or, where that is empty, its label
  std::vector<geodesy::Position> points;  // of lines and areas
  std::array<std::uint8_t, 3> line{};     // of lines and areas: colour, width and, of lines, style
  geodesy::Position rim;                  // of circles: a point on the rim
};

struct MapRoutePoint {
  geodesy::Position position;
  std::string name;
};

struct MapRoute {
  std::uint16_t number = 0;  // 0 to 99
  std::string name;
  std::vector<MapRoutePoint> points;  // at least one
};

// Positions of items are as they stand in the file, and may be off the earth; those of routes are not.
struct MapFile {
  std::vector<MapItem> items;                 // those that were understood
  int announced = 0;                          // items that the file says it has
  std::optional<std::uint16_t> unknown_type;  // of the item that ended the reading
  std::vector<MapRoute> routes;               // none where the section was not understood
};

// 2^23 - 1 steps to a degree, from -256.00003 to 256. The sign of longitudes is the file's: west positive.
[[nodiscard]] double degrees_of(std::uint32_t code);

// Latitude within 90 and longitude within 180 degrees.
[[nodiscard]] bool is_on_earth(const geodesy::Position& position);

// Nothing when the header is not that of a map. `may_have_routes`: a route section may follow the items
// (versions 4 to 7 of the program).
[[nodiscard]] std::optional<MapFile> parse_map_file(std::span<const std::uint8_t> bytes, bool may_have_routes);

}  // namespace streetatlas
