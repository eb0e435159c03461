// The words that the GPX reader and writer share: namespaces, the receiver maker's terms, and our own extension,
// which holds what neither GPX nor the maker's extension has a place for. docs/formats/gpx.md has the layout.
// Sources: topografix GPX 1.1 schema; Garmin GpxExtensions v3 schema.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/text.h"
#include "store/item_record.h"
#include "store/symbols.h"

namespace formats {

// The first one is written.
inline constexpr std::array<std::string_view, 2> kGpxNamespaces{"http://www.topografix.com/GPX/1/1",
                                                                "http://www.topografix.com/GPX/1/0"};
inline constexpr std::string_view kOwnNamespace = "urn:pelorix:gpx:1";
// The first one is written; the others hold the same terms.
inline constexpr std::array<std::string_view, 6> kMakerNamespaces{
    "http://www.garmin.com/xmlschemas/GpxExtensions/v3",
    "http://www.garmin.com/xmlschemas/GpxExtensions/v2",
    "http://www.garmin.com/xmlschemas/GpxExtensions/v1",
    "http://www.garmin.com/xmlschemas/WaypointExtension/v1",
    "http://www.garmin.com/xmlschemas/TrackPointExtension/v1",
    "http://www.garmin.com/xmlschemas/TrackPointExtension/v2"};

// Values of <type> by which items of these kinds are told from waypoints.
inline constexpr std::string_view kProximityType = "proximity";
inline constexpr std::string_view kEventType = "event";

struct GpxDisplayWord {
  std::int16_t mode;
  std::string_view word;
};
inline constexpr std::array kGpxDisplayWords{GpxDisplayWord{1, "SymbolOnly"}, GpxDisplayWord{3, "SymbolAndName"},
                                             GpxDisplayWord{5, "SymbolAndDescription"}};
inline constexpr std::int16_t kSymbolAndName = 3;  // what the maker's programs show where a file says nothing

// "DarkRed" for "Dark Red".
[[nodiscard]] inline std::string gpx_colour_name(std::uint8_t colour) {
  std::string name(store::kColourNames[std::min<std::size_t>(colour, store::kDefaultColour)]);
  std::erase(name, ' ');
  return name;
}

// The ident of a route's header; another one is written beside the number.
[[nodiscard]] inline std::string route_number_text(std::uint32_t number) {
  return base::format_text("%02u", static_cast<unsigned>(number));
}

// A point of which the file says nothing but its place.
[[nodiscard]] inline store::ItemRecord default_gpx_item() {
  store::ItemRecord item = store::blank_item();
  item.symbol = store::kDotSymbol;
  item.display_mode = kSymbolAndName;
  return item;
}

// Attributes of our own "item" element and the fields that they hold; one is written where the field is not as in
// default_gpx_item().
inline constexpr std::tuple kOwnNumbers{
    std::pair{"symbol", &store::ItemRecord::symbol},        std::pair{"set", &store::ItemRecord::symbol_mode},
    std::pair{"display", &store::ItemRecord::display_mode}, std::pair{"colour", &store::ItemRecord::colour},
    std::pair{"record", &store::ItemRecord::record_type},   std::pair{"details", &store::ItemRecord::detail_kind},
    std::pair{"class", &store::ItemRecord::waypoint_class}};
inline constexpr std::tuple kOwnTexts{
    std::pair{"name", &store::ItemRecord::name}, std::pair{"facility", &store::ItemRecord::facility},
    std::pair{"crossroad", &store::ItemRecord::cross_road}, std::pair{"link", &store::ItemRecord::link_ident}};
// The same of the fields of the maker's "Address", in the order of its schema.
inline constexpr std::tuple kAddressTexts{
    std::pair{"StreetAddress", &store::ItemRecord::address}, std::pair{"City", &store::ItemRecord::city},
    std::pair{"State", &store::ItemRecord::state}, std::pair{"Country", &store::ItemRecord::country}};

// Calls the function with each pair of such a table.
template <typename Table, typename Function>
void for_each_field(const Table& table, const Function& function) {
  std::apply([&function](const auto&... row) { (function(row), ...); }, table);
}

}  // namespace formats
