#include "ui/wx/edit_dialogs.h"

#include <wx/button.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>
#include <functional>

#include "ui/editing/stored_item.h"
#include "ui/wx/symbol_choice.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr long kStyle = wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER;

wxString name_of(char kind) {
  switch (kind) {
    case 'T':
      return "Track Point";
    case 'I':
      return "Event";
    case 'P':
      return "Proximity Waypoint";
    default:
      return "Waypoint";
  }
}

// The form's window above, what else there is below it, and the buttons.
void lay_out(wxDialog& dialog, wxWindow* form, wxSizer* rest) {
  const int gap = dialog.FromDIP(8);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(form, wxSizerFlags(rest == nullptr ? 1 : 0).Expand().Border(wxALL, gap));
  if (rest != nullptr) sizer->Add(rest, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, gap));
  sizer->Add(dialog.CreateStdDialogButtonSizer(wxOK | wxCANCEL), wxSizerFlags().Expand().Border(wxALL, gap));
  dialog.SetSizerAndFit(sizer);
  dialog.CentreOnParent();
}

bool edit_route(wxWindow* parent, Desk& desk, int number) {
  RouteForm route(desk.session(), number);
  RouteDialog dialog(parent, desk.session(), route);
  return dialog.ShowModal() == wxID_OK && route.put_back();
}

// Typing goes into the first field at once, and OK closes only what `accept` agrees to.
void bind_form(wxDialog& dialog, EditForm& edit, std::function<bool()> accept) {
  dialog.Bind(wxEVT_INIT_DIALOG, [&](wxInitDialogEvent&) { dialog.CallAfter([&edit] { edit.focus_first(); }); });
  dialog.Bind(
      wxEVT_BUTTON, [accept = std::move(accept)](wxCommandEvent& event) { event.Skip(accept()); }, wxID_OK);
}

}  // namespace

bool edit_item(wxWindow* parent, Desk& desk, const ItemRef& item) {
  std::optional<EditedItem> edited = edited_item(desk.session().items, item);
  if (!edited) return false;
  if (edited->item.kind == 'R') return edit_route(parent, desk, edited->place.index);
  ItemForm form(desk.session(), edited->item);
  ItemDialog dialog(parent, "Edit " + name_of(edited->item.kind), desk.session().items, form);
  if (dialog.ShowModal() != wxID_OK || !form.has_changes()) return false;
  edited->item = form.result();
  put_back(desk.session().items, *edited);
  return true;
}

bool create_item(wxWindow* parent, Desk& desk, char kind) {
  ItemForm form(desk.session(), new_item(desk.session(), kind), true);
  ItemDialog dialog(parent, "New " + name_of(kind), desk.session().items, form);
  if (dialog.ShowModal() != wxID_OK) return false;
  return add_item(desk.session().items, form.result());
}

ItemDialog::ItemDialog(wxWindow* parent, const wxString& title, const store::ItemStore& items, ItemForm& form)
    : wxDialog(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, kStyle),
      items_(items),
      form_(form),
      edit_(this, form) {
  lay_out(*this, edit_.window(), nullptr);
  bind_form(*this, edit_, [this] { return accept(); });
}

bool ItemDialog::accept() {
  std::vector<std::string> problems = form_.problems();
  const std::size_t name = form_.find("ident");
  if (std::ranges::all_of(problems, &std::string::empty) && name < problems.size())
    problems[name] = form_.duplicate_problem(items_);
  return edit_.show_problems(problems);
}

RouteDialog::RouteDialog(wxWindow* parent, const session::Session& session, RouteForm& route)
    : wxDialog(parent, wxID_ANY, "Edit Route", wxDefaultPosition, wxDefaultSize, kStyle),
      session_(session),
      route_(route),
      edit_(this, route.header()) {
  lay_out(*this, edit_.window(), make_points());
  show_points(0);
  bind_form(*this, edit_, [this] { return accept(); });
}

wxSizer* RouteDialog::make_points() {
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(new wxStaticText(this, wxID_ANY, "Points:"), wxSizerFlags().Border(wxBOTTOM, FromDIP(4)));
  points_ = new wxListBox(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(380, 180)));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(points_, wxSizerFlags(1).Expand());
  auto* buttons = new wxBoxSizer(wxVERTICAL);
  const auto add = [&](const wxString& label, auto action) {
    auto* button = new wxButton(this, wxID_ANY, label);
    button->Bind(wxEVT_BUTTON, [action](wxCommandEvent&) { action(); });
    buttons->Add(button, wxSizerFlags().Expand().Border(wxBOTTOM | wxLEFT, FromDIP(6)));
  };
  add("&Up", [this] { move(true); });
  add("&Down", [this] { move(false); });
  add("&Remove", [this] { remove(); });
  add("&Add Waypoint...", [this] { ask_waypoint(); });
  row->Add(buttons);
  column->Add(row, wxSizerFlags(1).Expand());
  return column;
}

void RouteDialog::show_points(std::size_t selected) {
  points_->Clear();
  for (const std::string& line : route_.lines()) points_->Append(wxString::FromUTF8(line));
  const std::size_t count = points_->GetCount();
  if (count > 0) points_->SetSelection(static_cast<int>(std::min(selected, count - 1)));
}

void RouteDialog::move(bool up) {
  const int place = points_->GetSelection();
  if (place == wxNOT_FOUND) return;
  const auto from = static_cast<std::size_t>(place);
  if (up ? route_.move_up(from) : route_.move_down(from)) show_points(up ? from - 1 : from + 1);
}

void RouteDialog::remove() {
  const int place = points_->GetSelection();
  if (place != wxNOT_FOUND && route_.remove(static_cast<std::size_t>(place)))
    show_points(static_cast<std::size_t>(place));
}

void RouteDialog::add_waypoint(int index) {
  if (route_.add_waypoint(index)) {
    show_points(route_.lines().size());
    return;
  }
  wxMessageBox(wxString::Format("A route has at most %d points.", store::kRoutePointCapacity), "Edit Route",
               wxOK | wxICON_INFORMATION, this);
}

void RouteDialog::ask_waypoint() {
  std::vector<PickRow> rows;
  for (int index = 1; index <= session_.items.waypoint_count(); ++index) {
    const store::ItemRecord waypoint = session_.items.waypoint(index);
    if (waypoint.in_use != 0)
      rows.push_back({wx_text(std::string(waypoint.ident) + "   " + std::string(waypoint.comment)), index});
  }
  PickDialog dialog(this, "Add Waypoint", std::move(rows), false);
  if (dialog.ShowModal() == wxID_OK && dialog.value() > 0) add_waypoint(dialog.value());
}

bool RouteDialog::accept() { return edit_.show_problems(route_.problems()); }

}  // namespace ui::wx
