// The terminal that the console program runs on: its keys, its width, and Ctrl-C.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace ui::console {

class Terminal {
 public:
  virtual ~Terminal() = default;

  [[nodiscard]] virtual bool has_terminal_output() const = 0;  // on standard error
  [[nodiscard]] virtual int columns() const = 0;
  // From here to end_keys a key is read as it is pressed, without echo. Ctrl-C counts as ESC and does not end
  // the program.
  virtual void begin_keys() = 0;
  virtual void end_keys() = 0;
  // Takes what was typed since the last call: true when ESC or Ctrl-C was among it.
  virtual bool take_esc() = 0;
  // One line typed by the user; nothing when nobody can be asked.
  virtual bool read_line(std::string& line) = 0;
  virtual void write(std::string_view utf8_text) = 0;  // to standard error
};

// The terminal of this process. One at a time: it owns the process's handling of Ctrl-C.
[[nodiscard]] std::unique_ptr<Terminal> make_terminal();

}  // namespace ui::console
