#include "ui/wx/list_frame.h"

#include <wx/dataview.h>
#include <wx/display.h>
#include <wx/listctrl.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>
#include <wx/textdlg.h>
#include <wx/utils.h>

#include <algorithm>
#include <memory>

#include "ui/item_texts.h"
#include "ui/lists/deletion.h"
#include "ui/lists/selection.h"
#include "ui/stored_items.h"
#include "ui/wx/list_view.h"
#include "ui/wx/route_tree.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

// In pixels of a plain screen: of the rows, and of what stands beside the columns.
constexpr int kHeight = 440;
constexpr int kMargin = 24;

const char* name_of(char kind) {
  switch (kind) {
    case 'W':
      return "Waypoints";
    case 'R':
      return "Routes";
    case 'T':
      return "Track Points";
    case 'I':
      return "Events";
    default:
      return "Proximity Waypoints";
  }
}

ListPane* make_pane(wxWindow* parent, Desk& desk, char kind) {
  if (kind == 'R') return new RouteTree(parent, desk);
  return new ListView(parent, desk, kind);
}

}  // namespace

ListFrame::ListFrame(wxWindow* parent, Desk& desk, char kind)
    : wxFrame(parent, wxID_ANY, ""), desk_(desk), kind_(kind), pane_(nullptr), registration_(desk, *this) {
  SetMenuBar(make_list_menu_bar(kind));
  pane_ = make_pane(this, desk, kind);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(&pane_->window(), wxSizerFlags(1).Expand());
  SetSizer(sizer);
  place();
  bind_events();
  refresh_title();
  pane_->window().SetFocus();
}

// Wide enough for all columns where the screen is.
void ListFrame::place() {
  const wxRect screen = wxDisplay(GetParent()).GetClientArea();
  SetClientSize(pane_->columns_width() + FromDIP(kMargin), FromDIP(kHeight));
  SetSize(std::min(GetSize().x, screen.width), std::min(GetSize().y, screen.height));
}

void ListFrame::bind_events() {
  Bind(wxEVT_MENU, [this](wxCommandEvent& event) { act(list_action(event.GetId())); });
  Bind(wxEVT_MENU_OPEN, [this](wxMenuEvent& event) {
    if (event.GetMenu() != nullptr) refresh_menu(*event.GetMenu());
    event.Skip();
  });
  Bind(wxEVT_CHAR_HOOK, &ListFrame::on_key, this);
  Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { act(ListAction::Edit); });
  Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED, [this](wxDataViewEvent&) { act(ListAction::Edit); });
  Bind(wxEVT_CONTEXT_MENU, [this](wxContextMenuEvent&) { pop_up(); });
  Bind(wxEVT_DATAVIEW_ITEM_CONTEXT_MENU, [this](wxDataViewEvent&) { pop_up(); });
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
    pane_->keep_widths();
    event.Skip();
  });
}

void ListFrame::refresh_title() {
  const store::ItemStore& items = desk_.session().items;
  wxString title = wxString::Format("%s - %d", name_of(kind_), count_of(items, kind_));
  if (const int selected = items.selected_count(kind_); selected > 0)
    title += wxString::Format(", %d selected", selected);
  SetTitle(title);
}

void ListFrame::show_change(Change change) {
  // The frame is a view already while its pane is being made.
  if (pane_ == nullptr) return;
  pane_->show_change(change);
  refresh_title();
}

void ListFrame::show_item(const ItemRef& item) { pane_->show_item(item); }

void ListFrame::refresh_menu(wxMenu& menu) const {
  const std::vector<ItemRef> lit = pane_->highlighted();
  for (wxMenuItem* item : menu.GetMenuItems())
    if (!item->IsSeparator()) item->Enable(is_possible(list_action(item->GetId()), lit));
}

void ListFrame::pop_up() {
  const std::unique_ptr<wxMenu> menu(make_list_popup(kind_));
  refresh_menu(*menu);
  PopupMenu(menu.get());
}

// Here, as the toolkit's lists would take these keys for something else.
void ListFrame::on_key(wxKeyEvent& event) {
  if (event.HasAnyModifiers()) {
    event.Skip();
  } else if (event.GetKeyCode() == WXK_SPACE) {
    act(ListAction::ToggleSelected);
  } else if (event.GetKeyCode() == WXK_RETURN || event.GetKeyCode() == WXK_NUMPAD_ENTER) {
    act(ListAction::Edit);
  } else if (event.GetKeyCode() == WXK_DELETE || event.GetKeyCode() == WXK_NUMPAD_DELETE) {
    act(ListAction::Delete);
  } else {
    event.Skip();
  }
}

bool ListFrame::is_possible(ListAction action) const { return is_possible(action, pane_->highlighted()); }

bool ListFrame::is_possible(ListAction action, const std::vector<ItemRef>& lit) const {
  session::Session& session = desk_.session();
  const store::ItemStore& items = session.items;
  if (action == ListAction::Close) return true;
  if (desk_.is_busy() || count_of(items, kind_) == 0) return false;
  switch (action) {
    case ListAction::Edit:
    case ListAction::Profile:
    case ListAction::SetReference:
      return lit.size() == 1;
    case ListAction::ShowOnMap:
    case ListAction::ToggleSelected:
      return !lit.empty();
    case ListAction::Delete:
      return lists::has_item_in_use(items, lit);
    case ListAction::Undelete:
      return lists::has_deleted_item(items, lit);
    case ListAction::HighlightSelected:
    case ListAction::SelectNone:
      return !lists::selected_items(items, kind_).empty();
    case ListAction::Upload:
      return items.selected_count(kind_) > 0;
    case ListAction::SelectUsed:
    case ListAction::SelectNotUsed:
      return items.route_count() > 0;
    case ListAction::SelectWithin:
      return reference_position(session.settings).has_value();
    default:
      return true;
  }
}

void ListFrame::act(ListAction action) {
  if (action == ListAction::Close) {
    Close();
    return;
  }
  const std::vector<ItemRef> lit = pane_->highlighted();
  if (is_possible(action, lit)) act_on(action, lit);
}

void ListFrame::act_on(ListAction action, const std::vector<ItemRef>& lit) {
  store::ItemStore& items = desk_.session().items;
  switch (action) {
    case ListAction::Edit:
      desk_.edit(lit.front());
      break;
    case ListAction::Delete:
      lists::delete_items(items, lit);
      desk_.tell(Change::Items);
      break;
    case ListAction::Undelete:
      lists::undelete_items(items, lit);
      desk_.tell(Change::Items);
      break;
    case ListAction::ToggleSelected:
      lists::toggle_selection(items, lit);
      desk_.tell(Change::Selection);
      break;
    case ListAction::HighlightAll:
      pane_->highlight_all();
      break;
    case ListAction::HighlightSelected:
      pane_->highlight(lists::selected_items(items, kind_));
      break;
    case ListAction::ShowOnMap:
      desk_.show_on_map(lit);
      break;
    case ListAction::Profile:
      desk_.show_profile_of(lit.front().index);
      break;
    case ListAction::SetReference:
      set_reference(lit.front());
      break;
    case ListAction::Upload:
      desk_.run_upload_selected(kind_);
      break;
    default:
      select(action);
  }
}

void ListFrame::set_reference(const ItemRef& waypoint) {
  session::Session& session = desk_.session();
  const geodesy::Position position = session.items.waypoint(waypoint.index).position;
  session.settings.RefRecord = store::ReferenceRecord{position.latitude, position.longitude, {}};
  desk_.tell(Change::Settings);
}

void ListFrame::select(ListAction action) {
  store::ItemStore& items = desk_.session().items;
  {
    const wxBusyCursor busy;
    switch (action) {
      case ListAction::SelectAll:
      case ListAction::SelectNone:
        items.select_all(kind_, action == ListAction::SelectAll);
        break;
      case ListAction::SelectInverse:
        lists::select_inverse(items, kind_);
        break;
      case ListAction::SelectSameName:
      case ListAction::SelectSamePlace:
        lists::select_duplicates(items, action == ListAction::SelectSamePlace);
        break;
      case ListAction::SelectUsed:
      case ListAction::SelectNotUsed:
        lists::select_by_route_use(items, action == ListAction::SelectUsed);
        break;
      default:
        break;
    }
  }
  if (action == ListAction::SelectWithin) select_within();
  desk_.tell(Change::Selection);
}

void ListFrame::select_within() {
  session::Session& session = desk_.session();
  const ItemTexts texts(session);
  const std::optional<geodesy::Position> centre = reference_position(session.settings);
  const wxString question =
      "Select what is up to this far from the reference position (" + wx_text(texts.distance_unit()) + "):";
  wxString answer;
  while (true) {
    wxTextEntryDialog dialog(this, question, "Select by Distance", answer);
    if (dialog.ShowModal() != wxID_OK) return;
    answer = dialog.GetValue();
    if (const std::optional<double> metres = texts.parse_distance(record_text(answer))) {
      lists::select_within(session.items, kind_, *centre, *metres);
      return;
    }
    wxMessageBox("Type a number, for example 2.5, in " + wx_text(texts.distance_unit()) + ".", "Select by Distance",
                 wxOK | wxICON_EXCLAMATION, this);
  }
}

}  // namespace ui::wx
