// The built-in datums, and the user's own from pelorixdatums.txt.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/front_end.h"

namespace geodesy {

struct DatumEntry {
  std::string_view name;  // compared without regard to letter case
  double da = 0;          // semi-major axis of WGS-84 minus that of this datum's ellipsoid, metres
  double df = 0;          // (flattening of WGS-84 minus that of this datum's ellipsoid) x 10 000
  std::int16_t dx = 0;    // translation from this datum to WGS-84, metres
  std::int16_t dy = 0;
  std::int16_t dz = 0;
};

class DatumTable {
 public:
  DatumTable() = default;
  DatumTable(const DatumTable&) = delete;  // rows point at the names
  DatumTable& operator=(const DatumTable&) = delete;

  // Reads the user's datums from the first "pelorixdatums.txt" in the directories (the current one, then
  // those of the PATH); when none has it, from beside `program_name` if that holds a backslash. 1 when a file
  // was read, else 0. A line is "name,da,df,dx,dy,dz"; lines without exactly five commas and those that begin
  // with ';' are passed over, and what is no number reads as 0. A row named "FINISXX" ends the table.
  int load_user_datums(std::span<const std::filesystem::path> directories, std::string_view program_name);

  // The user's row before the built-in one; nullptr when neither has the name.
  [[nodiscard]] const DatumEntry* find(std::string_view name) const;
  // The same for a name as other programs spell it ("WGS 84", "NAD27 CONUS"): blanks, hyphens and underscores
  // do not count either.
  [[nodiscard]] const DatumEntry* find_alike(std::string_view name) const;
  // The user's names in file order, then the built-in ones.
  [[nodiscard]] std::vector<std::string> names() const;

 private:
  // False at the row that ends the table.
  bool add_user_line(std::string_view line);

  std::deque<std::string> user_names_;  // a deque: names stay where they are while it grows
  std::vector<DatumEntry> user_rows_;
};

// Writes the built-in rows for reading by people; a failure is a message box (the reason stands on output
// line 3), and an old file is left as it was.
bool save_internal_datum_list(const std::filesystem::path& path, base::FrontEnd& front_end);

}  // namespace geodesy
