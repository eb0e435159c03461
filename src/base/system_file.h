// What files need of the system and the library does not do.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace base {

// Creates an empty file; false where something of that name is there already, a link included, or on failure, for which
// `reason` is then set.
[[nodiscard]] bool create_new_file(const std::filesystem::path& path, std::string& reason);

// What was written to the file goes to the disk, so that it is whole after a power failure too. Empty on success and
// where the file's system has no such thing, else the reason in words: some disks are found full only now.
[[nodiscard]] std::string flush_to_disk(const std::filesystem::path& path);

// Gives a file another's name, in place of what had it. Empty on success, else the reason in words, and nothing has
// changed.
[[nodiscard]] std::string move_over(const std::filesystem::path& from, const std::filesystem::path& to);

// A path that came as a text (command line, configuration): its bytes on Linux; on Windows UTF-8, or else Latin-1 as
// old files have it. The library itself takes a text there for something else than what path::string() gives.
[[nodiscard]] std::filesystem::path path_from_text(std::string_view text);

}  // namespace base
