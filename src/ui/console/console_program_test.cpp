#include "ui/console/console_program.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "tests/support/hostile_receiver.h"

namespace ui::console {
namespace {

using support::HostileReceiver;

constexpr int kTime = 5, kVoltages = 17;

// A terminal where nobody sits.
class RecordingTerminal : public Terminal {
 public:
  [[nodiscard]] bool has_terminal_output() const override { return false; }
  [[nodiscard]] int columns() const override { return 80; }
  void begin_keys() override {}
  void end_keys() override {}
  bool take_esc() override { return false; }
  bool read_line(std::string&) override { return false; }
  void write(std::string_view utf8_text) override { written += utf8_text; }

  std::string written;
};

class SingleCommandsOnTheConsole : public testing::Test {
 protected:
  int run(Arguments arguments, ConsoleScreen::Mode mode) {
    auto made = std::make_unique<HostileReceiver>(clock);
    made->answers = {{HostileReceiver::kIdentification,
                      {HostileReceiver::product(128, 250), HostileReceiver::array("L001 A010 A800 D800")}},
                     {kTime, {{14, {6, 1}}}},
                     {kVoltages, {{40, {1, 0, 1, 0}}}}};
    terminal.written.clear();
    output.str("");
    ConsoleScreen screen(terminal, clock);
    screen.set_mode(mode);
    Display display(screen);
    session::Session session(clock, display, {}, [&](const std::string&) { return std::move(made); });
    arguments.port = "COM7";
    arguments.config = "/no/such/file";
    return ConsoleProgram(session, display, screen, terminal, output).run(arguments);
  }
  static Arguments command(const std::string& name, bool follow = false) {
    Arguments arguments;
    arguments.command = name;
    arguments.follow = follow;
    return arguments;
  }

  support::SteppingClock clock;
  RecordingTerminal terminal;
  std::ostringstream output;
};

TEST_F(SingleCommandsOnTheConsole, FailWithExactlyOneReason) {
  struct Case {
    Arguments arguments;
    const char* reason;
  };
  for (const Case& c : {Case{command("position"), "The receiver on COM7 did not answer.\n"},
                        Case{command("position", true), "The receiver on COM7 did not answer.\n"},
                        Case{command("voltage"), "Can't read voltages\n"},
                        Case{command("time"), "Pid_Date_Time_Data: 2 bytes instead of 8: record refused\n"}}) {
    SCOPED_TRACE(c.reason);
    EXPECT_EQ(run(c.arguments, ConsoleScreen::Mode::Quiet), ConsoleProgram::kFailed);
    EXPECT_EQ(terminal.written, c.reason);
    EXPECT_EQ(output.str(), "");
  }
}

}  // namespace
}  // namespace ui::console
