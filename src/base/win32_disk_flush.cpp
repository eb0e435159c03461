#include <windows.h>

#include "base/disk_flush.h"

namespace base {

void flush_to_disk(const std::filesystem::path& path) {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  FlushFileBuffers(file);
  CloseHandle(file);
}

}  // namespace base
