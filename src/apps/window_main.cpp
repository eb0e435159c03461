#include <csignal>

#include "apps/surroundings.h"
#include "apps/system_clock.h"
#include "ui/wx/window_program.h"

int main(int argc, char** argv) {
#ifdef SIGXFSZ
  std::signal(SIGXFSZ, SIG_IGN);  // a file that grows too large is an error of its write, which is told
#endif
  apps::SystemClock clock;
  return ui::wx::run_window_program(argc, argv, clock, apps::surroundings(apps::command_line(argc, argv).front()));
}
