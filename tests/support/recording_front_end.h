// A front end that remembers what it was told, for tests to look at.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/front_end.h"

namespace support {

class RecordingFrontEnd : public base::FrontEnd {
 public:
  void write_line(int line, std::string_view text) override {
    lines[line] = text;
    line_writes.emplace_back(line, text);
  }
  void set_status(int field, std::string_view text) override {
    status[field] = text;
    status_writes.emplace_back(field, text);
  }
  void message_box(std::string_view title, std::string_view text) override { boxes.emplace_back(title, text); }
  bool ask_yes_no(std::string_view title, std::string_view question) override {
    questions.emplace_back(title, question);
    return answer;
  }
  bool choose(std::string_view title, std::span<base::Choice> choices) override {
    questions.emplace_back(title, "");
    for (base::Choice& choice : choices) {
      questions.back().second += std::string(choice.label) + (choice.chosen ? "+" : "-");
      if (std::find(not_chosen.begin(), not_chosen.end(), choice.label) != not_chosen.end()) choice.chosen = false;
    }
    return answer;
  }
  void set_progress_range(int steps) override {
    progress_range = steps;
    progress = 0;
  }
  void step_progress() override { ++progress; }
  void show_title(std::string_view text) override { shown_title = text; }
  void refresh_title() override { ++title_refreshes; }
  bool EscPressed() override { return esc && esc(); }

  // How often exactly this text was written to that line.
  [[nodiscard]] std::ptrdiff_t times_written(int line, std::string_view text) const {
    return std::count(line_writes.begin(), line_writes.end(), std::pair<int, std::string>(line, text));
  }

  std::map<int, std::string> lines;   // as they stand
  std::map<int, std::string> status;  // as they stand
  std::vector<std::pair<int, std::string>> line_writes;
  std::vector<std::pair<int, std::string>> status_writes;
  std::vector<std::pair<std::string, std::string>> boxes;
  std::vector<std::pair<std::string, std::string>> questions;
  std::function<bool()> esc;  // asked at every poll
  std::string shown_title;
  std::vector<std::string> not_chosen;  // labels that the user unchecks
  bool answer = true;
  int progress_range = 0;
  int progress = 0;
  int title_refreshes = 0;
};

}  // namespace support
