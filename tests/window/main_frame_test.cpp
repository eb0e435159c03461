#include <gmock/gmock.h>
#include <wx/dnd.h>
#include <wx/menu.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <fstream>
#include <sstream>

#include "tests/window/modal_answers.h"
#include "tests/window/window_fixture.h"
#include "ui/ports.h"
#include "ui/wx/list_frame.h"
#include "ui/wx/map_frame.h"

namespace ui::wx {
namespace {

using support::press;
using support::run_events;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::chrono_literals;

class MainFrameTest : public support::WindowTest {
 protected:
  // As a click on the menu entry does.
  void choose(int command) {
    wxCommandEvent event(wxEVT_MENU, menu_id(command));
    event.SetEventObject(frame);
    frame->ProcessWindowEvent(event);
    run_events(20ms);
  }
  [[nodiscard]] bool is_greyed(int command) const {
    return !frame->GetMenuBar()->FindItem(menu_id(command))->IsEnabled();
  }
  [[nodiscard]] std::string configuration() const {
    std::ifstream file(directory / "pelorix.ini");
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
  }
  // A file of one waypoint.
  std::string write_file(const std::string& name, const std::string& ident) {
    const std::filesystem::path path = directory / name;
    std::ofstream(path) << "Version 2\nM DMM\nW  " << ident << "             N54 19.5000 E010 08.7000\n";
    return path.string();
  }

  support::ModalAnswers answers;
};

// Something that happens while a command runs.
class Later : public wxTimer {
 public:
  Later(std::chrono::milliseconds delay, std::function<void()> action) : action_(std::move(action)) {
    StartOnce(static_cast<int>(delay.count()));
  }
  void Notify() override { action_(); }

 private:
  std::function<void()> action_;
};

TEST_F(MainFrameTest, StartsWithItsTitleItsReadinessAndEveryCommandInTheMenu) {
  open();
  EXPECT_EQ(title(), "Pelorix -- GPS ? COM1 - 0 -- W:0 T:0 (TP:0) E:0 P:0 R:0");
  EXPECT_EQ(status(2), "Ready -- GPS is UNKNOWN");
  const wxSize size = frame->FromDIP(wxSize(630, 268));
  run_events(2s, [&] { return frame->GetSize() == size; });
  EXPECT_EQ(frame->GetSize(), size);
  for (const Command& command : commands()) {
    const wxMenuItem* item = frame->GetMenuBar()->FindItem(menu_id(command.id));
    ASSERT_NE(item, nullptr) << command.id;
    EXPECT_EQ(item->GetItemLabel().utf8_string(), command.menu);
    EXPECT_LT(menu_id(command.id), 32768) << "ids are read back as 16 bits with a sign";
  }
  support::save_screenshot(*frame, "main");
}

TEST_F(MainFrameTest, WhatMakesNoSenseIsGreyedAndStreetAtlasSaysItself) {
  open();
  for (const int id : {40058, 40102, 40005, 40038, 40046, 40184, 40106, 40134, 40321, 99})
    EXPECT_TRUE(is_greyed(id)) << id;
  for (const int id : {80, 40182, 40029, 40052, 100, 40183, 40094}) EXPECT_FALSE(is_greyed(id)) << id;
  choose(40310);
  EXPECT_EQ(status(2), "Ready -- GPS is Garmin");
  EXPECT_TRUE(is_greyed(40035)) << "Garmin receivers have no events";
  choose(40311);
  EXPECT_EQ(status(2), "Ready -- GPS is Lowrance/Eagle");
  EXPECT_FALSE(is_greyed(40035));
  EXPECT_TRUE(is_greyed(40037)) << "units have no almanac";
  for (const int id : {40093, 40094, 40095, 40096, 40097}) choose(id);
  ASSERT_EQ(answers.asked.size(), 5u);
  EXPECT_THAT(answers.asked, testing::Each(HasSubstr("Street Atlas|")));
  add_waypoint("A", 1, 2);
  choose(40311);
  EXPECT_FALSE(is_greyed(40058));
  choose(40005);
  EXPECT_EQ(session.items.waypoint_count(), 0);
  EXPECT_TRUE(is_greyed(40058));
}

TEST_F(MainFrameTest, EveryAcceleratorRunsItsCommand) {
  open();
  press('E', wxMOD_CONTROL);
  press('T', wxMOD_CONTROL);
  press('W', wxMOD_CONTROL);
  EXPECT_EQ(answers.asked.size(), 3u);
  press('D', wxMOD_CONTROL);
  EXPECT_EQ(line(6), "Must select GPS first!");
  press('F', wxMOD_CONTROL);
  EXPECT_THAT(title(), HasSubstr("Configuration saved to: "));
  EXPECT_EQ(status(1), "pelorix.ini saved.");
  press('L', wxMOD_CONTROL);
  EXPECT_THAT(title(), HasSubstr("Configuration saved to: ")) << "a greyed command does nothing";
}

TEST_F(MainFrameTest, DownloadsAndUploadsEverythingWithASimulatedGarmin) {
  open();
  choose_port(session, "sim:garmin");
  EXPECT_EQ(status(2), "Ready -- GPS is Garmin");
  choose(40047);
  EXPECT_THAT(line(1), HasSubstr("ID:"));
  choose(40048);
  EXPECT_THAT(line(4), HasSubstr("Int:"));
  choose(40049);
  EXPECT_THAT(line(4), HasSubstr(" UTC"));
  choose(40050);
  EXPECT_NE(line(4), "");
  choose(40051);
  EXPECT_NE(line(1), "");
  struct Row {
    int id, line;
    std::string_view text;
  };
  static constexpr std::array kTransfers{
      Row{40028, 3, "Waypoint download completed"},
      Row{40029, 3, "Waypoint download completed"},
      Row{40117, 3, "Waypoint download completed"},
      Row{40030, 4, "Tracks download completed"},
      Row{40034, 5, "Routes download completed"},
      Row{40119, 5, "Routes download completed"},
      Row{40036, 6, "Proximity download completed"},
      Row{40037, 3, "Almanac download completed"},
      Row{40039, 3, "Waypoints upload completed"},
      Row{40116, 3, "Waypoints upload completed"},
      Row{40040, 4, ""},
      Row{40044, 7, ""},
      Row{40118, 7, ""},
      Row{40045, 8, ""},
      Row{40046, 3, ""},
      Row{40156, 4, ""},
      Row{40150, 4, ""},
      Row{40038, 3, "Waypoints upload completed"},
  };
  for (const Row& row : kTransfers) {
    ASSERT_FALSE(is_greyed(row.id)) << row.id;
    choose(row.id);
    std::string all;
    for (int number = 1; number <= 10; ++number) all += line(number) + "\n";
    EXPECT_THAT(all, HasSubstr(row.text.empty() ? "upload completed" : std::string(row.text))) << row.id;
    EXPECT_EQ(line(1), "") << row.id;
    EXPECT_EQ(status(3), " ") << row.id;
  }
  EXPECT_THAT(title(), HasSubstr("Pelorix -- GPS Garmin - sim:garmin - 9600 -- W:"));
  EXPECT_THAT(answers.asked, IsEmpty());
  support::save_screenshot(*frame, "main_downloaded");
  choose(40053);
  EXPECT_EQ(line(1), "The GPS receiver was not turned off.");
}

TEST_F(MainFrameTest, ALowranceUnitIsAskedAboutItsSlotsFirst) {
  open();
  choose_port(session, "sim:lowrance");
  choose(40028);
  EXPECT_THAT(answers.asked, ElementsAre("Set LEI Waypoint Download Options"));
  EXPECT_EQ(session.items.waypoint_count(), 0) << "cancelled";
  answers.asked.clear();
  for (const int id : {40028, 40032, 40033, 40035, 40159, 40034}) {
    answers.add(wxID_OK);
    choose(id);
    EXPECT_THAT(line(1), HasSubstr("download completed")) << id;
  }
  EXPECT_GT(session.items.waypoint_count(), 0);
  EXPECT_GT(session.items.event_count(), 0);
  EXPECT_GT(session.items.track_count(), 0);
  answers.asked.clear();
  answers.add(wxID_OK);
  choose(40044);
  EXPECT_THAT(answers.asked, ElementsAre("Set LEI Waypoint Upload Options"));
  choose(40160);
  choose(40042);
  EXPECT_EQ(answers.asked.size(), 1u) << "events and trails have no slots to ask about";
  choose(40047);
  EXPECT_NE(line(1), "");
  choose(40052);
  ASSERT_TRUE(session.picture);
  EXPECT_NE(frame->picture_frame(), nullptr);
}

TEST_F(MainFrameTest, EscEndsADownloadAndOtherKeysDoNothingMeanwhile) {
  session.simulated_garmin.options.baud = 9600;
  open();
  choose_port(session, "sim:garmin");
  bool painted = false;
  std::chrono::steady_clock::time_point pressed;
  frame->Bind(wxEVT_IDLE, [&](wxIdleEvent& event) { event.Skip(); });
  Later keys(600ms, [] {
    wxUIActionSimulator simulator;
    simulator.Char('W', wxMOD_CONTROL);
    simulator.Char('O', wxMOD_CONTROL);
    simulator.Char(WXK_F10);
  });
  Later look(1000ms, [&] {
    painted = status(3) == "ESC key to abort" && line(4).find(" of ") != std::string::npos;
    EXPECT_TRUE(frame->is_busy());
    EXPECT_FALSE(frame->run(40029)) << "a second command";
    EXPECT_FALSE(frame->GetMenuBar()->IsEnabledTop(0));
    support::save_screenshot(*frame, "main_transfer");
  });
  Later esc(1800ms, [&] {
    pressed = std::chrono::steady_clock::now();
    wxUIActionSimulator().Char(WXK_ESCAPE);
  });
  EXPECT_FALSE(frame->run(40029));
  const auto taken = std::chrono::steady_clock::now() - pressed;
  RecordProperty("esc_ms", static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(taken).count()));
  EXPECT_TRUE(painted);
  EXPECT_LT(session.items.waypoint_count(), 50);
  EXPECT_THAT(answers.asked, IsEmpty()) << "what was pressed during the transfer is gone";
  run_events(200ms);
  EXPECT_THAT(answers.asked, IsEmpty());
  EXPECT_TRUE(frame->GetMenuBar()->IsEnabledTop(0));
  EXPECT_EQ(status(2), "Ready -- GPS is Garmin");
}

TEST_F(MainFrameTest, ClosingDuringATransferAsksAbortsAndCloses) {
  session.simulated_garmin.options.baud = 9600;
  session.settings.SaveConfigurationAtExit = 1;
  open();
  choose_port(session, "sim:garmin");
  answers.add(wxID_NO);
  answers.add(wxID_YES);
  Later first(300ms, [&] { frame->Close(); });
  Later second(900ms, [&] {
    EXPECT_EQ(answers.asked.size(), 1u);
    EXPECT_TRUE(frame->is_busy()) << "the user has said no";
    frame->Close();
  });
  frame->run(40029);
  run_events(500ms, [&] { return frame == nullptr; });
  EXPECT_EQ(frame, nullptr);
  EXPECT_EQ(answers.asked.size(), 2u) << "and is not asked again";
  EXPECT_FALSE(session.flags.PortOpen);
  EXPECT_THAT(configuration(), HasSubstr("PortName=sim:garmin"));
}

TEST_F(MainFrameTest, ExitAsksAndWritesTheConfigurationWithThePlace) {
  session.settings.ExitPrompt = 1;
  session.settings.SaveConfigurationAtExit = 1;
  session.settings.SaveStartupLocation = 1;
  session.settings.StartupLocation = store::WindowRectangle{100, 120, 700, 300};
  open();
  const wxRect place(100, 120, 700, 300);
  run_events(2s, [&] { return frame->GetRect() == place; });
  EXPECT_EQ(frame->GetRect(), place);
  answers.add(wxID_NO);
  choose(kExit);
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(configuration(), "");
  answers.add(wxID_YES);
  choose(kExit);
  EXPECT_EQ(frame, nullptr);
  EXPECT_THAT(answers.asked, testing::Each(std::string("Program Exit|Do you really wish to exit?")));
  EXPECT_THAT(configuration(), HasSubstr("StartupLocation="));
  EXPECT_THAT(configuration(), HasSubstr("ExitPrompt=1"));
}

TEST_F(MainFrameTest, WithoutPromptAndWithoutSavingItJustCloses) {
  open();
  frame->Close();
  run_events(300ms, [&] { return frame == nullptr; });
  EXPECT_EQ(frame, nullptr);
  EXPECT_THAT(answers.asked, IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(directory / "pelorix.ini"));
}

TEST_F(MainFrameTest, DroppedFilesAreRead) {
  open();
  wxArrayString names;
  names.Add(wxString::FromUTF8(write_file("one.txt", "ONE")));
  names.Add(wxString::FromUTF8(write_file("zw\xC3\xB6lf.txt", "TWO")));
  names.Add(wxString::FromUTF8((directory / "missing.txt").string()));
  static_cast<wxFileDropTarget*>(frame->GetDropTarget())->OnDropFiles(0, 0, names);
  run_events(300ms, [&] { return !answers.asked.empty(); });
  EXPECT_EQ(session.items.waypoint_count(), 2);
  EXPECT_THAT(title(), HasSubstr("W:2"));
  EXPECT_THAT(answers.asked, ElementsAre(HasSubstr("do_input|Unable to open file: ")));
}

TEST_F(MainFrameTest, FilesAreOpenedSavedAndRemembered) {
  open();
#ifdef __WXMSW__
  // The dialog of Windows for several files takes their names from its user alone.
  EXPECT_TRUE(frame->read_files({write_file("in.txt", "ONE")}));
#else
  answers.add_file(write_file("in.txt", "ONE"));
  choose(80);
#endif
  ASSERT_EQ(session.items.waypoint_count(), 1);
  EXPECT_EQ(session.settings.ReadFileName + session.settings.ReadFileNameExtn, "in.txt");
  EXPECT_EQ(session.settings.ReadWorkingDirectory, directory.string());
  answers.add_file((directory / "out.gpx").string());
  choose(40058);
  EXPECT_TRUE(std::filesystem::exists(directory / "out.gpx"));
  answers.add_file((directory / "no_extension").string());
  choose(40058);
  EXPECT_EQ(session.settings.SaveFileNameExtn.empty(), false) << "the chosen type's";
  answers.add_file((directory / "list.dtm").string());
  choose(40105);
  EXPECT_GT(std::filesystem::file_size(directory / "list.dtm"), 1000u);
  answers.add_file((directory / "log.txt").string());
  choose(100);
  EXPECT_TRUE(is_greyed(100));
  choose(40055);
  EXPECT_FALSE(is_greyed(99));
  choose(99);
  EXPECT_FALSE(is_greyed(100));
  EXPECT_TRUE(is_greyed(99));
  EXPECT_TRUE(frame->GetMenuBar()->FindItem(menu_id(40055))->IsChecked());
  EXPECT_FALSE(frame->GetMenuBar()->FindItem(menu_id(40054))->IsChecked());
  choose(40147);
  EXPECT_EQ(session.items.track_count(), 1);
  answers.add(wxID_OK);
  answers.add_file((directory / "flight.igc").string());
  choose(40102);
  EXPECT_FALSE(std::filesystem::is_empty(directory));
  EXPECT_EQ(session.settings.SaveIGCWorkingDirectory, directory.string());
}

TEST_F(MainFrameTest, EmptyListsSaySoAndFullOnesOpenAndClose) {
  open();
  struct Row {
    int id;
    char kind;
    std::string_view nothing;
  };
  static constexpr std::array kLists{Row{40183, 'W', "No waypoints loaded!"}, Row{40148, 'T', "No tracks loaded!"},
                                     Row{40141, 'I', "No Events (LEI Icons) loaded!"},
                                     Row{40189, 'R', "No routes loaded!"},
                                     Row{40300, 'P', "No proximity waypoints loaded!"}};
  for (const Row& row : kLists) {
    choose(row.id);
    EXPECT_EQ(line(9), row.nothing);
    EXPECT_EQ(frame->list_frame(row.kind), nullptr);
  }
  download_everything();
  choose(40190);
  EXPECT_EQ(session.items.route(session.items.route_count() - 1).header->comment, "DUMMY ROUTE");
  session.items.start_item();
  (void)session.items.push_event();
  for (const Row& row : kLists) {
    choose(row.id);
    EXPECT_NE(frame->list_frame(row.kind), nullptr) << row.kind;
  }
  choose(40008);
  run_events(100ms);
  EXPECT_EQ(frame->list_frame('R'), nullptr);
  EXPECT_NE(frame->list_frame('W'), nullptr);
  choose(40136);
  EXPECT_THAT(line(3), HasSubstr("duplicate waypoint"));
  choose(40005);
  run_events(100ms);
  for (const Row& row : kLists) EXPECT_EQ(frame->list_frame(row.kind), nullptr) << row.kind;
}

TEST_F(MainFrameTest, ClearingTakesItemsAwayFromUnderEveryWindow) {
  open();
  for (const int id : {40005, 40006, 40007, 40008, 40009, 40010}) {
    download_everything();
    for (const int window : {40320, 40321, 40183, 40148, 40189}) choose(window);
    choose(id);
    frame->map_frame()->canvas().show_all();
    frame->map_frame()->Refresh();
    run_events(50ms);
    choose(40005);
    run_events(50ms);
  }
  EXPECT_EQ(session.items.waypoint_count(), 0);
}

TEST_F(MainFrameTest, NothingMovesItemsWhileOneIsEdited) {
  open();
  add_waypoint("MMM", 1, 1);
  add_waypoint("ZZZ", 2, 2);
  const std::string file = write_file("in.txt", "AAA");
  answers.add([&](wxDialog&) {
    EXPECT_FALSE(frame->read_files({file}));
    EXPECT_FALSE(frame->run(40005));
    return static_cast<int>(wxID_CANCEL);
  });
  frame->edit({'W', 2, 0});
  EXPECT_EQ(session.items.waypoint_count(), 2);
  EXPECT_FALSE(frame->is_busy());
}

TEST_F(MainFrameTest, WhatIsHighlightedStaysSoWhenAFileIsSortedIn) {
  open();
  add_waypoint("MMM", 1, 1);
  add_waypoint("ZZZ", 2, 2);
  frame->show_in_list({'W', 1, 0});
  ListFrame& list = *frame->list_frame('W');
  ASSERT_EQ(list.pane().highlighted(), (std::vector<ItemRef>{{'W', 1, 0}}));
  frame->read_files({write_file("in.txt", "AAA")});
  ASSERT_EQ(session.items.waypoint(1).ident, "AAA");
  EXPECT_EQ(list.pane().highlighted(), (std::vector<ItemRef>{{'W', 2, 0}}));
}

TEST_F(MainFrameTest, TheOtherWindowsOpenFromTheMenu) {
  open();
  download_everything();
  choose(40320);
  EXPECT_NE(frame->map_frame(), nullptr);
  choose(40321);
  EXPECT_NE(frame->profile_frame(), nullptr);
  choose(40052);
  ASSERT_TRUE(session.picture);
  const int width = session.picture->width();
  choose(40099);
  EXPECT_EQ(session.picture->height(), width);
  choose(40100);
  EXPECT_TRUE(frame->GetMenuBar()->FindItem(menu_id(40100))->IsChecked());
  choose(40106);
  choose(40184);
  for (const int id : {40182, 40015, 40179, 40142, 40301}) choose(id);
  EXPECT_EQ(answers.asked.size(), 5u) << "one dialog each, and all were cancelled";
  EXPECT_EQ(session.items.event_count(), 0);
  EXPECT_FALSE(frame->is_busy());
}

TEST_F(MainFrameTest, PortsAreListedAndOneCanBeNamed) {
  open();
  const wxMenu& gps = *frame->GetMenuBar()->GetMenu(1);
  const wxMenuItem* simulated = frame->GetMenuBar()->FindItem(gps.FindItem("Simulated Garmin receiver"));
  ASSERT_NE(simulated, nullptr);
  wxCommandEvent event(wxEVT_MENU, simulated->GetId());
  frame->ProcessWindowEvent(event);
  run_events(50ms);
  EXPECT_EQ(session.port.port_name(), "sim:garmin");
  EXPECT_EQ(session.settings.GPS, store::Family::Garmin);
  choose_port(session, "COM7");
  EXPECT_EQ(session.settings.COM, 6);
  EXPECT_EQ(session.settings.PortName, "");
  EXPECT_EQ(session.settings.GPS, store::Family::Garmin) << "a real port says nothing of its receiver";
}

}  // namespace
}  // namespace ui::wx
