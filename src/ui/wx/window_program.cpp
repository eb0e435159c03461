#include "ui/wx/window_program.h"

#include <wx/app.h>
#include <wx/cmdline.h>
#include <wx/image.h>
#include <wx/msgdlg.h>

#include <algorithm>
#include <clocale>
#include <memory>
#include <new>
#include <string_view>

#include "ui/log_settings.h"
#include "ui/wx/main_frame.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

class Program : public wxApp {
 public:
  Program(base::Clock& clock, const session::Surroundings& surroundings) : clock_(clock), surroundings_(surroundings) {}

  bool OnInit() override {
    SetAppName("pelorix");
    SetAppDisplayName("Pelorix");
    if (!wxApp::OnInit()) return false;
    std::setlocale(LC_NUMERIC, "C");  // numbers of files and receivers have a point
    // The clipboard of X takes pictures as PNG; nothing else here needs a handler.
    wxInitAllImageHandlers();
    screen_ = std::make_unique<WindowScreen>(clock_);
    display_ = std::make_unique<Display>(*screen_);
    session_ = std::make_unique<session::Session>(clock_, *display_, surroundings_);
    const store::Settings before = session_->settings;
    store::load_configuration(surroundings_.start_directory / "pelorix.ini", session_->settings);
    follow_log_settings(*session_, *display_, before);
    session_->apply_settings();
    auto* frame = new MainFrame(*session_, *display_, *screen_);
    frame->Show();
    if (!files_.empty()) frame->CallAfter([frame, files = files_] { frame->read_files(files); });
    return true;
  }

  void OnInitCmdLine(wxCmdLineParser& parser) override {
    wxApp::OnInitCmdLine(parser);
    parser.AddParam("files to read", wxCMD_LINE_VAL_STRING, wxCMD_LINE_PARAM_OPTIONAL | wxCMD_LINE_PARAM_MULTIPLE);
    parser.AddSwitch("", "version", "show the version and end");
  }

  bool OnCmdLineParsed(wxCmdLineParser& parser) override {
    for (std::size_t i = 0; i < parser.GetParamCount(); ++i) files_.push_back(path_of(parser.GetParam(i)));
    return wxApp::OnCmdLineParsed(parser);
  }

  // What the system has no memory for ends the program, but not without a word.
  bool OnExceptionInMainLoop() override {
    try {
      throw;
    } catch (const std::bad_alloc&) {
      wxMessageBox("Out of Memory in main loop -- aborting.", "oomem", wxOK | wxICON_ERROR);
    } catch (const std::exception& error) {
      wxMessageBox(wxString("Program error: ") + error.what() + ". Please report to author", "Pelorix",
                   wxOK | wxICON_ERROR);
    }
    return false;
  }

 private:
  base::Clock& clock_;
  const session::Surroundings& surroundings_;
  std::vector<std::filesystem::path> files_;
  std::unique_ptr<WindowScreen> screen_;
  std::unique_ptr<Display> display_;
  std::unique_ptr<session::Session> session_;
};

}  // namespace

int run_window_program(int argc, char** argv, base::Clock& clock, const session::Surroundings& surroundings) {
  // The toolkit would want a display first, and end with the exit status of a failure.
  if (std::find(argv, argv + argc, std::string_view("--version")) != argv + argc) {
    wxMessageOutputStderr(stdout).Printf("Pelorix %s", std::string(session::kVersion));
    return 0;
  }
  wxApp::SetInstance(new Program(clock, surroundings));
#ifdef __WXMSW__
  return wxEntry();  // takes the command line itself, with names in any script
#else
  return wxEntry(argc, argv);
#endif
}

}  // namespace ui::wx
