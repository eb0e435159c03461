// The main window: the menu, ten output lines, the status bar. It runs the commands, and keeps the other windows.
#pragma once

#include <wx/frame.h>
#include <wx/weakref.h>

#include <map>

#include "ui/commands.h"
#include "ui/windows.h"
#include "ui/wx/desk.h"
#include "ui/wx/main_menu.h"
#include "ui/wx/window_screen.h"

namespace ui::wx {

class ListFrame;
class MapFrame;
class PictureFrame;
class ProfileFrame;

class MainFrame : public wxFrame, public Desk, private Windows {
 public:
  // All must outlive the frame.
  MainFrame(session::Session& session, Display& display, WindowScreen& screen);
  ~MainFrame() override;

  // Reads files that were dropped, or named at the start.
  bool read_files(const std::vector<std::filesystem::path>& files);

  // Desk.
  [[nodiscard]] session::Session& session() override { return session_; }
  [[nodiscard]] Display& display() override { return display_; }
  bool run(int id) override;
  bool run_upload_selected(char kind) override;
  [[nodiscard]] bool is_busy() const override { return is_busy_; }
  void add_view(View& view) override { views_.push_back(&view); }
  void remove_view(View& view) override { std::erase(views_, &view); }
  void tell(Change change) override;
  bool edit(const ItemRef& item) override;
  void show_on_map(const std::vector<ItemRef>& items) override;
  void show_in_list(const ItemRef& item) override;
  void show_profile_of(int track_point) override;

  // The other windows, for those who look at the program from outside; nullptr where they are not open.
  [[nodiscard]] ListFrame* list_frame(char kind) const;
  [[nodiscard]] MapFrame* map_frame() const { return map_.get(); }
  [[nodiscard]] PictureFrame* picture_frame() const { return picture_.get(); }
  [[nodiscard]] ProfileFrame* profile_frame() const { return profile_.get(); }

 private:
  // Windows.
  std::vector<std::filesystem::path> ask_files_to_open(FileQuestion& question) override;
  std::optional<std::filesystem::path> ask_file_to_save(FileQuestion& question) override;
  bool ask_igc_options() override;
  bool ask_lowrance_options(Direction direction) override;
  bool show_options() override;
  bool choose_datum() override;
  bool show_list(char kind) override;
  void close_list(char kind) override;
  bool create_item(char kind) override;
  bool show_picture() override;
  bool copy_picture() override;
  void stretch_picture(bool stretched) override;
  [[nodiscard]] bool picture_is_stretched() const override { return picture_is_stretched_; }
  bool show_map() override;
  bool show_profile() override;
  bool show_manual() override;
  void show_about() override;
  [[nodiscard]] std::optional<store::WindowRectangle> place() const override;
  void close() override;

  class Running;

  // Runs something that takes over the program until it ends; false when something else does.
  template <typename Action>
  bool run_alone(Action action);
  void choose_other_port();
  void place_at_start();
  void keep_place_when_shown();
  void on_menu(wxCommandEvent& event);
  void on_close(wxCloseEvent& event);
  void leave();
  void install_accelerators();

  session::Session& session_;
  Display& display_;
  WindowScreen& screen_;
  MainMenu menu_;
  std::vector<View*> views_;
  bool is_busy_ = false;
  bool picture_is_stretched_ = false;
  std::map<char, wxWeakRef<ListFrame>> lists_;
  wxWeakRef<MapFrame> map_;
  wxWeakRef<PictureFrame> picture_;
  wxWeakRef<ProfileFrame> profile_;
};

}  // namespace ui::wx
