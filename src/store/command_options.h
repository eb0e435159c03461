// Command options: settings given as options of a Unix command are, in the lines of files that begin with '!'.
// docs/formats/options.md describes each option and its argument.
#pragma once

#include <string>
#include <string_view>

#include "base/front_end.h"
#include "store/settings.h"

namespace store {

class CommandOptions {
 public:
  // Both outlive the object.
  CommandOptions(Settings& settings, base::FrontEnd& front_end) : settings_(settings), front_end_(front_end) {}

  // Applies the options of one line. What is wrong in it is said and leaves its setting as it was: a letter
  // that is no option or lacks its argument in a message box, a bad argument on output line 1. Since files hold
  // as many bad lines as they like, what comes after the first kMostBoxes boxes of a run goes to output line 1.
  void do_command(std::string_view line);

  // The message of that number on output line 1, with the option's argument where the message shows one.
  void usage_error(int number, std::string_view argument = {});

  static constexpr int kMostBoxes = 10;

 private:
  void apply(int letter, std::string_view argument);
  void switch_drawing(std::string_view argument);
  void set_coordinate(std::string_view argument);
  void set_number(char letter, std::string_view argument, int& setting, int highest);
  void show_getopt_error(const std::string& text);

  Settings& settings_;
  base::FrontEnd& front_end_;
  int boxes_ = 0;
};

}  // namespace store
