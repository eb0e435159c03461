// The table of all file types that the program reads and writes. A new one is a row in the .cpp.
#pragma once

#include <span>

#include "textfile/file_format.h"

namespace session {

[[nodiscard]] std::span<const textfile::FileFormat> file_formats();

}  // namespace session
