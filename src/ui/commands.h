// The commands of the program: menu, console and accelerators all run them through this table.
#pragma once

#include <span>
#include <string_view>

#include "session/session.h"
#include "ui/display.h"
#include "ui/windows.h"

namespace ui {

// What a command works with.
struct CommandContext {
  session::Session& session;
  Windows& windows;
};

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
  bool (*action)(const CommandContext& context, int id);
  std::string_view hint = {};  // what the status bar says of it
  Refusal refusal = {};
  bool (*makes_sense)(const session::Session& session) = nullptr;       // none: always
  bool (*is_checked)(const CommandContext& context, int id) = nullptr;  // of items with a check mark
};

[[nodiscard]] std::span<const Command> commands();
// nullptr for an id that is none.
[[nodiscard]] const Command* find_command(int id);

// Control with a letter, in place of the menu.
struct Accelerator {
  char letter;
  int id;
};
[[nodiscard]] std::span<const Accelerator> accelerators();

// Why the chosen family cannot do the command, in words; empty when it can.
[[nodiscard]] std::string_view refusal(const session::Session& session, int id);
// Whether the menu offers the command now.
[[nodiscard]] bool is_offered(const session::Session& session, const Command& command);
// Blanks lines and hints, runs the command and refreshes the title. False when it failed, was refused or does not
// exist.
bool run_command(session::Session& session, Display& display, Windows& windows, int id);
// The same where there are no windows.
bool run_command(session::Session& session, Display& display, int id);
// Uploads the selected items of a kind ('W', 'R', 'T', 'I', 'P'), and no others; otherwise as run_command.
bool upload_selected(session::Session& session, Display& display, Windows& windows, char kind);
// Reads the files and remembers the last one; otherwise as run_command.
bool open_files(session::Session& session, Display& display, Windows& windows,
                const std::vector<std::filesystem::path>& files);
// Position-velocity-time data into the sink until the user stops it; no menu has it. False as run_command.
bool follow_position(session::Session& session, Display& display, const garmin::GarminCommands::LineSink& sink);
// The id of a console word; 0 for none.
[[nodiscard]] int command_id(std::string_view word);

// Ids of commands that windows run themselves.
inline constexpr int kSaveConfiguration = 40107;
inline constexpr int kExit = 97;
inline constexpr int kRotateLeft = 40099;
inline constexpr int kStretchBitmap = 40100;
inline constexpr int kCopyBitmap = 40106;
inline constexpr int kManual = 40103;

}  // namespace ui
