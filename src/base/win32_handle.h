// A handle of Windows, closed when its owner ends.
#pragma once

#include <windows.h>

#include <utility>

namespace base {

class Win32Handle {
 public:
  Win32Handle() = default;
  // INVALID_HANDLE_VALUE, which CreateFile answers on failure, is no handle.
  explicit Win32Handle(HANDLE handle) : handle_(handle) {}
  Win32Handle(Win32Handle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
  Win32Handle& operator=(Win32Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Win32Handle() { (void)close(); }

  [[nodiscard]] bool is_open() const { return handle_ != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HANDLE get() const { return handle_; }

  // 0 or the system's error number.
  DWORD close() {
    if (!is_open()) return ERROR_INVALID_HANDLE;
    return CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE)) != 0 ? DWORD{ERROR_SUCCESS} : GetLastError();
  }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

}  // namespace base
