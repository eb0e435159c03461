// Saving without losing what was there: the new contents go to a temporary file in the same folder, which
// then takes the old file's place.
#pragma once

#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>
#include <string_view>

namespace base {

#ifdef _WIN32
inline constexpr std::string_view kLineEnd = "\r\n";
#else
inline constexpr std::string_view kLineEnd = "\n";
#endif

// The text as a file of this system: LF becomes the system's line end.
[[nodiscard]] std::string with_line_ends(std::string_view text);

// A file being saved: what is written goes to the temporary file. Something that is no plain file (a terminal,
// a pipe, standard output under its name in /dev) is written to directly.
class SafeFile {
 public:
  SafeFile() = default;
  SafeFile(const SafeFile&) = delete;
  SafeFile& operator=(const SafeFile&) = delete;
  ~SafeFile();  // without a commit nothing has happened to the old file

  // Empty on success, else the reason in words. Again for what comes later: commit gives the first reason.
  [[nodiscard]] std::string open(const std::filesystem::path& path);
  void write(std::string_view bytes);
  // Flushes down to the disk, then puts the file in its place.
  [[nodiscard]] std::string commit();

 private:
  static std::filesystem::path end_of_links(std::filesystem::path path);
  bool create_temporary();
  void note_failure(const std::string& reason);

  std::filesystem::path target_;
  std::filesystem::path temporary_;  // empty: the target is written to directly
  std::ofstream file_;
  std::ostream* out_ = nullptr;  // file_ or standard output
  std::string reason_;
};

// Writes `contents` byte for byte. Empty on success, else the reason in words; the old file is then as it was.
[[nodiscard]] std::string save_file(const std::filesystem::path& path, std::string_view contents);

// The whole file; false with the reason in words when it cannot be read.
[[nodiscard]] bool load_file(const std::filesystem::path& path, std::string& contents, std::string& reason);

// Opens a file for reading in pieces and tells its size in bytes (0 where it has none); false with the reason.
[[nodiscard]] bool open_file(const std::filesystem::path& path, std::ifstream& file, std::uint64_t& size,
                             std::string& reason);

}  // namespace base
