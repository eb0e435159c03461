// The list of one kind of items.
#pragma once

#include <wx/frame.h>

#include "ui/wx/desk.h"
#include "ui/wx/list_menu.h"
#include "ui/wx/list_pane.h"

namespace ui::wx {

class ListFrame : public wxFrame, public View {
 public:
  // 'W', 'R', 'T', 'I' or 'P'. The desk must outlive the frame.
  ListFrame(wxWindow* parent, Desk& desk, char kind);

  void show_change(Change change) override;
  // Scrolls the item into sight and makes it the current one.
  void show_item(const ItemRef& item);

  // Does what the menus offer; nothing while a transfer runs.
  void act(ListAction action);
  // Whether that would do anything now.
  [[nodiscard]] bool is_possible(ListAction action) const;
  [[nodiscard]] ListPane& pane() { return *pane_; }

 private:
  void place();
  void bind_events();
  void refresh_title();
  void refresh_menu(wxMenu& menu) const;
  void pop_up();
  void on_key(wxKeyEvent& event);
  [[nodiscard]] bool is_possible(ListAction action, const std::vector<ItemRef>& lit) const;
  void act_on(ListAction action, const std::vector<ItemRef>& lit);
  void select(ListAction action);
  void select_within();
  void set_reference(const ItemRef& waypoint);

  Desk& desk_;
  char kind_;
  ListPane* pane_;  // a child of this
  Registration registration_;
};

}  // namespace ui::wx
