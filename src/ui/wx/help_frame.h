// The window of the manual.
#pragma once

#include <wx/frame.h>
#include <wx/html/htmlwin.h>

#include <filesystem>

namespace ui::wx {

class HelpFrame : public wxFrame {
 public:
  HelpFrame(wxWindow* parent, const std::filesystem::path& manual);

  // The manual as it is shown.
  [[nodiscard]] wxHtmlWindow& page() { return *page_; }

 private:
  wxWindow* make_buttons();
  void show_contents();

  const wxString manual_;
  wxHtmlWindow* page_;
};

}  // namespace ui::wx
