#include "ui/wx/main_frame.h"

#include <wx/accel.h>
#include <wx/dnd.h>
#include <wx/textdlg.h>

#include <utility>

#include "ui/ports.h"
#include "ui/title.h"
#include "ui/wx/edit_dialogs.h"
#include "ui/wx/file_dialogs.h"
#include "ui/wx/help.h"
#include "ui/wx/list_frame.h"
#include "ui/wx/map_frame.h"
#include "ui/wx/option_dialogs.h"
#include "ui/wx/picture_frame.h"
#include "ui/wx/profile_frame.h"
#include "ui/wx/text.h"
#include "ui/wx/window_place.h"

namespace ui::wx {
namespace {

// The size that ten lines, the menu and the status bar need, in pixels of a plain screen.
constexpr int kWidth = 630;
constexpr int kHeight = 268;

// Shows a window beside the main one, whose events are its own alone; makes it where it is not open.
template <typename Frame, typename... Arguments>
Frame& bring_up(wxWeakRef<Frame>& frame, Arguments&&... arguments) {
  if (!frame) {
    frame = new Frame(std::forward<Arguments>(arguments)...);
    frame->SetIcons(program_icons());
    frame->SetExtraStyle(frame->GetExtraStyle() | wxWS_EX_BLOCK_EVENTS);
  }
  frame->Show();
  frame->Raise();
  return *frame;
}

class DroppedFiles : public wxFileDropTarget {
 public:
  explicit DroppedFiles(MainFrame& frame) : frame_(frame) {}

  bool OnDropFiles(wxCoord, wxCoord, const wxArrayString& names) override {
    if (frame_.is_busy()) return false;
    std::vector<std::filesystem::path> files;
    for (const wxString& name : names) files.push_back(path_of(name));
    // Whoever dropped them must not wait until all is read.
    frame_.CallAfter([&frame = frame_, files] { frame.read_files(files); });
    return true;
  }

 private:
  MainFrame& frame_;
};

}  // namespace

MainFrame::MainFrame(session::Session& session, Display& display, WindowScreen& screen)
    : wxFrame(nullptr, wxID_ANY, "pelorix", wxDefaultPosition, wxDefaultSize, wxDEFAULT_FRAME_STYLE, "pelorix"),
      session_(session),
      display_(display),
      screen_(screen),
      menu_({session, *this}) {
  SetIcons(program_icons());
  SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
  SetMenuBar(menu_.make_bar());
  screen_.attach(*this);
  install_accelerators();
  SetDropTarget(new DroppedFiles(*this));
  Bind(wxEVT_MENU, &MainFrame::on_menu, this);
  Bind(wxEVT_CLOSE_WINDOW, &MainFrame::on_close, this);
  Bind(wxEVT_MENU_OPEN, [this](wxMenuEvent& event) {
    menu_.refresh();
    if (event.GetMenu() == menu_.ports_parent()) menu_.list_ports();
    screen_.make_room_for_hints(true);
    event.Skip();
  });
  Bind(wxEVT_MENU_CLOSE, [this](wxMenuEvent& event) {
    screen_.make_room_for_hints(false);
    event.Skip();
  });
  place_at_start();
  display_.set_title_source([this] {
    screen_.set_readiness(wx_text(readiness_text(session_)));
    return title_text(session_);
  });
  display_.refresh_title();
}

MainFrame::~MainFrame() {
  display_.set_title_source({});
  screen_.detach();
  DestroyChildren();  // views among them, which take their leave from this
}

void MainFrame::place_at_start() {
  const store::Settings& settings = session_.settings;
  if (settings.SaveStartupLocation == 1 && settings.StartupLocation) {
    const store::WindowRectangle& saved = *settings.StartupLocation;
    const wxRect place(saved.left, saved.top, saved.width, saved.height);
    // A screen that is no longer there must not swallow the window.
    if (place.width > 0 && place.height > 0 && is_in_sight(place)) {
      SetSize(place);
      keep_place_when_shown();
      return;
    }
  }
  SetSize(FromDIP(wxSize(kWidth, kHeight)));
  CentreOnScreen();
  keep_place_when_shown();
}

// Some window managers put a new window where they like.
void MainFrame::keep_place_when_shown() {
  Bind(wxEVT_SHOW, [this, place = GetPosition(), is_done = false](wxShowEvent& event) mutable {
    event.Skip();
    if (std::exchange(is_done, true)) return;
    CallAfter([this, place] {
      if (GetPosition() != place) Move(place);
    });
  });
}

void MainFrame::install_accelerators() {
  std::vector<wxAcceleratorEntry> entries;
  for (const Accelerator& row : accelerators()) {
    const Command* command = find_command(row.id);
    // Those that the menu's text names are the menu's own.
    if (command != nullptr && command->menu.find('\t') == std::string_view::npos)
      entries.emplace_back(wxACCEL_CTRL, row.letter, menu_id(row.id));
  }
  entries.emplace_back(wxACCEL_NORMAL, WXK_F1, menu_id(kManual));
  SetAcceleratorTable(wxAcceleratorTable(static_cast<int>(entries.size()), entries.data()));
}

// What stands while something runs alone, taken back however it ends.
class MainFrame::Running {
 public:
  explicit Running(MainFrame& frame) : frame_(frame) {
    frame_.is_busy_ = true;
    frame_.screen_.begin_command();
  }
  ~Running() {
    frame_.screen_.end_command();
    frame_.is_busy_ = false;
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  MainFrame& frame_;
};

template <typename Action>
bool MainFrame::run_alone(Action action) {
  if (is_busy_) return false;
  const std::uint64_t revision = session_.items.revision();
  bool done = false;
  {
    const Running running(*this);
    done = action();
  }
  for (View* view : std::vector(views_)) {
    view->show_change(Change::Selection);
    if (session_.items.revision() != revision) view->show_change(Change::Items);
  }
  menu_.refresh();
  // The question has been asked already.
  if (screen_.close_was_agreed()) CallAfter(&MainFrame::leave);
  return done;
}

bool MainFrame::run(int id) {
  const Command* command = find_command(id);
  // An accelerator may still stand for what the menu has greyed.
  if (command == nullptr || !is_offered(session_, *command)) return false;
  return run_alone([&] { return run_command(session_, display_, *this, id); });
}

bool MainFrame::run_upload_selected(char kind) {
  return run_alone([&] { return upload_selected(session_, display_, *this, kind); });
}

bool MainFrame::read_files(const std::vector<std::filesystem::path>& files) {
  return run_alone([&] { return open_files(session_, display_, *this, files); });
}

void MainFrame::on_menu(wxCommandEvent& event) {
  if (const int id = command_of(event.GetId()); id != 0) {
    run(id);
    return;
  }
  const std::string port = menu_.port_of(event.GetId());
  if (port.empty()) {
    event.Skip();
  } else if (port == MainMenu::kOtherPort) {
    choose_other_port();
  } else {
    choose_port(session_, port);
    // The menu that this came from must not be changed under its feet.
    CallAfter([this] { menu_.list_ports(); });
  }
}

void MainFrame::choose_other_port() {
  wxTextEntryDialog dialog(this, "The receiver is on this port (for example COM3, or /dev/ttyUSB0):", "Port",
                           wx_text(session_.port.port_name()));
  if (dialog.ShowModal() != wxID_OK) return;
  const std::string name = record_text(dialog.GetValue().Trim().Trim(false));
  if (name.empty()) return;
  choose_port(session_, name);
  menu_.list_ports();
}

void MainFrame::tell(Change change) {
  for (View* view : std::vector(views_)) view->show_change(change);
  display_.refresh_title();
  menu_.refresh();
}

bool MainFrame::edit(const ItemRef& item) {
  // Nothing else may move the items while the dialog knows its item by its place.
  const bool is_changed = run_alone([&] { return edit_item(wxGetActiveWindow(), *this, item); });
  if (is_changed) display_.refresh_title();
  return is_changed;
}

void MainFrame::show_on_map(const std::vector<ItemRef>& items) { bring_up(map_, this, *this).show_items(items); }

void MainFrame::show_in_list(const ItemRef& item) {
  if (show_list(item.kind)) lists_[item.kind]->show_item(item);
}

void MainFrame::show_profile_of(int track_point) {
  if (show_profile()) profile_->show_track_of(track_point);
}

ListFrame* MainFrame::list_frame(char kind) const {
  const auto place = lists_.find(kind);
  return place == lists_.end() ? nullptr : place->second.get();
}

std::vector<std::filesystem::path> MainFrame::ask_files_to_open(FileQuestion& question) {
  return wx::ask_files_to_open(this, question);
}

std::optional<std::filesystem::path> MainFrame::ask_file_to_save(FileQuestion& question) {
  return wx::ask_file_to_save(this, question);
}

bool MainFrame::ask_igc_options() { return wx::ask_igc_options(this, *this); }

bool MainFrame::ask_lowrance_options(Direction direction) { return wx::ask_lowrance_options(this, *this, direction); }

bool MainFrame::show_options() {
  if (!show_option_sheet(this, *this)) return false;
  session_.apply_settings();
  menu_.list_ports();
  tell(Change::Settings);
  return true;
}

bool MainFrame::choose_datum() {
  if (!wx::choose_datum(this, *this)) return false;
  tell(Change::Settings);
  return true;
}

bool MainFrame::show_list(char kind) {
  bring_up(lists_[kind], this, *this, kind);
  return true;
}

void MainFrame::close_list(char kind) {
  if (ListFrame* frame = list_frame(kind); frame != nullptr) frame->Close(true);
}

bool MainFrame::create_item(char kind) { return wx::create_item(wxGetActiveWindow(), *this, kind); }

bool MainFrame::show_picture() {
  bring_up(picture_, this, *this, picture_is_stretched_).show_change(Change::Picture);
  return true;
}

bool MainFrame::copy_picture() { return copy_picture_to_clipboard(session_); }

void MainFrame::stretch_picture(bool stretched) {
  picture_is_stretched_ = stretched;
  if (picture_) picture_->set_stretched(stretched);
}

bool MainFrame::show_map() {
  bring_up(map_, this, *this);
  return true;
}

bool MainFrame::show_profile() {
  bring_up(profile_, this, *this);
  return true;
}

bool MainFrame::show_manual() { return wx::show_manual(this); }

void MainFrame::show_about() { wx::show_about(this); }

std::optional<store::WindowRectangle> MainFrame::place() const { return main_window_place(*this); }

// Closed when the command has ended: it may not take away what it runs in.
void MainFrame::close() {
  CallAfter([this] { Close(); });
}

void MainFrame::on_close(wxCloseEvent& event) {
  if (is_busy_ && event.CanVeto()) {
    event.Veto();
    return;
  }
  const bool asks = session_.settings.ExitPrompt != 0 && event.CanVeto();
  if (asks && !display_.ask_yes_no("Program Exit", "Do you really wish to exit?")) {
    event.Veto();
    return;
  }
  leave();
}

void MainFrame::leave() {
  if (session_.settings.SaveConfigurationAtExit != 0) run_command(session_, display_, *this, kSaveConfiguration);
  Destroy();
}

}  // namespace ui::wx
