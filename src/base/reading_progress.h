// The progress bar of a text that takes a while to read, and the user's wish to stop.
#pragma once

#include <algorithm>

#include "base/front_end.h"
#include "base/text_input.h"

namespace base {

class ReadingProgress {
 public:
  ReadingProgress(FrontEnd& front_end, TextInput& input) : front_end_(front_end), input_(input) {
    if (shown()) front_end_.set_progress_range(kSteps);
  }
  ~ReadingProgress() {
    if (shown()) front_end_.set_progress_range(0);
  }
  ReadingProgress(const ReadingProgress&) = delete;
  ReadingProgress& operator=(const ReadingProgress&) = delete;

  // To be called for each line or item; false when the user has asked to stop, which output line 2 says.
  bool go_on() {
    if (++calls_ % kCallsBetweenPolls != 0) return true;
    if (front_end_.EscPressed()) {
      front_end_.write_line(2, "Operation Aborted");
      input_.abort();
      return false;
    }
    if (!shown()) return true;
    const auto reached = static_cast<int>(input_.taken() / (input_.size() / kSteps));
    for (; step_ < std::min(reached, kSteps); ++step_) front_end_.step_progress();
    return true;
  }

 private:
  static constexpr int kSteps = 100;
  static constexpr int kCallsBetweenPolls = 1000;
  static constexpr std::uint64_t kLargeText = 1'000'000;  // bytes
  [[nodiscard]] bool shown() const { return input_.size() > kLargeText; }

  FrontEnd& front_end_;
  TextInput& input_;
  int calls_ = 0;
  int step_ = 0;
};

}  // namespace base
