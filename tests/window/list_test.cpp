#include <wx/testing.h>
#include <wx/textdlg.h>
#include <wx/uiaction.h>

#include "tests/window/window_fixture.h"
#include "ui/wx/list_frame.h"
#include "ui/wx/list_view.h"
#include "ui/wx/route_tree.h"

namespace ui::wx {
namespace {

using support::press;
using support::run_events;
using namespace std::chrono_literals;

// A dialog in which the user enters a text.
class Entry : public wxExpectModalBase<wxTextEntryDialog, Entry> {
 public:
  explicit Entry(const char* text) : text_(text) {}

 protected:
  int OnInvoked(wxTextEntryDialog* dialog) const override {
    dialog->SetValue(text_);
    return wxID_OK;
  }

 private:
  wxString text_;
};

class ListTest : public support::WindowTest {
 protected:
  ListFrame& open_list(char kind) {
    if (frame == nullptr) open();
    static_cast<Desk&>(*frame).show_in_list({kind, kind == 'R' ? 0 : 1, 0});
    ListFrame* list = frame->list_frame(kind);
    support::wait_until_settled(*list);
    return *list;
  }
  static ListView& view(ListFrame& list) { return dynamic_cast<ListView&>(list.pane()); }
  static std::string title_of(const ListFrame& list) { return list.GetTitle().utf8_string(); }
  static std::string name(ListFrame& list, int row) { return view(list).rows().text(row, 0); }

  static void click(const wxPoint& place) {
    wxUIActionSimulator mouse;
    mouse.MouseMove(place);
    run_events(50ms);
    mouse.MouseClick();
    run_events(100ms);
  }
};

TEST_F(ListTest, ShowsWhatTheReceiverHeld) {
  open();
  download_everything();
  ListFrame& waypoints = open_list('W');
  EXPECT_EQ(title_of(waypoints), "Waypoints - " + std::to_string(session.items.waypoint_count()));
  session.items.select('W', 2, true);
  waypoints.pane().highlight({{'W', 3, 0}});
  waypoints.act(ListAction::Delete);
  waypoints.pane().highlight({{'W', 1, 0}});
  waypoints.act(ListAction::SetReference);
  support::save_screenshot(waypoints, "list_waypoints");
  for (const char kind : {'R', 'T', 'I', 'P'}) {
    ListFrame& list = open_list(kind);
    support::save_screenshot(list, std::string("list_") + kind);
  }
}

TEST_F(ListTest, AHundredThousandRowsOpenSortAndAreSelectedAtOnce) {
  for (int i = 0; i < store::kWaypointCapacity; ++i) add_waypoint("W" + std::to_string(i * 7 % 100000), i * 0.0005, 7);
  open();
  ListFrame& list = open_list('W');
  EXPECT_EQ(view(list).GetItemCount(), store::kWaypointCapacity);
  list.act(ListAction::SelectAll);
  EXPECT_EQ(title_of(list), "Waypoints - 100000, 100000 selected");
  list.act(ListAction::HighlightAll);
  EXPECT_EQ(view(list).GetSelectedItemCount(), store::kWaypointCapacity);
  click(view(list).GetScreenPosition() + wxPoint(40, 10));  // the title of the names
  EXPECT_EQ(view(list).GetSortIndicator(), 0);
  EXPECT_EQ(name(list, 0), "W0");
  EXPECT_EQ(view(list).GetSelectedItemCount(), store::kWaypointCapacity);
  list.show_item({'W', 100000, 0});
  const long row = view(list).rows().row_of(100000), top = view(list).GetTopItem();
  EXPECT_TRUE(top <= row && row < top + view(list).GetCountPerPage()) << row << " is not in sight from " << top;
}

TEST_F(ListTest, AClickOnATitleSortsAndOneMoreReverses) {
  add_waypoint("beta", 1, 1);
  add_waypoint("Alpha", 2, 2);
  add_waypoint("gamma", 3, 3);
  ListFrame& list = open_list('W');
  const wxPoint on_title = view(list).GetScreenPosition() + wxPoint(40, 10);
  list.show_item({'W', 1, 0});
  click(on_title);
  EXPECT_EQ(name(list, 0) + name(list, 1) + name(list, 2), "Alphabetagamma");
  EXPECT_TRUE(view(list).IsAscendingSortIndicator());
  click(on_title + wxPoint(30, 0));  // elsewhere, or it would be a double click
  EXPECT_EQ(name(list, 0) + name(list, 1) + name(list, 2), "gammabetaAlpha");
  EXPECT_EQ(list.pane().highlighted(), std::vector({ItemRef{'W', 1, 0}})) << "the same item, wherever it is now";
  EXPECT_EQ(session.items.waypoint(1).ident, "beta") << "the store keeps its order";
}

TEST_F(ListTest, CheckMarksReachTheStoreByMouseAndKeyboard) {
  for (const char* ident : {"A", "B", "C"}) add_waypoint(ident, 1, 1);
  ListFrame& list = open_list('W');
  wxRect row;
  ASSERT_TRUE(view(list).GetItemRect(1, row));
  click(view(list).ClientToScreen(row.GetTopLeft() + wxPoint(row.height / 2, row.height / 2)));
  EXPECT_EQ(session.items.waypoint(2).selected, 1);
  EXPECT_EQ(title_of(list), "Waypoints - 3, 1 selected");

  list.pane().highlight({{'W', 1, 0}, {'W', 3, 0}});
  view(list).SetFocus();
  press(WXK_SPACE);
  EXPECT_EQ(session.items.selected_count('W'), 3);
  press(WXK_SPACE);
  EXPECT_EQ(session.items.selected_count('W'), 1);
}

TEST_F(ListTest, DeletesAndTakesItBack) {
  for (const char* ident : {"A", "B", "C"}) add_waypoint(ident, 1, 1);
  ListFrame& list = open_list('W');
  list.pane().highlight({});
  EXPECT_FALSE(list.is_possible(ListAction::Delete)) << "nothing is highlighted";
  list.pane().highlight({{'W', 1, 0}, {'W', 2, 0}});
  view(list).SetFocus();
  press(WXK_DELETE);
  EXPECT_EQ(session.items.waypoint(1).in_use + session.items.waypoint(2).in_use, 0);
  EXPECT_EQ(session.items.waypoint(3).in_use, 1);
  EXPECT_EQ(view(list).GetItemCount(), 3) << "they stay listed";
  EXPECT_EQ(list.pane().highlighted().size(), 2u);
  EXPECT_FALSE(list.is_possible(ListAction::Delete));
  list.act(ListAction::Undelete);
  EXPECT_EQ(session.items.waypoint(2).in_use, 1);
}

TEST_F(ListTest, KeepsColumnWidths) {
  session.settings.WaypointListColumnWidths[4] = 222;
  ListFrame& list = open_list('W');
  EXPECT_EQ(view(list).GetColumnWidth(4), list.FromDIP(222));
  view(list).SetColumnWidth(0, list.FromDIP(99));
  list.Close();
  run_events(50ms);
  EXPECT_EQ(frame->list_frame('W'), nullptr);
  EXPECT_EQ(session.settings.WaypointListColumnWidths[0], 99);
  EXPECT_EQ(session.settings.WaypointListColumnWidths[4], 222);
}

TEST_F(ListTest, SelectsByDistanceFromTheReferenceInTheChosenUnit) {
  add_waypoint("HERE", 50, 7);
  add_waypoint("NEAR", 50.01, 7);  // 1.1 km
  add_waypoint("FAR", 51, 7);
  session.settings.DistValues = geodesy::DistanceUnit::Kilometres;
  ListFrame& list = open_list('W');
  EXPECT_FALSE(list.is_possible(ListAction::SelectWithin)) << "no reference yet";
  list.pane().highlight({{'W', 1, 0}});
  list.act(ListAction::SetReference);
  EXPECT_EQ(view(list).rows().text(2, 6), "111.134");
  wxTEST_DIALOG(list.act(ListAction::SelectWithin), Entry("far"), wxExpectModal<wxMessageDialog>(wxID_OK),
                Entry("1.2"));
  EXPECT_EQ(session.items.selected_count('W'), 2);
  EXPECT_EQ(session.items.waypoint(3).selected, 0);
}

TEST_F(ListTest, RoutesLosePointsAndCanBeDeletedWhole) {
  session.items.start_route(7, "7", "HOME");
  (void)session.items.push_route(false);
  for (const char* ident : {"A", "B", "C"}) {
    session.items.start_item();
    session.items.CurrentItem.ident = ident;
    (void)session.items.push_route(true);
  }
  ListFrame& list = open_list('R');
  list.show_item({'R', 7, 2});
  EXPECT_EQ(list.pane().highlighted(), std::vector({ItemRef{'R', 7, 2}}));
  list.act(ListAction::Delete);
  EXPECT_EQ(session.items.route(7).points[1].in_use, 0);
  list.act(ListAction::Undelete);
  EXPECT_EQ(session.items.route(7).points[1].in_use, 1);
  list.pane().highlight({{'R', 7, 0}});
  list.act(ListAction::ToggleSelected);
  EXPECT_EQ(title_of(list), "Routes - 1, 1 selected");
  list.act(ListAction::Delete);
  EXPECT_EQ(session.items.route(7).header->in_use, 0);
  list.act(ListAction::Undelete);
  EXPECT_EQ(session.items.route(7).header->in_use, 1);
  session.items.clear_all();
  frame->tell(Change::Items);
  run_events(50ms);
  EXPECT_TRUE(list.pane().highlighted().empty());
  EXPECT_EQ(title_of(list), "Routes - 0");
}

TEST_F(ListTest, SurvivesThatItemsGoWhileItIsShown) {
  for (const char* ident : {"A", "B", "C"}) add_waypoint(ident, 1, 1);
  ListFrame& list = open_list('W');
  list.show_item({'W', 3, 0});
  session.items.clear_all();
  list.Refresh();
  run_events(50ms);  // painted before anybody was told
  frame->tell(Change::Items);
  view(list).SetFocus();
  press(WXK_DOWN);
  press(WXK_SPACE);
  EXPECT_EQ(title_of(list), "Waypoints - 0");
}

}  // namespace
}  // namespace ui::wx
