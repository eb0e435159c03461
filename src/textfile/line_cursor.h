// Walks over a text file in memory line by line.
#pragma once

#include <string_view>

#include "textfile/text_layout.h"

namespace textfile {

// Lines end with LF, CR LF or CR, which are left out. A line longer than kLongestLine comes in pieces of that
// length, the rest as a line of its own.
class LineCursor {
 public:
  explicit LineCursor(std::string_view contents) : rest_(contents) {}

  [[nodiscard]] bool at_end() const { return rest_.empty(); }
  [[nodiscard]] std::size_t remaining() const { return rest_.size(); }
  // The first character of the next line.
  [[nodiscard]] bool next_begins_with(char c) const { return rest_.starts_with(c); }

  std::string_view next() {
    std::string_view line = rest_.substr(0, kLongestLine);
    line = line.substr(0, line.find('\n'));
    line = line.substr(0, line.find('\r'));
    rest_.remove_prefix(line.size());
    if (rest_.starts_with('\r')) rest_.remove_prefix(1);
    if (rest_.starts_with('\n')) rest_.remove_prefix(1);
    return line;
  }

 private:
  std::string_view rest_;
};

}  // namespace textfile
