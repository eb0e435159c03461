// The display on standard error: one text a line as it comes, with a progress bar where there is a terminal.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "ui/console/terminal.h"
#include "ui/screen.h"

namespace ui::console {

class ConsoleScreen : public Screen {
 public:
  enum class Mode { Plain, Quiet, Trace };

  // Both must outlive the screen.
  ConsoleScreen(Terminal& terminal, base::Clock& clock) : terminal_(terminal), clock_(clock) {}

  void set_mode(Mode mode) { mode_ = mode; }
  // While lines are results they go to standard output in the end, so they are not written here.
  void set_lines_are_results(bool results) { lines_are_results_ = results; }
  // Questions are answered with yes beforehand.
  void set_says_yes(bool yes) { says_yes_ = yes; }
  // Whether the running command has reported an error.
  [[nodiscard]] bool has_told_trouble() const { return trouble_; }
  // Whether the user has asked to abort, ever.
  [[nodiscard]] bool was_aborted() const { return aborted_; }

  void paint_line(int line, std::string_view text) override;
  // Only traced: the bar stands for it.
  void paint_progress_text(int line, std::string_view text) override;
  void paint_status(int field, std::string_view text) override;
  void paint_title(std::string_view text) override;
  void paint_progress(int step, int steps) override;
  void show_box(std::string_view title, std::string_view text) override;
  bool ask(std::string_view title, std::string_view question) override;
  bool choose(std::string_view title, std::span<base::Choice> choices) override;
  bool take_abort_request() override;

 private:
  void trace(const std::string& what, std::string_view text);
  void say(std::string_view text);
  void draw_bar();
  void remove_bar();

  Terminal& terminal_;
  base::Clock& clock_;
  Mode mode_ = Mode::Plain;
  bool lines_are_results_ = false;
  bool says_yes_ = false;
  std::map<int, std::string> said_;  // by line: a text that comes back to its line is not said twice
  bool aborted_ = false;
  bool trouble_ = false;   // the running command has reported an error
  std::string step_text_;  // of the running transfer, beside the bar
  int progress_ = 0;
  int progress_range_ = 0;
  std::size_t bar_length_ = 0;  // 0: none is drawn
  std::chrono::microseconds next_bar_{0};
  std::chrono::microseconds next_key_look_{0};
};

}  // namespace ui::console
