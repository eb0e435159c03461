// Runs the tests of the window program inside the toolkit.
#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>

#include <clocale>

namespace {

class TestProgram : public wxApp {
 public:
  bool OnInit() override { return true; }
  // An assertion of the toolkit is a fault of ours.
  void OnAssertFailure(const wxChar* file, int number, const wxChar* function, const wxChar* condition,
                       const wxChar* message) override {
    ADD_FAILURE() << wxString(file) << ":" << number << " " << wxString(function) << ": " << wxString(condition) << " "
                  << (message == nullptr ? wxString() : wxString(message));
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  wxApp::SetInstance(new TestProgram);
  if (!wxEntryStart(argc, argv) || !wxTheApp->CallOnInit()) return 1;
  std::setlocale(LC_NUMERIC, "C");
  wxLog::SetActiveTarget(new wxLogStderr);  // nobody is there to close a window of messages
  wxInitAllImageHandlers();
  wxTheApp->SetExitOnFrameDelete(false);
  // Windows are made and looked at inside a loop that runs, as in the program.
  int status = 1;
  {
    wxEventLoop loop;
    const wxEventLoopActivator active(&loop);
    status = RUN_ALL_TESTS();
  }
  wxTheApp->OnExit();
  wxEntryCleanup();
  return status;
}
