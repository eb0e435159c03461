// Writes the store as a text file of the program's own, and single items as the same lines for lists.
// docs/formats/native-text.md has the layout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/front_end.h"
#include "base/text_output.h"
#include "geodesy/datum_shift.h"
#include "geodesy/notation.h"
#include "geodesy/position.h"
#include "store/item_store.h"
#include "store/output_options.h"

namespace textfile {

class TextWriter {
 public:
  // All must outlive the writer.
  TextWriter(const store::ItemStore& store, geodesy::DatumShift& shift, base::FrontEnd& front_end);

  // The whole file with LF line ends. Characters that would break a line are written as '-', and records
  // without a position are left out: output line 2 tells how many.
  void write(const store::OutputOptions& options, base::TextOutput& out);

  // The line of one record, without line end; empty when it has no position. Route points print their time as
  // kept. The shift is prepared by the first call for a datum: nobody else may prepare it between calls.
  std::string item_line(const store::ItemRecord& record, const store::OutputOptions& options,
                        bool is_route_point = false);

 private:
  void prepare_shift(const std::string& datum);
  [[nodiscard]] store::ItemRecord cleaned(const store::ItemRecord& record, int version);
  template <std::size_t N>
  void clean(base::FixedText<N>& text, std::string_view forbidden);
  bool append_item(std::string& out, const store::ItemRecord& item, const store::OutputOptions& options,
                   bool is_route_point);
  bool append_waypoint(std::string& out, const store::ItemRecord& record, const store::OutputOptions& options,
                       bool is_route_point);
  void append_routes(base::TextOutput& out, const store::OutputOptions& options);
  void append_tracks(base::TextOutput& out, const store::OutputOptions& options);
  void report() const;

  const store::ItemStore& store_;
  geodesy::DatumShift& shift_;
  base::FrontEnd& front_end_;
  std::optional<std::string> prepared_datum_;
  int changed_texts_ = 0;
  int wordless_colours_ = 0;
  int left_out_ = 0;  // records without a position
};

}  // namespace textfile
