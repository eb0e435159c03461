#include "ui/console/console_screen.h"

#include <algorithm>

#include "base/text.h"

namespace ui::console {
namespace {

using namespace std::chrono_literals;

constexpr auto kBarInterval = 100ms;
// A receive loop asks at every byte; looking at the keyboard as often would cost more than the transfer.
constexpr auto kKeyInterval = 20ms;
constexpr int kErrorLines = 2;  // lines 1 and 2 are errors and their details

std::string on_one_line(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\n') {
      result += "\\n";
    } else {
      result += c;
    }
  }
  return result;
}

// Lines 1 and 2 carry errors, but also these.
bool is_good_news(std::string_view text) {
  return text.starts_with("reading: ") || text.starts_with("Internal datums saved to: ") ||
         (text.starts_with("File ") && text.ends_with(" saved")) || text.ends_with(" download completed") ||
         text == "Download(s) Finished";
}

}  // namespace

void ConsoleScreen::trace(const std::string& what, std::string_view text) {
  terminal_.write("[" + what + "] " + base::utf8_text(on_one_line(text)) + "\n");
}

void ConsoleScreen::say(std::string_view text) {
  remove_bar();
  terminal_.write(base::utf8_text(text) + "\n");
}

void ConsoleScreen::paint_line(int line, std::string_view text) {
  const bool is_error = line <= kErrorLines && !text.empty() && !is_good_news(text);
  if (mode_ == Mode::Trace) {
    trouble_ = trouble_ || is_error;
    trace(base::format_text("line %d", line), text);
    return;
  }
  if (text.empty()) {
    said_.erase(line);
    if (line == 1) trouble_ = false;
    return;
  }
  if (lines_are_results_) return;
  // While the bar is up it stands for the lines of progress; what is wrong is said on the first three.
  if (progress_range_ > 0 && line > (trouble_ ? 3 : kErrorLines)) return;
  trouble_ = trouble_ || is_error;
  // What stands below an error says what to do about it.
  if (mode_ == Mode::Quiet && !is_error && !(trouble_ && line > kErrorLines)) return;
  std::string& said = said_[line];
  if (said == text && line > kErrorLines) return;
  said = text;
  say(text);
}

void ConsoleScreen::paint_progress_text(int line, std::string_view text) {
  if (mode_ == Mode::Trace) trace(base::format_text("line %d", line), text);
}

void ConsoleScreen::paint_status(int field, std::string_view text) {
  if (mode_ == Mode::Trace) trace(base::format_text("status %d", field), text);
  const std::string_view shown = base::trim_blanks(text);
  if (field == 1) step_text_ = shown;
  if (mode_ == Mode::Plain && !shown.empty()) say(shown);
}

void ConsoleScreen::paint_title(std::string_view text) {
  if (mode_ == Mode::Trace) trace("title", text);
}

void ConsoleScreen::paint_progress(int step, int steps) {
  progress_ = step;
  progress_range_ = steps;
  if (mode_ == Mode::Trace) terminal_.write(base::format_text("[progress %d/%d]\n", step, steps));
  if (mode_ != Mode::Plain || !terminal_.has_terminal_output()) return;
  if (steps == 0) {
    remove_bar();
  } else if (step == 0 || step == steps || clock_.monotonic() >= next_bar_) {
    next_bar_ = clock_.monotonic() + kBarInterval;
    draw_bar();
  }
}

void ConsoleScreen::draw_bar() {
  const std::string counts = base::format_text(" %d/%d", progress_, progress_range_);
  const std::string head = step_text_.empty() ? std::string() : base::utf8_text(step_text_) + " ";
  const int taken = static_cast<int>(head.size() + counts.size()) + 3;
  const int width = std::clamp(terminal_.columns() - taken, 0, 50);
  const auto full = static_cast<std::size_t>(static_cast<long long>(width) * progress_ / progress_range_);
  const std::string bar =
      head + "[" + std::string(full, '#') + std::string(static_cast<std::size_t>(width) - full, '.') + "]" + counts;
  remove_bar();
  terminal_.write(bar);
  bar_length_ = bar.size();
}

void ConsoleScreen::remove_bar() {
  // By blanks: not every console of Windows knows the codes of terminals.
  if (bar_length_ > 0) terminal_.write("\r" + std::string(bar_length_, ' ') + "\r");
  bar_length_ = 0;
}

void ConsoleScreen::show_box(std::string_view title, std::string_view text) {
  trouble_ = true;
  if (mode_ == Mode::Trace) {
    trace("box " + std::string(title), text);
  } else {
    say(std::string(title) + ": " + std::string(text));
  }
}

bool ConsoleScreen::ask(std::string_view title, std::string_view question) {
  if (mode_ == Mode::Trace) trace("ask " + std::string(title), question);
  if (says_yes_) return true;
  remove_bar();
  terminal_.write(base::utf8_text(question) + " [y/N] ");
  std::string answer;
  const bool answered = terminal_.read_line(answer);
  if (!answered) terminal_.write("\n");
  return answered && (answer == "y" || answer == "Y" || base::equal_ignoring_case(answer, "yes"));
}

// One question a line: Return takes what is proposed.
bool ConsoleScreen::choose(std::string_view title, std::span<base::Choice> choices) {
  if (mode_ == Mode::Trace) trace("choose", title);
  if (!terminal_.has_terminal_output()) return true;
  remove_bar();
  terminal_.write(base::utf8_text(title) + "\n");
  for (base::Choice& choice : choices) {
    terminal_.write("  " + base::utf8_text(choice.label) + (choice.chosen ? " [Y/n] " : " [y/N] "));
    std::string answer;
    if (!terminal_.read_line(answer)) {
      terminal_.write("\n");
      return false;
    }
    if (!answer.empty()) choice.chosen = answer[0] == 'y' || answer[0] == 'Y';
  }
  return true;
}

bool ConsoleScreen::take_abort_request() {
  if (clock_.monotonic() < next_key_look_) return false;
  next_key_look_ = clock_.monotonic() + kKeyInterval;
  const bool pressed = terminal_.take_esc();
  aborted_ = aborted_ || pressed;
  return pressed;
}

}  // namespace ui::console
