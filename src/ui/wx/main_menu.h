// The menu bar of the command table, and the ids that the toolkit knows its commands by.
#pragma once

#include <wx/menu.h>

#include <string>
#include <vector>

#include "ui/commands.h"
#include "ui/menu.h"

namespace ui::wx {

// The toolkit keeps menu ids in 16 bits with a sign, so commands get theirs by their place in the table.
[[nodiscard]] int menu_id(int command);
// 0 for an id that no command has.
[[nodiscard]] int command_of(int menu_id);

class MainMenu {
 public:
  // The bar belongs to the frame that it is set into.
  explicit MainMenu(const CommandContext& context) : context_(context) {}

  [[nodiscard]] wxMenuBar* make_bar();
  // Greys and checks the entries as the session is now...
  void refresh();
  // ... and lists the ports that there are now.
  void list_ports();
  // The menu in which they are a submenu.
  [[nodiscard]] const wxMenu* ports_parent() const { return ports_menu_->GetParent(); }
  // The port of a menu id; empty for other ids. "?" where the user shall name it.
  [[nodiscard]] std::string port_of(int menu_id) const;

  static constexpr std::string_view kOtherPort = "?";

 private:
  wxMenu* make_menu(std::span<const MenuEntry>& entries);

  CommandContext context_;
  wxMenuBar* bar_ = nullptr;
  wxMenu* ports_menu_ = nullptr;
  std::vector<std::string> ports_;
};

}  // namespace ui::wx
