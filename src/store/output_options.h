// What the user chose for a file that is written: datum and notation of the positions, the zone of the times,
// the kinds of items. A format takes of it what it has a use for.
#pragma once

#include <cstdint>
#include <string>

#include "geodesy/notation.h"

namespace store {

struct OutputOptions {
  std::string datum = "WGS-84";
  geodesy::Notation notation = geodesy::Notation::Dmm;
  int version = 2;                  // of native text files
  std::int64_t offset_seconds = 0;  // hours from UTC as whole seconds (store::offset_seconds) ...
  double offset_hours = 0;          // ... and as files show them
  bool zero_time = false;           // no times
  bool distances = false;           // comment lines with the lengths of routes and tracks
  bool no_comments = false;
  bool no_symbols = false;
  bool waypoints = true, routes = true, proximity = true, tracks = true, events = true, almanac = true;
  bool kinds_given = false;   // the user has named the kinds, so nobody asks for them
  std::int64_t now_unix = 0;  // when the file is written, seconds since 1970-01-01 UTC
};

}  // namespace store
