// Texts of records on their way into a line of a file, where some characters would break the line.
#pragma once

#include <string>
#include <string_view>

#include "base/front_end.h"

namespace formats {

class LineTexts {
 public:
  // The text with '-' in place of control characters and of those that the format cannot have in a text.
  [[nodiscard]] std::string cleaned(std::string_view text, std::string_view forbidden = {});
  // A record without a position (not a number, or beyond 90 and 180 degrees) is left out of a file.
  void leave_out() { ++left_out_; }
  // What was changed and left out, in one line; empty when nothing was.
  [[nodiscard]] std::string summary() const;
  // The same on output line 2.
  void report(base::FrontEnd& front_end) const;

 private:
  int changed_ = 0;
  int left_out_ = 0;
};

}  // namespace formats
