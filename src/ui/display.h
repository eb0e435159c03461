// The ten output lines, the status fields, the title and the boxes, as every front end has them.
#pragma once

#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/front_end.h"
#include "ui/screen.h"

namespace ui {

class Display : public base::FrontEnd {
 public:
  static constexpr int kLines = 10;
  static constexpr std::size_t kLongestLine = 255;
  static constexpr std::size_t kLongestText = 1024;

  // The screen must outlive the display.
  explicit Display(Screen& screen) : screen_(screen) {}

  // Where the title's text comes from; without it there is no title.
  void set_title_source(std::function<std::string()> source) { title_source_ = std::move(source); }
  // Each line written is appended to the file from now on. Silently nothing when it cannot be opened.
  void log_to(const std::filesystem::path& path) { log_.open(path, std::ios::app); }
  void close_log() { log_.close(); }

  void write_line(int line, std::string_view text) override;
  void write_progress(int line, std::string_view text) override;
  void set_status(int field, std::string_view text) override;
  void message_box(std::string_view title, std::string_view text) override;
  bool ask_yes_no(std::string_view title, std::string_view question) override;
  bool choose(std::string_view title, std::span<base::Choice> choices) override {
    return screen_.choose(title, choices);
  }
  void set_progress_range(int steps) override;
  void step_progress() override;
  void show_title(std::string_view text) override { screen_.paint_title(text); }
  void refresh_title() override;
  void beep() override { screen_.beep(); }
  bool EscPressed() override { return screen_.take_abort_request(); }

  // Before each command: all lines and the third status field blank.
  void clear();
  [[nodiscard]] const std::string& line(int number) const { return lines_[static_cast<std::size_t>(number) - 1]; }

 private:
  // The text as it is kept; nothing, after a box, for a line that does not exist.
  std::optional<std::string_view> keep(int line, std::string_view text);

  Screen& screen_;
  std::function<std::string()> title_source_;
  std::array<std::string, kLines> lines_;
  std::ofstream log_;
  int progress_ = 0;
  int progress_range_ = 0;
};

}  // namespace ui
