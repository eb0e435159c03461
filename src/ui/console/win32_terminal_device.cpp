#include <windows.h>

#include <array>
#include <atomic>
#include <iostream>
#include <span>

#include "base/win32_text.h"
#include "ui/console/terminal.h"

namespace ui::console {
namespace {

// The handler runs in a thread of its own and can reach nothing else.
std::atomic<bool> reading_keys{false};
std::atomic<int> interrupts{0};

BOOL WINAPI count_interrupt(DWORD event) {
  if (!reading_keys) return FALSE;  // the program ends
  ++interrupts;
  // When the console is closed, the system ends the program as soon as this returns, or some seconds later: time to
  // save what has arrived.
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

class Win32Terminal : public Terminal {
 public:
  // Never taken away again: that would wait for a handler that sleeps.
  Win32Terminal() { SetConsoleCtrlHandler(count_interrupt, TRUE); }
  ~Win32Terminal() override { end_keys(); }

  [[nodiscard]] bool has_terminal_output() const override { return is_console(GetStdHandle(STD_ERROR_HANDLE)); }

  [[nodiscard]] int columns() const override {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) == 0) return 80;
    return info.srWindow.Right - info.srWindow.Left + 1;
  }

  void begin_keys() override {
    if (reading_keys) return;
    interrupts = 0;
    reading_keys = true;
  }

  void end_keys() override { reading_keys = false; }

  bool take_esc() override {
    if (interrupts.exchange(0) > 0) return true;
    bool esc = false;
    std::array<INPUT_RECORD, 64> events;
    DWORD count = 0;
    while (GetNumberOfConsoleInputEvents(input(), &count) != 0 && count > 0) {
      if (ReadConsoleInputW(input(), events.data(), static_cast<DWORD>(events.size()), &count) == 0) break;
      for (const INPUT_RECORD& event : std::span(events).first(count))
        esc = esc || (event.EventType == KEY_EVENT && event.Event.KeyEvent.bKeyDown != 0 &&
                      event.Event.KeyEvent.wVirtualKeyCode == VK_ESCAPE);
    }
    return esc;
  }

  bool read_line(std::string& line) override {
    if (!is_console(input())) return false;
    std::wstring typed;
    while (!typed.ends_with(L'\n')) {
      std::array<wchar_t, 256> block;
      DWORD count = 0;
      // Ctrl-C ends it without a character.
      if (ReadConsoleW(input(), block.data(), static_cast<DWORD>(block.size()), &count, nullptr) == 0 || count == 0)
        return false;
      typed.append(block.data(), count);
    }
    line = base::utf8_from_wide(typed.substr(0, typed.find_first_of(L"\r\n")));
    return true;
  }

  void write(std::string_view utf8_text) override { std::cerr << utf8_text << std::flush; }

 private:
  static HANDLE input() { return GetStdHandle(STD_INPUT_HANDLE); }

  static bool is_console(HANDLE handle) {
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
  }
};

}  // namespace

std::unique_ptr<Terminal> make_terminal() { return std::make_unique<Win32Terminal>(); }

}  // namespace ui::console
