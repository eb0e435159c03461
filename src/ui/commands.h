// The commands of the program: menu, console and accelerators all run them through this table.
#pragma once

#include <span>
#include <string_view>

#include "session/session.h"
#include "ui/display.h"

namespace ui {

// That one family cannot do a command, and how the user is told.
struct Refusal {
  store::Family family = store::Family::None;
  std::string_view why = {};
};

struct Command {
  int id;
  std::string_view menu;  // text with mnemonic, and the accelerator after a tab
  std::string_view word;  // for the console program; empty where it has none
  // What it does; the id tells apart commands that share an action. False when it failed, which is said.
  bool (*action)(session::Session& session, int id);
  Refusal refusal = {};
};

[[nodiscard]] std::span<const Command> commands();

// Why the chosen family cannot do the command, in words; empty when it can.
[[nodiscard]] std::string_view refusal(const session::Session& session, int id);
// Blanks lines and hints, runs the command and refreshes the title. False when it failed, was refused or does not
// exist.
bool run_command(session::Session& session, Display& display, int id);
// Position-velocity-time data into the sink until the user stops it; no menu has it. False as run_command.
bool follow_position(session::Session& session, Display& display, const garmin::GarminCommands::LineSink& sink);
// The id of a console word; 0 for none.
[[nodiscard]] int command_id(std::string_view word);

}  // namespace ui
