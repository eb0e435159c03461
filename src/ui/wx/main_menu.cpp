#include "ui/wx/main_menu.h"

#include "ui/ports.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr int kFirstCommand = wxID_HIGHEST + 1;
constexpr int kFirstPort = kFirstCommand + 1000;
constexpr int kMostPorts = 300;

}  // namespace

int menu_id(int command) {
  const Command* row = find_command(command);
  return row == nullptr ? wxID_NONE : kFirstCommand + static_cast<int>(row - commands().data());
}

int command_of(int menu_id) {
  const int place = menu_id - kFirstCommand;
  return place >= 0 && place < static_cast<int>(commands().size()) ? commands()[static_cast<std::size_t>(place)].id : 0;
}

wxMenuBar* MainMenu::make_bar() {
  bar_ = new wxMenuBar;
  std::span<const MenuEntry> entries = menu();
  while (!entries.empty()) {
    const wxString title = wx_text(entries.front().text);
    entries = entries.subspan(1);
    bar_->Append(make_menu(entries), title);
  }
  list_ports();
  refresh();
  return bar_;
}

// The entries up to the menu's end, which is taken too.
wxMenu* MainMenu::make_menu(std::span<const MenuEntry>& entries) {
  auto* menu = new wxMenu;
  while (!entries.empty()) {
    const MenuEntry entry = entries.front();
    entries = entries.subspan(1);
    switch (entry.kind) {
      case MenuEntry::Kind::End:
        return menu;
      case MenuEntry::Kind::Menu:
        menu->AppendSubMenu(make_menu(entries), wx_text(entry.text));
        break;
      case MenuEntry::Kind::Separator:
        menu->AppendSeparator();
        break;
      case MenuEntry::Kind::Ports:
        ports_menu_ = new wxMenu;
        menu->AppendSubMenu(ports_menu_, wx_text(entry.text));
        break;
      case MenuEntry::Kind::Command: {
        const Command* command = find_command(entry.id);
        if (command == nullptr) break;
        const wxItemKind kind = command->is_checked == nullptr ? wxITEM_NORMAL : wxITEM_CHECK;
        menu->Append(menu_id(entry.id), wx_text(command->menu), wx_text(command->hint), kind);
        break;
      }
    }
  }
  return menu;
}

void MainMenu::refresh() {
  for (const Command& command : commands()) {
    wxMenuItem* item = bar_->FindItem(menu_id(command.id));
    if (item == nullptr) continue;
    item->Enable(is_offered(context_.session, command));
    if (command.is_checked != nullptr) item->Check(command.is_checked(context_, command.id));
  }
}

void MainMenu::list_ports() {
  for (const wxMenuItemList items = ports_menu_->GetMenuItems(); wxMenuItem * item : items) ports_menu_->Destroy(item);
  ports_.clear();
  for (const PortChoice& choice : port_choices(context_.session)) {
    if (ports_.size() >= kMostPorts) break;
    const int id = kFirstPort + static_cast<int>(ports_.size());
    wxString label = wx_text(choice.label);
    label.Replace("&", "&&");
    ports_menu_->AppendCheckItem(id, label, "Use this port")->Check(choice.is_chosen);
    ports_.push_back(choice.name);
  }
  ports_menu_->AppendSeparator();
  ports_menu_->Append(kFirstPort + static_cast<int>(ports_.size()), "&Other ...", "Name another port");
  ports_.emplace_back(kOtherPort);
}

std::string MainMenu::port_of(int menu_id) const {
  const int place = menu_id - kFirstPort;
  return place >= 0 && place < static_cast<int>(ports_.size()) ? ports_[static_cast<std::size_t>(place)]
                                                               : std::string();
}

}  // namespace ui::wx
