#include <conio.h>
#include <io.h>
#include <windows.h>

#include <atomic>
#include <cstdio>
#include <iostream>

#include "ui/console/terminal.h"

namespace ui::console {
namespace {

// The handler runs in a thread of its own and can reach nothing else.
std::atomic<int> interrupts{0};

BOOL WINAPI count_interrupt(DWORD) {
  ++interrupts;
  return TRUE;
}

constexpr int kEscape = 27;

class Win32Terminal : public Terminal {
 public:
  ~Win32Terminal() override { end_keys(); }

  [[nodiscard]] bool has_terminal_output() const override { return _isatty(_fileno(stderr)) != 0; }

  [[nodiscard]] int columns() const override {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    return GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) != 0 ? info.dwSize.X : 80;
  }

  void begin_keys() override {
    if (reading_) return;
    reading_ = true;
    interrupts = 0;
    SetConsoleCtrlHandler(count_interrupt, TRUE);
  }

  void end_keys() override {
    if (reading_) SetConsoleCtrlHandler(count_interrupt, FALSE);
    reading_ = false;
  }

  bool take_esc() override {
    if (interrupts.exchange(0) > 0) return true;
    bool esc = false;
    while (_isatty(_fileno(stdin)) != 0 && _kbhit() != 0) esc = _getch() == kEscape || esc;
    return esc;
  }

  bool read_line(std::string& line) override {
    return _isatty(_fileno(stdin)) != 0 && static_cast<bool>(std::getline(std::cin, line));
  }

  void write(std::string_view utf8_text) override { std::cerr << utf8_text << std::flush; }

 private:
  bool reading_ = false;
};

}  // namespace

std::unique_ptr<Terminal> make_terminal() { return std::make_unique<Win32Terminal>(); }

}  // namespace ui::console
