#include "ui/wx/help.h"

#include <wx/generic/aboutdlgg.h>
#include <wx/stattext.h>

#include <fstream>
#include <iterator>

#include "tests/window/window_fixture.h"
#include "ui/menu.h"
#include "ui/wx/help_frame.h"
#include "ui/wx/program_icon.h"

namespace ui::wx {
namespace {

using support::run_events;
using namespace std::chrono_literals;

constexpr int kHelp = 40103;

class HelpTest : public support::WindowTest {
 protected:
  static std::vector<HelpFrame*> help_frames() {
    std::vector<HelpFrame*> frames;
    for (wxWindow* window : wxTopLevelWindows)
      if (auto* help = dynamic_cast<HelpFrame*>(window); help != nullptr && !help->IsBeingDeleted())
        frames.push_back(help);
    return frames;
  }
};

TEST_F(HelpTest, OpensTheManualOnce) {
  open();
  EXPECT_TRUE(frame->run(kHelp));
  EXPECT_TRUE(frame->run(kHelp));
  ASSERT_EQ(help_frames().size(), 1U);
  HelpFrame& help = *help_frames().front();
  EXPECT_EQ(help.page().GetOpenedPageTitle(), "The Pelorix Manual");
  const wxString text = help.page().ToText();
  EXPECT_NE(text.find("Connecting a receiver"), wxString::npos);
  EXPECT_NE(text.find("degrees and minutes"), wxString::npos);
  support::save_screenshot(help, "help");
}

TEST_F(HelpTest, GoesToChaptersAndBack) {
  open();
  frame->run(kHelp);
  HelpFrame& help = *help_frames().front();
  run_events(300ms);
  EXPECT_FALSE(help.page().HistoryCanBack());
  EXPECT_TRUE(help.page().LoadPage("#c4"));
  run_events(100ms);
  EXPECT_GT(help.page().GetViewStart().y, 0);
  support::save_screenshot(help, "help_chapter");
  EXPECT_TRUE(help.page().HistoryBack());
  EXPECT_EQ(help.page().GetViewStart().y, 0);
}

TEST_F(HelpTest, ClosesWithEsc) {
  open();
  frame->run(kHelp);
  support::wait_until_settled(*help_frames().front());
  support::press(WXK_ESCAPE);
  EXPECT_TRUE(run_events(1000ms, [] { return help_frames().empty(); }));
  ASSERT_NE(frame, nullptr);
}

TEST(Manual, IsLookedForBesideTheProgramThenInTheSystem) {
  EXPECT_EQ(manual_places("/usr/bin/pelorix"),
            (std::vector<std::filesystem::path>{"/usr/bin/manual/manual.html", "/usr/share/pelorix/manual.html"}));
}

// The text of a menu without mnemonic and accelerator.
std::string plain(std::string_view menu_text) {
  std::string text;
  for (std::size_t i = 0; i < menu_text.size() && menu_text[i] != '\t'; ++i)
    if (menu_text[i] != '&' || (i > 0 && menu_text[i - 1] == '&')) text += menu_text[i];
  return text;
}

TEST(Manual, NamesEveryMenuAndCommand) {
  std::ifstream file("docs/manual.md");
  const std::string manual{std::istreambuf_iterator<char>(file), {}};
  ASSERT_FALSE(manual.empty());
  const auto is_named = [&](std::string_view text) {
    return manual.find("**" + plain(text)) != std::string::npos || manual.find("> " + plain(text)) != std::string::npos;
  };
  for (const Command& command : commands()) EXPECT_TRUE(is_named(command.menu)) << plain(command.menu);
  for (const MenuEntry& entry : menu())
    EXPECT_TRUE(entry.kind != MenuEntry::Kind::Menu || is_named(entry.text)) << plain(entry.text);
}

TEST_F(HelpTest, AboutNamesVersionAndLicence) {
  open();
  wxGenericAboutDialog box(about_texts(), frame);
  wxString texts;
  for (wxWindow* child : box.GetChildren()) texts += child->GetLabel() + "\n";
  EXPECT_NE(texts.find("Pelorix " + std::string(session::kVersion)), wxString::npos) << texts;
  EXPECT_NE(texts.find("MIT licence"), wxString::npos) << texts;
  box.Show();
  support::save_screenshot(box, "about");
}

TEST_F(HelpTest, TheIconIsThereInAllSizes) {
  open();
  const wxIconBundle icons = program_icons();
  wxFrame window(frame, wxID_ANY, "Icons");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
    EXPECT_EQ(icons.GetIconOfExactSize(size).GetWidth(), size);
    const wxImage image = draw_program_icon(size);
    EXPECT_EQ(image.GetAlpha(0, 0), 0) << size;
    EXPECT_EQ(image.GetAlpha(size / 2, size / 2), 255) << size;
    row->Add(new wxStaticBitmap(&window, wxID_ANY, wxBitmap(image)), 0, wxALIGN_BOTTOM | wxALL, 4);
  }
  window.SetSizerAndFit(row);
  window.Show();
  support::save_screenshot(window, "icons");
}

}  // namespace
}  // namespace ui::wx
