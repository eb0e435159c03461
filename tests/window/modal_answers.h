// Answers modal dialogs in a test's stead, without showing them, and remembers what they asked.
#pragma once

#include <wx/dialog.h>
#include <wx/filedlg.h>
#include <wx/modalhook.h>
#include <wx/msgdlg.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "tests/window/window_fixture.h"

namespace support {

class ModalAnswers : public wxModalDialogHook {
 public:
  using Answer = std::function<int(wxDialog& dialog)>;

  ModalAnswers() { Register(); }

  // For the dialogs to come, in their order; those beyond get wxID_CANCEL.
  void add(Answer answer) { answers_.push_back(std::move(answer)); }
  void add(int result) {
    add([result](wxDialog&) { return result; });
  }
  void add_file(const std::string& path) {
    add([path](wxDialog& dialog) {
      dynamic_cast<wxFileDialog&>(dialog).SetPath(wxString::FromUTF8(path));
      run_events(std::chrono::milliseconds(300));  // the dialog knows the file when it has read its folder
      return static_cast<int>(wxID_OK);
    });
  }

  // "TITLE|TEXT" of message boxes, the titles of other dialogs.
  std::vector<std::string> asked;

 protected:
  int Enter(wxDialog* dialog) override {
    std::string text = dialog->GetTitle().utf8_string();
    if (auto* box = dynamic_cast<wxMessageDialog*>(dialog)) text += "|" + box->GetMessage().utf8_string();
    asked.push_back(text);
    if (answers_.empty()) return wxID_CANCEL;
    const Answer answer = std::move(answers_.front());
    answers_.pop_front();
    return answer(*dialog);
  }

 private:
  std::deque<Answer> answers_;
};

}  // namespace support
