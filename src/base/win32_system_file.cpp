#include <windows.h>

#include <system_error>

#include "base/system_file.h"

namespace base {
namespace {

std::string last_reason() { return std::system_category().message(static_cast<int>(GetLastError())); }

}  // namespace

bool create_new_file(const std::filesystem::path& path, std::string& reason) {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    if (GetLastError() != ERROR_FILE_EXISTS) reason = last_reason();
    return false;
  }
  CloseHandle(file);
  return true;
}

std::string flush_to_disk(const std::filesystem::path& path) {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return last_reason();
  const std::string reason = FlushFileBuffers(file) ? std::string() : last_reason();
  CloseHandle(file);
  return reason;
}

}  // namespace base
