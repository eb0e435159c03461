#include <csignal>
#include <iostream>

#include "apps/surroundings.h"
#include "apps/system_clock.h"
#include "session/session.h"
#include "ui/console/arguments.h"
#include "ui/console/console_program.h"
#include "ui/console/standard_streams.h"
#include "ui/title.h"

namespace {

// False, with a message, when the results did not get out.
bool output_is_complete() {
  std::cout.flush();
  if (!std::cout) std::cerr << "Standard output could not be written.\n";
  return static_cast<bool>(std::cout);
}

}  // namespace

int main(int argc, char** argv) {
  using namespace ui::console;
  const StandardStreams streams;
#ifdef SIGXFSZ
  std::signal(SIGXFSZ, SIG_IGN);  // a file that grows too large is an error of its write, which is told
#endif
  const std::vector<std::string> words = apps::command_line(argc, argv);
  const std::variant<Arguments, EndNow> parsed = parse_arguments(words);
  if (const EndNow* end = std::get_if<EndNow>(&parsed)) {
    std::cout << end->output;
    std::cerr << end->error;
    return output_is_complete() ? end->exit_status : ConsoleProgram::kFailed;
  }
  const Arguments& arguments = std::get<Arguments>(parsed);
  apps::SystemClock clock;
  const std::unique_ptr<Terminal> terminal = make_terminal();
  ConsoleScreen screen(*terminal, clock);
  if (arguments.quiet) screen.set_mode(ConsoleScreen::Mode::Quiet);
  if (arguments.trace) screen.set_mode(ConsoleScreen::Mode::Trace);
  ui::Display display(screen);
  session::Session session(clock, display, apps::surroundings(words.front()));
  display.set_title_source([&session] { return ui::title_text(session); });
  ConsoleProgram program(session, display, screen, *terminal, std::cout);
  const int status = program.run(arguments);
  return output_is_complete() ? status : ConsoleProgram::kFailed;
}
