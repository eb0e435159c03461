// A front end before which nobody sits: nothing is shown, and nobody can be asked. What shall come through all the same
// is overridden.
#pragma once

#include "base/front_end.h"

namespace base {

class QuietFrontEnd : public FrontEnd {
 public:
  void write_line(int, std::string_view) override {}
  void write_progress(int, std::string_view) override {}
  void set_status(int, std::string_view) override {}
  void message_box(std::string_view, std::string_view) override {}
  bool ask_yes_no(std::string_view, std::string_view) override { return false; }
  bool choose(std::string_view, std::span<Choice>) override { return true; }
  void set_progress_range(int) override {}
  void step_progress() override {}
  void show_title(std::string_view) override {}
  void refresh_title() override {}
  bool EscPressed() override { return false; }
};

}  // namespace base
