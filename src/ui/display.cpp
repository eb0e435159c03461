#include "ui/display.h"

#include <algorithm>

#include "base/text.h"

namespace ui {

void Display::write_line(int line, std::string_view text) {
  if (const auto kept = keep(line, text)) screen_.paint_line(line, *kept);
}

void Display::write_progress(int line, std::string_view text) {
  if (const auto kept = keep(line, text)) screen_.paint_progress_text(line, *kept);
}

std::optional<std::string_view> Display::keep(int line, std::string_view text) {
  if (line < 1 || line > kLines) {
    message_box("Display", base::format_text("Bad line number %d -- report error to author", line));
    return std::nullopt;
  }
  text = text.substr(0, kLongestLine);
  lines_[static_cast<std::size_t>(line) - 1] = text;
  if (log_.is_open()) {
    log_ << base::format_text("(line:%2d):-%.*s\n", line, static_cast<int>(text.size()), text.data());
    log_.flush();
  }
  return text;
}

void Display::set_status(int field, std::string_view text) {
  if (field >= 1 && field <= 3) screen_.paint_status(field, text);
}

void Display::message_box(std::string_view title, std::string_view text) {
  screen_.show_box(title, text.substr(0, kLongestText));
}

bool Display::ask_yes_no(std::string_view title, std::string_view question) {
  return screen_.ask(title, question.substr(0, kLongestText));
}

void Display::set_progress_range(int steps) {
  if (steps == 0 && progress_range_ == 0) return;
  progress_range_ = std::max(steps, 0);
  progress_ = 0;
  screen_.paint_progress(progress_, progress_range_);
}

void Display::step_progress() {
  if (progress_ < progress_range_) screen_.paint_progress(++progress_, progress_range_);
}

void Display::refresh_title() {
  if (title_source_) screen_.paint_title(title_source_());
}

void Display::clear() {
  for (int number = 1; number <= kLines; ++number) {
    std::string& text = lines_[static_cast<std::size_t>(number) - 1];
    if (text.empty()) continue;
    text.clear();
    screen_.paint_line(number, text);
  }
  if (log_.is_open()) log_ << "\n<DisplayCleared>\n";
  set_status(3, " ");
}

}  // namespace ui
