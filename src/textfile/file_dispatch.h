// Chooses the reader of an input file by its extension or first line, and the writer of an output file by its
// extension.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "textfile/file_format.h"

namespace textfile {

class FileDispatch {
 public:
  // The rows in the order in which first lines are tried on them; one must be native text. They and the
  // context's objects must outlive the dispatch.
  FileDispatch(std::span<const FileFormat> formats, FileContext context);

  // The code of the row that reads the file; kUnknownType, or kCannotOpen where the first line is needed.
  [[nodiscard]] int input_type(const std::filesystem::path& path) const;

  // Reads one file into the store. False, after one message box, when nothing was read from it.
  bool do_input(const std::filesystem::path& path);

  // The file's bytes, announced on output line 1; nothing, after a message box, when it cannot be read.
  [[nodiscard]] std::optional<std::string> openit(const std::filesystem::path& path);

  // Writes the store as the type that the extension names: native text for none or an unlisted one. False
  // when nothing was written; the reason is in a message box, or for empty stores on output line 1.
  bool save(const std::filesystem::path& path, const TextOptions& options);

  // Puts the contents in the file's place: 1, or 0 after a message box, with the reason on output line 3 and
  // the old file as it was.
  int open_output(const std::filesystem::path& path, std::string_view contents);

 private:
  [[nodiscard]] const FileFormat* reader_of(const std::filesystem::path& path) const;
  [[nodiscard]] const FileFormat* format_of_contents(std::string_view contents) const;
  bool announce(const std::filesystem::path& path);
  [[nodiscard]] const FileFormat* format_of(int code) const;
  [[nodiscard]] const FileFormat* writer_of(const std::filesystem::path& path) const;
  void sort_waypoints();

  std::span<const FileFormat> formats_;
  FileContext context_;
};

}  // namespace textfile
