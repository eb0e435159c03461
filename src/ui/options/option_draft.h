// A copy of the settings that a dialog works on, its values as texts: what the configuration file takes, and nothing
// else, is taken.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"
#include "ui/options/option_table.h"

namespace ui {

struct OptionEntry {
  std::string text;  // as OptionDraft takes it
  std::string label;
};

// Something that is wrong with a setting: a sentence without full stop.
struct OptionProblem {
  std::string_view key;
  std::string text;
};

class OptionDraft {
 public:
  // The session must outlive the draft.
  explicit OptionDraft(const session::Session& session) : session_(session), settings_(session.settings) {}

  // The value as its field shows it.
  [[nodiscard]] std::string text(const OptionRow& row) const;
  // Takes what the field shows. The problem, when there is one, and the value is as it was; else an empty text. A text
  // that was not changed is always good, whatever the file had there.
  std::string take(const OptionRow& row, const std::string& text);
  // What is wrong between values that are good by themselves; an empty text for nothing.
  [[nodiscard]] OptionProblem contradiction() const;

  // What a Choice or Symbol... field offers; the value that it has now is always among it.
  [[nodiscard]] std::vector<OptionEntry> entries(const OptionRow& row) const;

  [[nodiscard]] const store::Settings& settings() const { return settings_; }
  [[nodiscard]] const session::Session& session() const { return session_; }

 private:
  [[nodiscard]] std::string text_for_file(const OptionRow& row, const std::string& text, std::string& problem) const;

  const session::Session& session_;
  store::Settings settings_;
};

// "up to the last slot" as its field has it.
inline constexpr std::string_view kUpToTheLast = "65535";

}  // namespace ui
