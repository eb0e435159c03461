// What commands may have opened and asked beyond lines, boxes and questions. The window program has all of it; by
// itself, as in the console program, nothing opens and nobody answers.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "session/session.h"

namespace ui {

// What a file dialog asks for.
struct FileQuestion {
  struct Type {
    std::string label;    // "GPX files (*.gpx)"
    std::string pattern;  // "*.gpx", or several with ';' between them
  };
  std::string title;
  std::filesystem::path directory;  // in which it opens; empty: wherever
  std::string name;                 // that it proposes
  std::vector<Type> types;
  int type = 0;  // index of the chosen type, before and after
};

enum class Direction { Download, Upload };

class Windows {
 public:
  virtual ~Windows() = default;

  // Empty: the user has cancelled.
  virtual std::vector<std::filesystem::path> ask_files_to_open(FileQuestion&) { return {}; }
  // Asks before a file is overwritten. A name without extension gets that of the chosen type.
  virtual std::optional<std::filesystem::path> ask_file_to_save(FileQuestion&) { return std::nullopt; }

  // These tell whether the user went on; what was entered is in the settings then.
  virtual bool ask_igc_options() { return false; }
  virtual bool ask_lowrance_options(Direction) { return true; }

  // These tell whether there is such a window now, or whether something was changed in it.
  virtual bool show_options() { return false; }
  virtual bool choose_datum() { return false; }
  virtual bool show_list(char /*kind*/) { return false; }
  virtual void close_list(char /*kind*/) {}
  virtual bool create_item(char /*kind*/) { return false; }
  virtual bool show_picture() { return false; }
  virtual bool copy_picture() { return false; }
  virtual void stretch_picture(bool) {}
  [[nodiscard]] virtual bool picture_is_stretched() const { return false; }
  virtual bool show_map() { return false; }
  virtual bool show_profile() { return false; }
  virtual bool show_manual() { return false; }
  virtual void show_about() {}

  // Where the main window is, for the configuration; nothing when there is none.
  [[nodiscard]] virtual std::optional<store::WindowRectangle> place() const { return std::nullopt; }
  // Asks the main window to close.
  virtual void close() {}
};

}  // namespace ui
