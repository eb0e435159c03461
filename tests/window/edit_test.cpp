#include <wx/dcmemory.h>
#include <wx/image.h>
#include <wx/textctrl.h>

#include <cstdlib>
#include <set>

#include "tests/window/window_fixture.h"
#include "ui/wx/edit_dialogs.h"
#include "ui/wx/symbol_choice.h"
#include "ui/wx/symbol_pictures.h"

namespace ui::wx {
namespace {

// All symbols on a light and a dark ground, for people to look at.
void save_contact_sheet() {
  const char* folder = std::getenv("PELORIX_SCREENSHOTS");
  if (folder == nullptr) return;
  constexpr int kColumns = 20, kCell = 56;
  const int rows = (static_cast<int>(store::kSymbols.size()) + kColumns - 1) / kColumns;
  wxBitmap sheet(kColumns * kCell, 2 * rows * kCell);
  wxMemoryDC dc(sheet);
  for (const int part : {0, 1}) {
    dc.SetBrush(wxBrush(part == 0 ? wxColour(255, 255, 255) : wxColour(40, 40, 40)));
    dc.DrawRectangle(0, part * rows * kCell, kColumns * kCell, rows * kCell);
    int place = 0;
    for (const store::SymbolRow& row : store::kSymbols) {
      const int x = place % kColumns * kCell, y = (place / kColumns + part * rows) * kCell;
      dc.DrawBitmap(symbol_bitmap(row.code, 32), x + 2, y + 2, true);
      dc.DrawBitmap(symbol_bitmap(row.code, 16), x + 37, y + 18, true);
      ++place;
    }
  }
  dc.SelectObject(wxNullBitmap);
  std::filesystem::create_directories(folder);
  sheet.SaveFile(wxString(folder) + "/symbols.png", wxBITMAP_TYPE_PNG);
}

std::string pixels_of(int code) {
  const wxImage image = symbol_bitmap(code, 32).ConvertToImage();
  const std::size_t size = 32 * 32;
  return std::string(reinterpret_cast<const char*>(image.GetData()), 3 * size) +
         std::string(reinterpret_cast<const char*>(image.GetAlpha()), size);
}

TEST(SymbolPictures, AllSymbolsCanBeToldApart) {
  std::set<std::string> pictures;
  for (const store::SymbolRow& row : store::kSymbols)
    EXPECT_TRUE(pictures.insert(pixels_of(row.code)).second) << row.code << " " << row.gpx_name;
  EXPECT_EQ(pixels_of(12345), pixels_of(store::kDotSymbol)) << "no symbol, so the plain dot";
  save_contact_sheet();
}

class EditTest : public support::WindowTest {
 protected:
  EditTest() {
    session.items.start_route(3, "3", "Round the bay");
    (void)session.items.push_route(true);
    for (const char* ident : {"Kiel", "Laboe", "Schilksee"}) {
      session.items.start_item();
      session.items.CurrentItem.ident = ident;
      session.items.CurrentItem.position = {54.3 + ident[0] / 1000.0, 10.1};
      session.items.CurrentItem.symbol = 8287;
      session.items.CurrentItem.display_mode = 3;
      (void)session.items.push_route(true);
    }
  }

  template <typename Dialog>
  static Dialog* find_dialog() {
    for (wxWindow* window : wxTopLevelWindows)
      if (auto* dialog = dynamic_cast<Dialog*>(window); dialog != nullptr) return dialog;
    return nullptr;
  }
  // Does something with the dialog that comes up next.
  template <typename Dialog, typename Action>
  void when_open(Action action) {
    wxTheApp->CallAfter([action] {
      auto* dialog = find_dialog<Dialog>();
      ASSERT_NE(dialog, nullptr);
      action(*dialog);
    });
  }
  template <typename Dialog>
  static void type(Dialog& dialog, std::string_view id, const wxString& text) {
    auto* entry = dynamic_cast<wxTextCtrl*>(dialog.form().control(id));
    ASSERT_NE(entry, nullptr) << id;
    entry->SetValue(text);
  }
  static void press_button(wxDialog& dialog, int id) {
    wxCommandEvent event(wxEVT_BUTTON, id);
    event.SetEventObject(dialog.FindWindow(id));
    dialog.FindWindow(id)->ProcessWindowEvent(event);
  }
};

TEST_F(EditTest, ABadEntryKeepsTheDialogOpenAndAGoodOneChangesWaypointAndRoutePoint) {
  open();
  when_open<ItemDialog>([](ItemDialog& dialog) {
    type(dialog, "country", "DEU");
    type(dialog, "position", "32 382000 5700000");
    support::save_screenshot(dialog, "edit_waypoint");
    press_button(dialog, wxID_OK);
    EXPECT_TRUE(dialog.IsModal());
    EXPECT_EQ(dialog.form().message("position"), "Zone letter required!");
    EXPECT_EQ(dialog.form().message("country"), "2 characters fit here; these are 3");
    EXPECT_TRUE(dialog.form().control("position")->HasFocus());
    support::save_screenshot(dialog, "edit_waypoint_error");
    type(dialog, "position", "54.5, 10.25");
    EXPECT_EQ(dialog.form().message("position"), "");
    press_button(dialog, wxID_OK);
    EXPECT_TRUE(dialog.form().control("country")->HasFocus()) << "the other page comes up";
    support::save_screenshot(dialog, "edit_waypoint_garmin");
    type(dialog, "country", "DE");
    type(dialog, "comment", wxString::FromUTF8("Łódź"));
    EXPECT_EQ(dialog.form().message("comment").utf8_string(), "Becomes \"Lódz\"");
    press_button(dialog, wxID_OK);
    EXPECT_EQ(dialog.GetReturnCode(), wxID_OK);
  });
  EXPECT_TRUE(frame->edit({'R', 3, 2}));
  for (const store::ItemRecord& item : {session.items.waypoint(2), session.items.route(3).points[1]}) {
    EXPECT_EQ(item.position, (geodesy::Position{54.5, 10.25}));
    EXPECT_EQ(item.comment,
              "L\xF3"
              "dz");
    EXPECT_EQ(item.country, "DE");
    EXPECT_EQ(item.ident, "Laboe");
  }
}

TEST_F(EditTest, CancelAndAnUntouchedFormChangeNothing) {
  open();
  const std::uint64_t revision = session.items.revision();
  when_open<ItemDialog>([](ItemDialog& dialog) { press_button(dialog, wxID_OK); });
  EXPECT_FALSE(frame->edit({'W', 1}));
  when_open<ItemDialog>([](ItemDialog& dialog) {
    type(dialog, "comment", "no");
    press_button(dialog, wxID_CANCEL);
  });
  EXPECT_FALSE(frame->edit({'W', 1}));
  EXPECT_FALSE(frame->edit({'W', 77}));
  EXPECT_EQ(session.items.revision(), revision);
}

TEST_F(EditTest, ANewProximityWaypointComesWithItsDistance) {
  open();
  session.settings.DistValues = geodesy::DistanceUnit::NauticalMiles;
  when_open<ItemDialog>([](ItemDialog& dialog) {
    press_button(dialog, wxID_OK);
    EXPECT_EQ(dialog.form().message("ident"), "A name is needed");
    type(dialog, "ident", "Wreck");
    type(dialog, "position", "N54 30.000 E10 15.000");
    type(dialog, "distance", "0.5");
    press_button(dialog, wxID_OK);
  });
  EXPECT_TRUE(create_item(frame, *frame, 'P'));
  ASSERT_EQ(session.items.proximity_count(), 1);
  EXPECT_EQ(session.items.proximity(1).proximity_distance, 926.0F);
  EXPECT_EQ(session.items.proximity(1).in_use, 1);
}

TEST_F(EditTest, ARouteGetsAnotherNameAndOrder) {
  open();
  when_open<RouteDialog>([](RouteDialog& dialog) {
    type(dialog, "comment", wxString('x', 41));
    press_button(dialog, wxID_OK);
    EXPECT_TRUE(dialog.IsModal());
    EXPECT_EQ(dialog.form().message("comment"), "40 characters fit here; these are 41");
    type(dialog, "comment", "Home");
    support::save_screenshot(dialog, "edit_route");
    dialog.points().SetSelection(0);
    dialog.move(false);
    EXPECT_EQ(dialog.points().GetSelection(), 1);
    dialog.add_waypoint(3);
    dialog.points().SetSelection(0);
    dialog.remove();
    press_button(dialog, wxID_OK);
  });
  EXPECT_TRUE(frame->edit({'R', 3}));
  const store::Route& route = session.items.route(3);
  EXPECT_EQ(route.header->comment, "Home");
  ASSERT_EQ(route.points.size(), 3U);
  EXPECT_EQ(route.points[0].ident, "Kiel");
  EXPECT_EQ(route.points[1].ident, "Schilksee");
  EXPECT_EQ(route.points[2].ident, "Schilksee");
  EXPECT_EQ(session.items.waypoint_count(), 3);
}

TEST_F(EditTest, ASymbolIsFoundByAPartOfItsName) {
  open();
  std::vector<PickRow> rows;
  for (const store::SymbolRow& row : store::kSymbols) rows.push_back({wxString(symbol_name(row.code)), row.code});
  PickDialog dialog(frame, "Symbol", rows, true);
  dialog.select(8287);
  EXPECT_EQ(dialog.value(), 8287);
  dialog.search("pin");
  EXPECT_GT(dialog.shown_rows(), 2);
  EXPECT_EQ(dialog.value(), 8287) << "still in sight";
  dialog.Show();
  support::save_screenshot(dialog, "edit_symbols");
  dialog.search("heliport");
  EXPECT_EQ(dialog.value(), 16388);
  dialog.search("no such symbol");
  EXPECT_EQ(dialog.value(), -1);
}

}  // namespace
}  // namespace ui::wx
