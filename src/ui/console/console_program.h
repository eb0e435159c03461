// The console program: does what its arguments say with the same session and commands as the window.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "session/session.h"
#include "ui/console/arguments.h"
#include "ui/console/console_screen.h"
#include "ui/console/terminal.h"
#include "ui/display.h"

namespace ui::console {

class ConsoleProgram {
 public:
  static constexpr int kDone = 0, kFailed = 1, kWrongUsage = 2;  // exit status

  // All must outlive the program; results go to `output`.
  ConsoleProgram(session::Session& session, Display& display, ConsoleScreen& screen, Terminal& terminal,
                 std::ostream& output)
      : session_(session), display_(display), screen_(screen), terminal_(terminal), output_(output) {}

  // The exit status.
  int run(const Arguments& arguments);

 private:
  struct Command;
  static const Command* find_command(const std::string& name);

  [[nodiscard]] bool take_settings(const Arguments& arguments);
  [[nodiscard]] bool take_lowrance_options(const Arguments& arguments);
  int wrong_usage(const std::string& why);
  int no_answer();
  int fail(const std::string& why);

  int answer(const Arguments& arguments);
  int position(const Arguments& arguments);
  int download(const Arguments& arguments);
  int upload(const Arguments& arguments);
  int screen(const Arguments& arguments);
  int convert(const Arguments& arguments);
  int list(const Arguments& arguments);
  int info(const Arguments& arguments);
  int datums(const Arguments& arguments);
  int shift(const Arguments& arguments);
  int format(const Arguments& arguments);
  int parse(const Arguments& arguments);
  int distance(const Arguments& arguments);
  int ports(const Arguments& arguments);
  int find(const Arguments& arguments);
  int save_config(const Arguments& arguments);
  int simulate(const Arguments& arguments);
  int save_simulated(store::Family family, const std::vector<std::string>& files);

  bool run_word(const std::string& word, const Arguments& arguments);
  [[nodiscard]] bool can_transfer(const std::string& direction, const std::vector<std::string>& kinds);
  [[nodiscard]] std::vector<std::string> kinds_to_upload();
  bool read_files(const std::vector<std::string>& files);
  bool write_outputs(const Arguments& arguments);
  [[nodiscard]] bool read_positions(const std::vector<std::string>& words, std::vector<geodesy::Position>& positions);
  void print(std::string_view line);
  void print_degrees(const geodesy::Position& position);

  session::Session& session_;
  Display& display_;
  ConsoleScreen& screen_;
  Terminal& terminal_;
  std::ostream& output_;
};

}  // namespace ui::console
