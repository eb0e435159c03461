#include <windows.h>

#include <array>

#include "base/system_file.h"
#include "base/text.h"
#include "base/win32_handle.h"
#include "base/win32_text.h"

namespace base {
namespace {

// In words, UTF-8; the library would give it in the code page of the user's language.
std::string reason_of_number(DWORD error) {
  std::array<wchar_t, 512> text{};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                      text.data(), static_cast<DWORD>(text.size()), nullptr);
  std::wstring_view words(text.data(), length);
  while (!words.empty() && (words.back() <= L' ' || words.back() == L'.')) words.remove_suffix(1);
  return words.empty() ? "error " + std::to_string(error) : utf8_from_wide(words);
}

std::string last_reason() { return reason_of_number(GetLastError()); }

}  // namespace

bool create_new_file(const std::filesystem::path& path, std::string& reason) {
  const Win32Handle file(
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.is_open() && GetLastError() != ERROR_FILE_EXISTS) reason = last_reason();
  return file.is_open();
}

std::string flush_to_disk(const std::filesystem::path& path) {
  const Win32Handle file(CreateFileW(path.c_str(), GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.is_open()) return last_reason();
  if (FlushFileBuffers(file.get()) != 0) return {};
  const DWORD error = GetLastError();
  return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED ? std::string() : reason_of_number(error);
}

std::string move_over(const std::filesystem::path& from, const std::filesystem::path& to) {
  // Virus scanners and the like open what is new for a moment.
  constexpr int kTries = 10;
  constexpr DWORD kPauseMilliseconds = 100;
  for (int tried = 1;; ++tried) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) != 0) return {};
    const DWORD error = GetLastError();
    if ((error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) || tried == kTries)
      return reason_of_number(error);
    Sleep(kPauseMilliseconds);
  }
}

std::filesystem::path path_from_text(std::string_view text) { return wide_from_utf8(utf8_text(text)); }

}  // namespace base
