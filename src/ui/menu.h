// The menu bar: which command stands where.
#pragma once

#include <span>
#include <string_view>

namespace ui {

struct MenuEntry {
  enum class Kind { Menu, End, Command, Separator, Ports };
  Kind kind;
  std::string_view text = {};  // of a menu, with its mnemonic
  int id = 0;                  // of a command; its text is in the command table
};

// Menus in order, each with its entries, submenus among them, up to its End. Ports stands where the ports of this
// machine and the simulated receivers are listed.
[[nodiscard]] std::span<const MenuEntry> menu();

}  // namespace ui
