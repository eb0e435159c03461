// What every window of the program is handed: the session and what the main window does for them all.
#pragma once

#include <vector>

#include "session/session.h"
#include "ui/display.h"
#include "ui/item_ref.h"

namespace ui::wx {

enum class Change {
  Items,      // records were added, changed, deleted or put in order; places in the store may mean other items now
  Selection,  // which items are selected for uploads
  Settings,   // datum, notation, units, symbols, the reference position
  Picture,    // the receiver's screen, or how it is shown
};

// A window, or part of one, that shows what the session holds.
class View {
 public:
  virtual ~View() = default;
  virtual void show_change(Change change) = 0;
};

class Desk {
 public:
  virtual ~Desk() = default;

  [[nodiscard]] virtual session::Session& session() = 0;
  [[nodiscard]] virtual Display& display() = 0;

  // Runs a command of the table as the menu does. False when it failed, or while another one runs.
  virtual bool run(int id) = 0;
  // Uploads the selected items of a kind, and nothing else; likewise.
  virtual bool run_upload_selected(char kind) = 0;
  [[nodiscard]] virtual bool is_busy() const = 0;

  // Views are told of changes between these two calls.
  virtual void add_view(View& view) = 0;
  virtual void remove_view(View& view) = 0;
  // Whoever changes something tells it: the title and all views, the teller's own too, are brought up to date.
  virtual void tell(Change change) = 0;

  // Opens the item's edit dialog; true when it was changed, which has been told then.
  virtual bool edit(const ItemRef& item) = 0;
  // Opens the map, if need be, with these items in its middle.
  virtual void show_on_map(const std::vector<ItemRef>& items) = 0;
  // Opens the list of the item's kind, if need be, with the item in sight.
  virtual void show_in_list(const ItemRef& item) = 0;
  // Opens the profile, if need be, with the track of this point (an index from 1).
  virtual void show_profile_of(int track_point) = 0;
};

// Registers a view for as long as it lives.
class Registration {
 public:
  Registration(Desk& desk, View& view) : desk_(desk), view_(view) { desk_.add_view(view_); }
  ~Registration() { desk_.remove_view(view_); }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;

 private:
  Desk& desk_;
  View& view_;
};

}  // namespace ui::wx
