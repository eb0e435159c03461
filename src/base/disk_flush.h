// Past the system's own buffers, so that a file that takes another's place is whole after a power failure too.
#pragma once

#include <filesystem>

namespace base {

// What was written to the file so far goes to the disk, as far as the system lets us; a failure is no error.
void flush_to_disk(const std::filesystem::path& path);

}  // namespace base
