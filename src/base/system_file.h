// The two things that a safe save needs of the system and the library's streams do not do.
#pragma once

#include <filesystem>
#include <string>

namespace base {

// Creates an empty file; false where something of that name is there already, a link included, or on failure, for which
// `reason` is then set.
[[nodiscard]] bool create_new_file(const std::filesystem::path& path, std::string& reason);

// What was written to the file goes to the disk, so that it is whole after a power failure too. Empty on success and
// where the file's system has no such thing, else the reason in words: some disks are found full only now.
[[nodiscard]] std::string flush_to_disk(const std::filesystem::path& path);

}  // namespace base
