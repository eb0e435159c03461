#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <iostream>

#include "ui/console/terminal.h"

namespace ui::console {
namespace {

// A signal handler can reach nothing else.
volatile std::sig_atomic_t interrupts = 0;

extern "C" void count_interrupt(int) { interrupts = interrupts + 1; }

constexpr char kEscape = 27;
constexpr int kLookMilliseconds = 50;  // between two looks at Ctrl-C while a line is typed
// All that ask the program to end: the port must be put back first, whoever asks.
constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

class TermiosTerminal : public Terminal {
 public:
  ~TermiosTerminal() override { end_keys(); }

  [[nodiscard]] bool has_terminal_output() const override { return isatty(STDERR_FILENO) == 1; }

  [[nodiscard]] int columns() const override {
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
  }

  void begin_keys() override {
    if (reading_) return;
    reading_ = true;
    interrupts = 0;
    struct sigaction action {};
    action.sa_handler = count_interrupt;
    for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &action, &old_actions_[i]);
    // Whoever reads our messages may go away: the transfer goes on.
    old_pipe_action_ = std::signal(SIGPIPE, SIG_IGN);
    // A background job must not touch the terminal: the system would stop it.
    raw_ = tcgetattr(STDIN_FILENO, &old_settings_) == 0 && is_foreground();
    if (!raw_) return;
    key_settings_ = old_settings_;
    key_settings_.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    key_settings_.c_cc[VMIN] = 0;
    key_settings_.c_cc[VTIME] = 0;
    key_settings_.c_cc[VSUSP] = _POSIX_VDISABLE;  // no receiver waits for a program that is stopped
    tcsetattr(STDIN_FILENO, TCSANOW, &key_settings_);
  }

  void end_keys() override {
    if (!reading_) return;
    reading_ = false;
    if (raw_) tcsetattr(STDIN_FILENO, TCSANOW, &old_settings_);
    for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &old_actions_[i], nullptr);
    std::signal(SIGPIPE, old_pipe_action_);
  }

  bool take_esc() override {
    if (interrupts > 0) {
      interrupts = 0;
      return true;
    }
    if (!raw_ || !is_foreground()) return false;
    pollfd input{STDIN_FILENO, POLLIN, 0};
    if (poll(&input, 1, 0) <= 0) return false;
    std::array<char, 64> keys;
    const ssize_t count = read(STDIN_FILENO, keys.data(), keys.size());
    // An arrow or function key begins with ESC too, but more comes with it.
    return count > 0 && keys[static_cast<std::size_t>(count) - 1] == kEscape;
  }

  bool read_line(std::string& line) override {
    if (isatty(STDIN_FILENO) != 1) return false;
    // A line is typed as everywhere, also while keys are read one by one.
    if (raw_) tcsetattr(STDIN_FILENO, TCSANOW, &old_settings_);
    // Waited for here: an interrupt just before a blocking read would go unnoticed.
    const auto interrupted = [this] { return reading_ && interrupts > 0; };
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (!interrupted() && poll(&input, 1, kLookMilliseconds) <= 0) {
    }
    const bool typed = !interrupted() && std::getline(std::cin, line);
    if (raw_) tcsetattr(STDIN_FILENO, TCSANOW, &key_settings_);
    return typed;
  }

  void write(std::string_view utf8_text) override { std::cerr << utf8_text << std::flush; }

 private:
  static bool is_foreground() { return tcgetpgrp(STDIN_FILENO) == getpgrp(); }

  bool reading_ = false;
  bool raw_ = false;
  termios old_settings_{};
  termios key_settings_{};
  std::array<struct sigaction, kSignals.size()> old_actions_{};
  void (*old_pipe_action_)(int) = SIG_DFL;
};

}  // namespace

std::unique_ptr<Terminal> make_terminal() { return std::make_unique<TermiosTerminal>(); }

}  // namespace ui::console
