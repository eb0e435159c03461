// The one record of everything the program holds: waypoints, route headers and points, track points, events
// and proximity waypoints. A record can be copied from one store into another unchanged.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "base/fixed_text.h"
#include "geodesy/position.h"
#include "store/garmin_time.h"

namespace store {

inline constexpr float kNotKnown = 1.0e24F;  // an altitude or depth of this or more is not known
[[nodiscard]] constexpr bool is_known(float metres) { return metres < kNotKnown; }

inline constexpr std::uint8_t kClassNotSet = 255;
inline constexpr std::uint8_t kSymbolModeNotGiven = 255;  // a push puts the configured symbol set in its place

// Values of ItemRecord::detail_kind.
inline constexpr std::uint8_t kNoDetails = 0;
inline constexpr std::uint8_t kLongIdentDetails = 1;  // types 105 and 106: full ident, link ident, no comment
inline constexpr std::uint8_t kFullDetails = 2;       // type 108: altitude, depth, class, address fields
inline constexpr std::uint8_t kRouteLinkDetails = 3;

// Values of ItemRecord::segment_flag of track points.
inline constexpr std::uint8_t kContinues = 0;
inline constexpr std::uint8_t kStartsSegment = 1;
inline constexpr std::uint8_t kStartsNamedTrack = 2;

// The order leaves no gaps between the fields, and what most records leave at zero stands together: stores
// hold records without their zeros.
struct ItemRecord {
  geodesy::Position position;       // WGS-84
  GarminTime time;                  // UTC in the stores (route points and events: as given)
  float altitude = 0;               // metres
  float depth = 0;                  // metres
  std::uint32_t number = 0;         // serial number given at insertion; a route point has its waypoint's
  char kind = 0;                    // 'W' waypoint or route point, 'R' route header, 'T', 'I' event, 'P'
  std::uint8_t segment_flag = 0;    // track points: as above; waypoints: 2 when detail_kind is 1; headers: 1
  std::uint8_t in_use = 0;          // 0: deleted from a list; writers and uploads skip it
  std::uint8_t selected = 0;        // uploads send selected records
  char latitude_hemisphere = 0;     // 'N' or 'S'; 0 not given
  char longitude_hemisphere = 0;    // 'E' or 'W'; 0 not given
  std::uint8_t symbol_mode = 0;     // index of the symbol set that `symbol` belongs to
  std::uint8_t waypoint_class = 0;  // 0 user waypoint, kClassNotSet unknown
  std::int16_t symbol = 0;
  std::int16_t display_mode = 0;  // 1 symbol, 3 symbol and name, 5 symbol and comment
  std::array<std::uint8_t, 3> track_drawing{};
  std::uint8_t detail_kind = kNoDetails;
  std::array<std::uint8_t, 6> waypoint_drawing{};
  std::uint8_t colour = 0;  // track logs: index into kColourNames
  std::uint8_t track_style = 0;
  std::uint32_t route_number = 0;  // route headers and points: 0 to 99
  float proximity_distance = 0;    // metres
  std::array<std::uint8_t, 5> proximity_drawing{};
  std::uint8_t has_route_link = 0;
  std::uint16_t record_type = 0;  // Garmin data type (105, 106, 108, 151, ...); 0 not set
  std::array<std::uint8_t, 4> route_drawing{};
  std::uint16_t link_class = 0;
  std::array<std::uint8_t, 18> subclass{};
  std::array<std::uint8_t, 18> link_subclass{};
  base::FixedText<50> ident;
  base::FixedText<40> comment;
  base::FixedText<30> name;
  base::FixedText<30> facility;
  base::FixedText<24> city;
  base::FixedText<2> state;
  base::FixedText<2> country;
  base::FixedText<50> address;
  base::FixedText<50> cross_road;
  base::FixedText<40> link_ident;  // of waypoint type 106
  base::FixedText<51> route_link_ident;
  std::array<std::uint8_t, 2> unused{};  // up to a whole number of doubles
};

// A record with nothing known, as a reader starts each item: altitude and depth not known, class not set.
[[nodiscard]] ItemRecord blank_item();

// Signs latitude and longitude by the hemisphere letters where they are given ('S' and 'W' negative)...
void sign_position(ItemRecord& item);
// ... and sets the letters from the signs; zero is 'N' and 'E'.
void set_hemispheres(ItemRecord& item);

// Colours of track logs; the index is the colour number.
inline constexpr std::array<std::string_view, 17> kColourNames{
    "Black",     "Dark Red",   "Dark Green", "Dark Yellow", "Dark Blue",    "Dark Magenta",
    "Dark Cyan", "Light Gray", "Dark Gray",  "Red",         "Green",        "Yellow",
    "Blue",      "Magenta",    "Cyan",       "White",       "Default Color"};
inline constexpr std::uint8_t kDefaultColour = 16;
// The number of a colour name in any letter case; kDefaultColour when there is none such.
[[nodiscard]] std::uint8_t colour_number(std::string_view name);

}  // namespace store
