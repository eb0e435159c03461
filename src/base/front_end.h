// What everything below the user interface may say to the user and ask of them. The window and the console
// program both stand behind it; lower folders never know which.
#pragma once

#include <span>
#include <string_view>

namespace base {

// One line of a list in which the user may check what is wanted.
struct Choice {
  std::string_view label;
  bool chosen = false;
};

class FrontEnd {
 public:
  virtual ~FrontEnd() = default;

  // Output lines 1 to 10: 1 errors, 2 detail, 3 and 4 progress and completion. Texts are Latin-1.
  virtual void write_line(int line, std::string_view text) = 0;
  // A text of progress on such a line, which nobody misses who sees the progress bar.
  virtual void write_progress(int line, std::string_view text) { write_line(line, text); }
  // Status fields 1 to 3: 1 the current transfer step, 3 hints.
  virtual void set_status(int field, std::string_view text) = 0;
  virtual void message_box(std::string_view title, std::string_view text) = 0;
  // False for no, and where nobody can be asked.
  virtual bool ask_yes_no(std::string_view title, std::string_view question) = 0;
  // Lets the user change what is chosen; false when they cancel. Where nobody can be asked all stays as it is.
  virtual bool choose(std::string_view title, std::span<Choice> choices) = 0;
  // The progress bar: `steps` to go from empty to full; 0 takes the bar away.
  virtual void set_progress_range(int steps) = 0;
  virtual void step_progress() = 0;
  // A text in the title's place, until the next refresh_title.
  virtual void show_title(std::string_view text) = 0;
  // A short sound, where there is one.
  virtual void beep() {}
  // The counts in the title have changed.
  virtual void refresh_title() = 0;
  // Takes one pending input event; true only when it asks to abort.
  virtual bool EscPressed() = 0;
};

}  // namespace base
