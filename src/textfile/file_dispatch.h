// Chooses the reader of an input file by its extension or first line, and the writer of an output file by its
// extension.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <string_view>

#include "base/safe_file.h"
#include "textfile/file_format.h"

namespace textfile {

class FileDispatch {
 public:
  // The rows in the order in which first lines are tried on them; one must be native text. They and the
  // context's objects must outlive the dispatch.
  FileDispatch(std::span<const FileFormat> formats, store::FileContext context);

  // The code of the row that reads the file; kUnknownType, or kCannotOpen where the first line is needed.
  [[nodiscard]] int input_type(const std::filesystem::path& path) const;

  // Reads one file into the store. False when it was not read to its end: after one message box, or when the user has
  // stopped it; what was read by then stays.
  bool do_input(const std::filesystem::path& path);

  // Opens a file, tells its size in bytes and announces it on output line 1; false after a message box.
  [[nodiscard]] bool openit(const std::filesystem::path& path, std::ifstream& file, std::uint64_t& size);

  // Whether save would write the receiver's screen to a file of this name, and not items.
  [[nodiscard]] bool would_save_bitmap(const std::filesystem::path& path) const { return writer_of(path)->is_bitmap; }

  // Writes the store as the type that the extension names: native text for none or an unlisted one. What the
  // type cannot hold is said from output line 3 on. False when nothing was written; the reason is in a message
  // box, or for empty stores on output line 1, or the user has cancelled the choice of kinds.
  bool save(const std::filesystem::path& path, const store::OutputOptions& options);

  // Why items could not be saved to a file of this name; empty when they could. Nothing happens to an old file.
  [[nodiscard]] std::string save_problem(const std::filesystem::path& path) const;

  // Whether files of this name's type keep the almanac, whatever the choices.
  [[nodiscard]] bool keeps_almanac(const std::filesystem::path& path) const;

  // Creates the output file: 1, or 0 after a message box, with the reason on output line 3 and the old file as
  // it was.
  int open_output(const std::filesystem::path& path, base::SafeFile& file);

 private:
  [[nodiscard]] const FileFormat* reader_of(const std::filesystem::path& path) const;
  [[nodiscard]] const FileFormat* format_of_contents(base::TextInput& input) const;
  bool announce(const std::filesystem::path& path);
  [[nodiscard]] const FileFormat* format_of(int code) const;
  [[nodiscard]] const FileFormat* writer_of(const std::filesystem::path& path) const;
  [[nodiscard]] int refuse_output(const std::filesystem::path& path, const std::string& reason);
  [[nodiscard]] bool choose_kinds(store::OutputOptions& options);
  void say_losses(const FileFormat& format, const store::OutputOptions& options);
  void sort_waypoints();

  std::span<const FileFormat> formats_;
  store::FileContext context_;
};

}  // namespace textfile
