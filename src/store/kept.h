// What a file format keeps of the items that are written to it, so that a save can say what is left out.
#pragma once

#include <cstdint>

namespace store {

// Properties of items; a format's row names those that come back, or can be seen in the file, for each kind.
using Properties = std::uint32_t;
inline constexpr Properties kKeepsItems = 1U << 0;  // the items at all: their places and order
inline constexpr Properties kKeepsNames = 1U << 1;  // idents of waypoints, route points, proximity waypoints and events
inline constexpr Properties kKeepsComments = 1U << 2;
inline constexpr Properties kKeepsSymbols = 1U << 3;  // symbol numbers
inline constexpr Properties kKeepsDisplay = 1U << 4;  // display modes
inline constexpr Properties kKeepsColours = 1U << 5;  // colours of waypoints
inline constexpr Properties kKeepsTimes = 1U << 6;
inline constexpr Properties kKeepsAltitudes = 1U << 7;
inline constexpr Properties kKeepsDepths = 1U << 8;
inline constexpr Properties kKeepsDistances = 1U << 9;  // alarm distances
inline constexpr Properties kKeepsAddresses =
    1U << 10;  // facility, city, address, cross road, state, country, class, link ident ...
inline constexpr Properties kKeepsLinks = 1U << 11;     // links between route points
inline constexpr Properties kKeepsTitles = 1U << 12;    // names of routes and of track logs
inline constexpr Properties kKeepsNumbers = 1U << 13;   // numbers of routes
inline constexpr Properties kKeepsSegments = 1U << 14;  // where track segments begin
inline constexpr Properties kKeepsLines = 1U << 15;     // colours and line styles of track logs

// All that an event can have.
inline constexpr Properties kKeepsOfEvents =
    kKeepsItems | kKeepsNames | kKeepsComments | kKeepsSymbols | kKeepsDisplay | kKeepsColours | kKeepsTimes;

struct Kept {
  Properties waypoints = 0;
  Properties routes = 0;  // of the headers and, for the other properties, of the points
  Properties proximity = 0;
  Properties tracks = 0;
  Properties events = 0;
  Properties almanac = 0;
};

}  // namespace store
