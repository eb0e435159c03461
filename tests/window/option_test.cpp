#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/listbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

#include "tests/window/window_fixture.h"
#include "ui/wx/datum_dialog.h"
#include "ui/wx/option_dialog.h"
#include "ui/wx/option_dialogs.h"
#include "ui/wx/save_row.h"
#include "ui/wx/symbol_choice.h"

namespace ui::wx {
namespace {

using support::run_events;
using namespace std::chrono_literals;

template <typename Control>
Control& control(wxWindow& dialog, const char* name) {
  auto* found = dynamic_cast<Control*>(wxWindow::FindWindowByName(name, &dialog));
  if (found == nullptr) throw std::runtime_error(std::string("no such control: ") + name);
  return *found;
}

void type(wxWindow& dialog, const char* name, const char* text) { control<wxTextCtrl>(dialog, name).SetValue(text); }

void check(wxWindow& dialog, const char* name, bool checked) { control<wxCheckBox>(dialog, name).SetValue(checked); }

void choose(wxWindow& dialog, const char* name, const char* label) {
  ASSERT_TRUE(control<wxChoice>(dialog, name).SetStringSelection(label)) << label;
}

std::string text_of(wxWindow& dialog, const char* name) {
  return control<wxStaticText>(dialog, name).GetLabel().utf8_string();
}

// What beside the key's field is said to be wrong; empty when nothing is seen there.
std::string problem_of(wxWindow& dialog, const std::string& key) {
  const auto& text = control<wxStaticText>(dialog, (key + " problem").c_str());
  return text.IsShown() ? text.GetLabel().utf8_string() : "";
}

void click(wxWindow& button) {
  wxCommandEvent event(wxEVT_BUTTON, button.GetId());
  event.SetEventObject(&button);
  button.HandleWindowEvent(event);
}

// As a user does who looks at all of them.
void show_all_pages(wxDialog& dialog) {
  for (int page = static_cast<int>(option_pages().size()) - 1; page >= 0; --page)
    dynamic_cast<OptionDialog&>(dialog).show_page(page);
}

class OptionTest : public support::WindowTest {
 protected:
  OptionTest() { open(); }

  // Does something with the modal dialog that `show` opens.
  template <typename Show>
  bool in_modal_dialog(Show show, std::function<void(wxDialog&)> action) {
    frame->CallAfter([action] {
      for (wxWindow* window : wxTopLevelWindows)
        if (auto* dialog = dynamic_cast<wxDialog*>(window); dialog != nullptr && dialog->IsModal()) action(*dialog);
    });
    return show();
  }

  store::Settings saved_settings() const {
    store::Settings settings;
    store::load_configuration(directory / "pelorix.ini", settings);
    return settings;
  }
};

TEST_F(OptionTest, ChangesAreSavedAndReadBackFromTheFile) {
  session.settings.SA_total_dist = 3;
  const bool changed = in_modal_dialog([this] { return show_option_sheet(frame, *frame); },
                                       [](wxDialog& dialog) {
                                         show_all_pages(dialog);
                                         choose(dialog, "GPS", "Lowrance/Eagle");
                                         control<wxComboBox>(dialog, "PortName").SetValue("sim:lowrance");
                                         choose(dialog, "HandleReadDups", "Keep the old one, drop the new one");
                                         check(dialog, "SA_nameonlytxt 2", true);
                                         check(dialog, "ZeroTime", true);
                                         type(dialog, "TimeOffsetHours", "-3.5");
                                         type(dialog, "externaldatum", "NAD27_CONUS");
                                         choose(dialog, "default_SP_icon", "Residence");
                                         control<SymbolChoice>(dialog, "G12XL/II+_Symbol_Mapping 3").set_code(8255);
                                         type(dialog, "SA_SetLat", "S33 30.0");
                                         click(control<wxButton>(dialog, kSaveButton));
                                         EXPECT_EQ(text_of(dialog, kSavedText), "Saved in pelorix.ini");
                                         dialog.EndModal(wxID_CANCEL);
                                       });
  EXPECT_TRUE(changed) << "what was saved holds, whatever the button afterwards";
  for (const store::Settings& settings : {saved_settings(), session.settings}) {
    EXPECT_EQ(settings.GPS, store::Family::Lowrance);
    EXPECT_EQ(settings.PortName, "sim:lowrance");
    EXPECT_EQ(settings.HandleReadDups, store::Duplicates::Ignore);
    EXPECT_EQ(settings.SA_nameonlytxt, store::Settings::kNoSymbolColumn);
    EXPECT_EQ(settings.ZeroTime, 1);
    EXPECT_EQ(settings.TimeOffsetHours, -3.5);
    EXPECT_EQ(settings.externaldatum, "NAD27_CONUS");
    EXPECT_EQ(settings.default_SP_icon, 10);
    EXPECT_EQ(settings.G12XL_II_Symbol_Mapping[3], 8255);
    EXPECT_EQ(settings.G12XL_II_Symbol_Mapping[4], 7);
    EXPECT_EQ(settings.SA_SetLat, -33.5);
    EXPECT_EQ(settings.SA_total_dist, 3) << "nobody touched it";
  }
}

TEST_F(OptionTest, ABadNumberKeepsTheSheetOpenWithItsPageInFrontAndTheTextBeside) {
  OptionDialog dialog(frame, session, "Options", option_pages());
  dialog.Show();
  show_all_pages(dialog);
  const int first_page = dialog.shown_page();
  type(dialog, "SA_SetMag", "256");
  check(dialog, "ZeroTime", true);
  EXPECT_FALSE(dialog.TransferDataFromWindow());
  EXPECT_NE(dialog.shown_page(), first_page);
  EXPECT_TRUE(control<wxTextCtrl>(dialog, "SA_SetMag").IsShownOnScreen());
  EXPECT_EQ(problem_of(dialog, "SA_SetMag"), "This must be a whole number from 0 to 255.");
  support::save_screenshot(dialog, "options_bad_number");
  EXPECT_EQ(session.settings.ZeroTime, 0) << "one bad value, and none is taken";
  click(control<wxButton>(dialog, kSaveButton));
  EXPECT_FALSE(std::filesystem::exists(directory / "pelorix.ini"));
  type(dialog, "SA_SetMag", "255");
  EXPECT_TRUE(dialog.TransferDataFromWindow());
  EXPECT_EQ(problem_of(dialog, "SA_SetMag"), "");
  EXPECT_EQ(session.settings.SA_SetMag, 255);
}

TEST_F(OptionTest, CancelChangesNothing) {
  const std::string before = store::configuration_text(session.settings);
  EXPECT_FALSE(in_modal_dialog([this] { return show_option_sheet(frame, *frame); },
                               [](wxDialog& dialog) {
                                 show_all_pages(dialog);
                                 check(dialog, "ZeroTime", true);
                                 type(dialog, "Pilot", "Somebody");
                                 dialog.EndModal(wxID_CANCEL);
                               }));
  EXPECT_EQ(store::configuration_text(session.settings), before);
}

TEST_F(OptionTest, TheSerialDebugFileAndTheLogOfLinesFollowAtOnce) {
  session.settings.SaveDebugFileWorkingDirectory = directory.string();
  const auto set_flag = [this](bool on) {
    in_modal_dialog([this] { return show_option_sheet(frame, *frame); },
                    [on](wxDialog& dialog) {
                      check(dialog, "EnableDebugFile", on);
                      click(*dialog.FindWindow(wxID_OK));
                    });
  };
  set_flag(true);
  EXPECT_TRUE(std::filesystem::exists(directory / "FileDebug.txt"));
  EXPECT_TRUE(session.debug_log.is_open());
  set_flag(false);
  EXPECT_FALSE(session.debug_log.is_open());
}

TEST_F(OptionTest, PagesLookRight) {
  OptionDialog dialog(frame, session, "Options", option_pages());
  dialog.Show();
  for (int page = 0; page < static_cast<int>(option_pages().size()); ++page) {
    dialog.show_page(page);
    support::save_screenshot(dialog, "options_" + std::to_string(page));
  }
}

TEST_F(OptionTest, LettersThatNoFileHoldsAreShownReplacedBeforeTheyAreTaken) {
  OptionDialog dialog(frame, session, "Options", option_pages());
  show_all_pages(dialog);
  control<wxTextCtrl>(dialog, "Pilot").SetValue(wxString::FromUTF8("Łukasz Müller"));
  EXPECT_FALSE(dialog.TransferDataFromWindow());
  EXPECT_NE(problem_of(dialog, "Pilot"), "");
  EXPECT_TRUE(dialog.TransferDataFromWindow());
  EXPECT_EQ(session.settings.Pilot, "Lukasz M\xFCller");
}

TEST_F(OptionTest, ASearchNarrowsTheDatumsAndThePreviewFollows) {
  session.settings.DMSMode = geodesy::Notation::Ddd;
  add_waypoint("HOME", 40.5, -75.25);
  DatumDialog dialog(frame, session, {"WGS-84", geodesy::Notation::Ddd});
  dialog.Show();
  auto& list = control<wxListBox>(dialog, "datums");
  const unsigned all = list.GetCount();
  EXPECT_EQ(list.GetStringSelection(), "WGS-84");
  EXPECT_EQ(text_of(dialog, "shifted position"), "N40.5000000  W075.2500000");
  EXPECT_EQ(text_of(dialog, "shift distance"), "0.0 m from there");
  type(dialog, "datum search", "27 con");
  EXPECT_LT(list.GetCount(), all);
  EXPECT_EQ(list.GetStringSelection(), "NAD27_CONUS");
  EXPECT_NE(text_of(dialog, "shifted position"), "N40.5000000  W075.2500000");
  EXPECT_NE(text_of(dialog, "shift distance"), "0.0 m from there");
  support::save_screenshot(dialog, "datum");
  type(dialog, "preview position", "somewhere");
  EXPECT_EQ(text_of(dialog, "shifted position"), "");
  type(dialog, "datum search", "atlantis");
  EXPECT_FALSE(dialog.FindWindow(wxID_OK)->IsEnabled());
  EXPECT_EQ(session.settings.externaldatum, "WGS-84");
}

TEST_F(OptionTest, TheDatumDialogHandsOverDatumAndNotation) {
  EXPECT_TRUE(in_modal_dialog([this] { return choose_datum(frame, *frame); },
                              [](wxDialog& dialog) {
                                type(dialog, "datum search", "european_1950");
                                auto& notation = control<wxChoice>(dialog, "notation");
                                notation.SetSelection(3);
                                wxCommandEvent event(wxEVT_CHOICE, notation.GetId());
                                event.SetInt(3);
                                notation.HandleWindowEvent(event);
                                click(*dialog.FindWindow(wxID_OK));
                              }));
  EXPECT_EQ(session.settings.externaldatum.rfind("European_1950", 0), 0U) << session.settings.externaldatum;
  EXPECT_EQ(session.settings.DMSMode, geodesy::Notation::Utm);
}

TEST_F(OptionTest, DownKeyGoesFromTheSearchIntoTheList) {
  DatumDialog dialog(frame, session, {"WGS-84", geodesy::Notation::Ddd});
  dialog.Show();
  dialog.Raise();
  support::wait_until_settled(dialog);
  auto& search = control<wxTextCtrl>(dialog, "datum search");
  search.SetFocus();
  run_events(1000ms, [&] { return search.HasFocus(); });
  support::press(WXK_DOWN);
  auto& list = control<wxListBox>(dialog, "datums");
  EXPECT_TRUE(run_events(1000ms, [&] { return list.HasFocus(); }));
}

TEST_F(OptionTest, LowranceDownloadsAskForTheSlots) {
  session.settings.SA_LwrRangeHi = -1;
  const auto ask = [this] { return ask_lowrance_options(frame, *frame, Direction::Download); };
  EXPECT_TRUE(in_modal_dialog(ask, [](wxDialog& dialog) {
    EXPECT_EQ(dialog.GetTitle(), "Set LEI Waypoint Download Options");
    EXPECT_TRUE(control<wxCheckBox>(dialog, "SA_LwrRangeHi all").GetValue());
    click(*dialog.FindWindow(wxID_OK));
  }));
  EXPECT_EQ(session.settings.SA_LwrRangeHi, -1);
  EXPECT_TRUE(in_modal_dialog(ask, [](wxDialog& dialog) {
    check(dialog, "SA_LwrRangeHi all", false);
    type(dialog, "SA_LwrRangeLo", "20");
    type(dialog, "SA_LwrRangeHi", "0");
    click(*dialog.FindWindow(wxID_OK));
    EXPECT_TRUE(dialog.IsModal()) << "it stays open";
    EXPECT_EQ(problem_of(dialog, "SA_LwrRangeHi"), "This must be a whole number from 1 to 65535.");
    type(dialog, "SA_LwrRangeHi", "19");
    click(*dialog.FindWindow(wxID_OK));
    EXPECT_EQ(problem_of(dialog, "SA_LwrRangeHi"), "The last slot is before the first one.");
    support::save_screenshot(dialog, "lowrance_download");
    type(dialog, "SA_LwrRangeHi", "30");
    click(*dialog.FindWindow(wxID_OK));
  }));
  EXPECT_EQ(session.settings.SA_LwrRangeLo, 20);
  EXPECT_EQ(session.settings.SA_LwrRangeHi, 30);
}

TEST_F(OptionTest, LowranceUploadsAskWhereToBegin) {
  EXPECT_TRUE(in_modal_dialog([this] { return ask_lowrance_options(frame, *frame, Direction::Upload); },
                              [](wxDialog& dialog) {
                                EXPECT_EQ(dialog.GetTitle(), "Set LEI Waypoint Upload Options");
                                type(dialog, "SA_LwrStartPt", "100");
                                type(dialog, "SA_LwrRteStartPt", "200");
                                check(dialog, "SA_SendLowrInactives", true);
                                support::save_screenshot(dialog, "lowrance_upload");
                                click(*dialog.FindWindow(wxID_OK));
                              }));
  EXPECT_EQ(session.settings.SA_LwrStartPt, 100);
  EXPECT_EQ(session.settings.SA_LwrRteStartPt, 200);
  EXPECT_EQ(session.settings.SA_SendLowrInactives, 1);
}

TEST_F(OptionTest, IgcTextsAreRefusedRatherThanCut) {
  EXPECT_FALSE(in_modal_dialog([this] { return ask_igc_options(frame, *frame); },
                               [](wxDialog& dialog) {
                                 type(dialog, "Pilot", std::string(600, 'x').c_str());
                                 click(*dialog.FindWindow(wxID_OK));
                                 EXPECT_NE(problem_of(dialog, "Pilot"), "");
                                 type(dialog, "Pilot", "A. Pilot");
                                 support::save_screenshot(dialog, "igc");
                                 dialog.EndModal(wxID_CANCEL);
                               }));
  EXPECT_EQ(session.settings.Pilot, "None");
}

}  // namespace
}  // namespace ui::wx
