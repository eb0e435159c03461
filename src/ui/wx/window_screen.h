// The main window as Display sees it: ten lines, a status bar of three fields with a progress bar in it, and boxes.
#pragma once

#include <wx/frame.h>
#include <wx/gauge.h>
#include <wx/stattext.h>

#include <array>
#include <chrono>
#include <memory>

#include "base/clock.h"
#include "ui/display.h"
#include "ui/screen.h"
#include "ui/wx/input_guard.h"

namespace ui::wx {

class WindowScreen : public Screen {
 public:
  explicit WindowScreen(base::Clock& clock) : clock_(clock) {}

  // Makes the widgets in the frame, which must outlive what is painted from now on until detach.
  void attach(wxFrame& frame);
  void detach();
  // A command begins, or has ended: until then nothing asked for an abort.
  void begin_command();
  void end_command();
  // The user has agreed to an abort and to closing the main window behind it.
  [[nodiscard]] bool close_was_agreed() const { return close_agreed_; }
  // The first status field takes the room of the others while menu entries are explained in it.
  void make_room_for_hints(bool room);
  // What the second status field says while there is no progress bar.
  void set_readiness(const wxString& text);

  void paint_line(int line, std::string_view text) override;
  void paint_status(int field, std::string_view text) override;
  void paint_title(std::string_view text) override;
  void paint_progress(int step, int steps) override;
  void show_box(std::string_view title, std::string_view text) override;
  bool ask(std::string_view title, std::string_view question) override;
  bool choose(std::string_view title, std::span<base::Choice> choices) override;
  bool take_abort_request() override;
  void beep() override;

 private:
  void place_gauge();
  void enable_menus(bool enabled);

  base::Clock& clock_;
  wxFrame* frame_ = nullptr;
  std::unique_ptr<InputGuard> guard_;
  std::array<wxStaticText*, Display::kLines> lines_{};
  wxGauge* gauge_ = nullptr;
  wxString readiness_;
  std::chrono::microseconds last_taken_{0};
  bool is_polling_ = false;  // the running command asks for aborts
  bool close_agreed_ = false;
};

}  // namespace ui::wx
