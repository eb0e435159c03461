// What a reader or writer has to say at its end of many items: each remark with its count, all in one line.
#pragma once

#include <string>
#include <string_view>

#include "base/front_end.h"

namespace base {

class Remarks {
 public:
  // "3 texts are cut"; nothing for a count of 0.
  void add(int count, std::string_view what) {
    if (count > 0) add(std::to_string(count) + ' ' + std::string(what));
  }
  void add(const std::string& remark) {
    if (!remark.empty()) text_ += (text_.empty() ? "" : "; ") + remark;
  }
  [[nodiscard]] const std::string& text() const { return text_; }
  // On output line 2; nothing when there are none.
  void say(FrontEnd& front_end) const {
    if (!text_.empty()) front_end.write_line(2, text_);
  }

 private:
  std::string text_;
};

// Lines that could not be read: how many, and which was the first.
class BadLines {
 public:
  void add(int line) {
    if (count_++ == 0) first_ = line;
  }
  // "3 lines are no waypoints and were passed over, the first in line 7": `what` is "lines are no waypoints".
  void remark(Remarks& remarks, std::string_view what) const {
    remarks.add(count_, std::string(what) + " and were passed over, the first in line " + std::to_string(first_));
  }

 private:
  int count_ = 0;
  int first_ = 0;
};

}  // namespace base
