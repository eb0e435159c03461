// The dialogs that edit one item.
#pragma once

#include <wx/dialog.h>
#include <wx/listbox.h>

#include "ui/editing/item_form.h"
#include "ui/editing/route_form.h"
#include "ui/wx/desk.h"
#include "ui/wx/edit_form.h"

namespace ui::wx {

// True when the user has changed the item; the desk is told by the caller.
bool edit_item(wxWindow* parent, Desk& desk, const ItemRef& item);
// The same for a new item of the kind 'W', 'I' or 'P'; true when the store has it now.
bool create_item(wxWindow* parent, Desk& desk, char kind);

class ItemDialog : public wxDialog {
 public:
  // The form must outlive the dialog.
  ItemDialog(wxWindow* parent, const wxString& title, const store::ItemStore& items, ItemForm& form);

  // What OK does before it closes: false, with the problems shown, when something cannot be taken.
  bool accept();
  [[nodiscard]] EditForm& form() { return edit_; }

 private:
  const store::ItemStore& items_;
  ItemForm& form_;
  EditForm edit_;
};

class RouteDialog : public wxDialog {
 public:
  // Both must outlive the dialog.
  RouteDialog(wxWindow* parent, const session::Session& session, RouteForm& route);

  bool accept();
  [[nodiscard]] EditForm& form() { return edit_; }
  [[nodiscard]] wxListBox& points() { return *points_; }
  // What the buttons beside the list do, with the selected point.
  void move(bool up);
  void remove();
  void add_waypoint(int index);

 private:
  wxSizer* make_points();
  void show_points(std::size_t selected);
  void ask_waypoint();

  const session::Session& session_;
  RouteForm& route_;
  EditForm edit_;
  wxListBox* points_ = nullptr;
};

}  // namespace ui::wx
