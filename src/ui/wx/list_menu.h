// What the menus of a list offer.
#pragma once

#include <wx/menu.h>

#include <array>
#include <string_view>

namespace ui::wx {

enum class ListAction {
  None,  // a line between others
  Edit,
  Delete,
  Undelete,
  ToggleSelected,
  HighlightAll,
  HighlightSelected,
  ShowOnMap,
  Profile,
  SetReference,
  Upload,
  Close,
  SelectAll,
  SelectNone,
  SelectInverse,
  SelectSameName,
  SelectSamePlace,
  SelectUsed,
  SelectNotUsed,
  SelectWithin,
};

struct ListEntry {
  ListAction action = ListAction::None;
  const char* label = "";
  std::string_view kinds = "WRTIP";  // of the lists that have it
};

// For what is highlighted.
inline constexpr std::array kItemEntries{
    ListEntry{ListAction::Edit, "&Edit..."},
    ListEntry{ListAction::Delete, "&Delete\tDel"},
    ListEntry{ListAction::Undelete, "Und&o Delete"},
    ListEntry{},
    ListEntry{ListAction::HighlightAll, "Highlight &All\tCtrl+A"},
    ListEntry{ListAction::HighlightSelected, "Hi&ghlight Selected"},
    ListEntry{},
    ListEntry{ListAction::SetReference, "Set &Reference Waypoint", "W"},
    ListEntry{ListAction::ShowOnMap, "Show on &Map"},
    ListEntry{ListAction::Profile, "&Profile", "T"},
    ListEntry{ListAction::Upload, "&Upload Selected"},
};
// For the check marks of all.
inline constexpr std::array kSelectEntries{
    ListEntry{ListAction::SelectAll, "Select &All"},
    ListEntry{ListAction::SelectNone, "Select &None"},
    ListEntry{ListAction::SelectInverse, "Select &Inverse"},
    ListEntry{ListAction::ToggleSelected, "&Toggle Highlighted"},
    ListEntry{ListAction::None, "", "W"},
    ListEntry{ListAction::SelectSameName, "Select &Duplicates: Same Name", "W"},
    ListEntry{ListAction::SelectSamePlace, "Select Duplicates: Same Name and &Place", "W"},
    ListEntry{ListAction::SelectUsed, "Select by &Use in a Route", "W"},
    ListEntry{ListAction::SelectNotUsed, "Select Not Used in a &Route", "W"},
    ListEntry{ListAction::None, "", "WTIP"},
    ListEntry{ListAction::SelectWithin, "Select by Distance from the Re&ference...", "WTIP"},
};

// Menus of the main window have other ids.
[[nodiscard]] constexpr int list_menu_id(ListAction action) { return wxID_HIGHEST + 2000 + static_cast<int>(action); }
[[nodiscard]] constexpr ListAction list_action(int id) { return static_cast<ListAction>(id - wxID_HIGHEST - 2000); }

// The caller owns the bar and the menu.
[[nodiscard]] wxMenuBar* make_list_menu_bar(char kind);
[[nodiscard]] wxMenu* make_list_popup(char kind);

}  // namespace ui::wx
