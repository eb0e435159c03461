// Waypoints in other programs' comma-separated files, whose first row says what stands in each column.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "formats/csv_fields.h"
#include "store/item_record.h"

namespace formats {

class CsvColumns {
 public:
  // By the names in the header row, in any letter case: lat or latitude, lon, long, lng or longitude, and any of
  // name, alt, ele, elevation, date, time, comment, cmt, desc, description, sym, symbol. Nothing when there is no
  // latitude or no longitude.
  [[nodiscard]] static std::optional<CsvColumns> of_header(const CsvFields& header);

  // What could not be read in rows that were.
  struct LeftOut {
    int times = 0;
    int altitudes = 0;
  };
  // Fills the item; false when the row has no position. Altitudes are metres, times UTC. `separator` is the file's,
  // which tells what a comma in a number can be.
  [[nodiscard]] bool read_row(const CsvFields& fields, char separator, store::ItemRecord& item,
                              LeftOut& left_out) const;

 private:
  enum Column : std::size_t { kName, kLatitude, kLongitude, kAltitude, kDate, kTime, kComment, kSymbol, kColumns };
  struct HeaderName {
    std::string_view name;
    Column column;
  };
  static const std::array<HeaderName, 25> kHeaderNames;

  [[nodiscard]] std::string_view field(const CsvFields& fields, Column column) const;

  std::array<std::optional<std::size_t>, kColumns> places_{};
};

}  // namespace formats
