#include "ui/wx/list_menu.h"

#include <span>

namespace ui::wx {
namespace {

void append(wxMenu& menu, std::span<const ListEntry> entries, char kind) {
  for (const ListEntry& entry : entries) {
    if (entry.kinds.find(kind) == std::string_view::npos) continue;
    if (entry.action == ListAction::None) {
      menu.AppendSeparator();
    } else {
      menu.Append(list_menu_id(entry.action), entry.label);
    }
  }
}

}  // namespace

wxMenuBar* make_list_menu_bar(char kind) {
  auto* item_menu = new wxMenu;
  append(*item_menu, kItemEntries, kind);
  item_menu->AppendSeparator();
  item_menu->Append(list_menu_id(ListAction::Close), "&Close\tCtrl+W");
  auto* select_menu = new wxMenu;
  append(*select_menu, kSelectEntries, kind);
  auto* bar = new wxMenuBar;
  bar->Append(item_menu, "&Item");
  bar->Append(select_menu, "&Select");
  return bar;
}

wxMenu* make_list_popup(char kind) {
  auto* menu = new wxMenu;
  append(*menu, kItemEntries, kind);
  menu->AppendSeparator();
  append(*menu, kSelectEntries, kind);
  return menu;
}

}  // namespace ui::wx
