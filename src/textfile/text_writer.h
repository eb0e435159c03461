// Writes the store as a text file of the program's own, and single items as the same lines for lists.
// docs/formats/native-text.md has the layout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/front_end.h"
#include "geodesy/datum_shift.h"
#include "geodesy/notation.h"
#include "geodesy/position.h"
#include "store/item_store.h"

namespace textfile {

struct TextOptions {
  std::string datum = "WGS-84";
  geodesy::Notation notation = geodesy::Notation::Dmm;
  int version = 2;
  std::int64_t offset_seconds = 0;  // hours from UTC as whole seconds (store::offset_seconds) ...
  double offset_hours = 0;          // ... and as the 'Z' line shows them
  bool zero_time = false;           // no times
  bool distances = false;           // comment lines with the lengths of routes and tracks
  bool no_comments = false;
  bool no_symbols = false;
  bool waypoints = true, routes = true, proximity = true, tracks = true, events = true;
  std::int64_t now_unix = 0;  // when the file is written, seconds since 1970-01-01 UTC
};

class TextWriter {
 public:
  // All must outlive the writer.
  TextWriter(const store::ItemStore& store, geodesy::DatumShift& shift, base::FrontEnd& front_end);

  // The whole file with LF line ends. Characters that would break a line are written as '-', and records
  // without a position are left out: output line 2 tells how many.
  std::string write(const TextOptions& options);

  // The line of one record, without line end; empty when it has no position. Route points print their time as
  // kept. The shift is prepared by the first call for a datum: nobody else may prepare it between calls.
  std::string item_line(const store::ItemRecord& record, const TextOptions& options, bool is_route_point = false);

 private:
  void prepare_shift(const std::string& datum);
  [[nodiscard]] store::ItemRecord cleaned(const store::ItemRecord& record, int version);
  template <std::size_t N>
  void clean(base::FixedText<N>& text, std::string_view forbidden);
  bool append_item(std::string& out, const store::ItemRecord& item, const TextOptions& options, bool is_route_point);
  bool append_waypoint(std::string& out, const store::ItemRecord& record, const TextOptions& options,
                       bool is_route_point);
  void append_routes(std::string& out, const TextOptions& options);
  void append_tracks(std::string& out, const TextOptions& options);
  void report() const;

  const store::ItemStore& store_;
  geodesy::DatumShift& shift_;
  base::FrontEnd& front_end_;
  std::optional<std::string> prepared_datum_;
  int changed_texts_ = 0;
  int left_out_ = 0;  // records without a position
};

}  // namespace textfile
