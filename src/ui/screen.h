// What a window or a console must be able to do for Display. It only paints and asks; every rule stands in Display.
#pragma once

#include <span>
#include <string_view>

#include "base/front_end.h"

namespace ui {

class Screen {
 public:
  virtual ~Screen() = default;

  virtual void paint_line(int line, std::string_view text) = 0;  // 1 to 10
  virtual void paint_progress_text(int line, std::string_view text) { paint_line(line, text); }
  virtual void paint_status(int field, std::string_view text) = 0;  // 1 to 3
  virtual void paint_title(std::string_view text) = 0;
  virtual void paint_progress(int step, int steps) = 0;  // steps 0: no bar
  virtual void show_box(std::string_view title, std::string_view text) = 0;
  virtual bool ask(std::string_view title, std::string_view question) = 0;
  // As base::FrontEnd::choose.
  virtual bool choose(std::string_view title, std::span<base::Choice> choices) = 0;
  // Takes one pending input event; true when it asks to abort.
  virtual bool take_abort_request() = 0;
  virtual void beep() {}
};

}  // namespace ui
