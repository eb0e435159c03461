// Columns and words of the native text file that its reader and its writer share. Columns count from 0 here.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "geodesy/notation.h"

namespace textfile {

inline constexpr std::size_t kIdentColumn = 3;  // after the kind letter and two blanks
inline constexpr std::size_t kLongIdent = 15;
inline constexpr std::size_t kShortIdent = 6;  // version 1, and files of older programs

// Where the position of a line begins: after an ident and a blank, or where the ident would stand.
inline constexpr std::size_t kAfterLongIdent = kIdentColumn + kLongIdent + 1;
inline constexpr std::size_t kAfterShortIdent = kIdentColumn + kShortIdent + 1;
inline constexpr std::size_t kWithoutIdent = kIdentColumn;

inline constexpr std::size_t kDateLength = 24;
inline constexpr std::size_t kLongestComment = 40;
inline constexpr std::size_t kLongestLine = 254;  // the rest of a longer line counts as a line of its own

// A latitude or longitude beyond these is no position. A datum shift may carry one a little over 90 or 180.
inline constexpr double kLargestLatitude = 91;
inline constexpr double kLargestLongitude = 361;

// From the start of the position to the start of the time.
[[nodiscard]] constexpr std::size_t position_width(geodesy::Notation notation) {
  return notation == geodesy::Notation::Dms ? 27 : 25;
}

[[nodiscard]] constexpr char field_separator(int version) { return version >= 2 ? '^' : ';'; }

struct NotationWord {
  geodesy::Notation notation;
  std::string_view word;
};
inline constexpr std::array kNotationWords{
    NotationWord{geodesy::Notation::Dms, "DMS"}, NotationWord{geodesy::Notation::Dmm, "DMM"},
    NotationWord{geodesy::Notation::Ddd, "DDD"}, NotationWord{geodesy::Notation::Utm, "UTM"}};

// Colours of waypoints; the index is the number. Track logs have a table of their own.
inline constexpr std::array<std::string_view, 5> kWaypointColours{"Black", "Red", "Blue", "Green", "Yellow"};

struct DisplayWord {
  int mode;
  std::string_view word;
};
inline constexpr DisplayWord kSymbolAndComment{5, "S+C"};  // what every other mode and word is taken as
inline constexpr std::array kDisplayWords{DisplayWord{1, "S"}, DisplayWord{3, "S+N"}, kSymbolAndComment};

}  // namespace textfile
