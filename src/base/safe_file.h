// Saving without losing what was there: the new contents go to a temporary file in the same folder, which
// then takes the old file's place.
#pragma once

#include <filesystem>
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

// Writes `contents` byte for byte. Empty on success, else the reason in words; the old file is then as it
// was. Something that is no plain file (a terminal, a pipe) is written to directly.
[[nodiscard]] std::string save_file(const std::filesystem::path& path, std::string_view contents);

// The whole file; false with the reason in words when it cannot be read.
[[nodiscard]] bool load_file(const std::filesystem::path& path, std::string& contents, std::string& reason);

}  // namespace base
