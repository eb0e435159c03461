// What files need of the system and the library does not do.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace base {

// Creates an empty file; false where something of that name is there already, a link included, or on failure, for which
// `reason` is then set.
[[nodiscard]] bool create_new_file(const std::filesystem::path& path, std::string& reason);

// What was written to the file goes to the disk, so that it is whole after a power failure too. Empty on success and
// where the file's system has no such thing, else the reason in words: some disks are found full only now.
[[nodiscard]] std::string flush_to_disk(const std::filesystem::path& path);

// The reason in words, UTF-8.
[[nodiscard]] std::string reason_of(const std::error_code& error);

// A path that came as a text (command line, configuration): its bytes on Linux; on Windows UTF-8, or else Latin-1 as
// old files have it. The library itself takes a text there for something else than what path::string() gives.
[[nodiscard]] std::filesystem::path path_from_text(std::string_view text);

}  // namespace base
