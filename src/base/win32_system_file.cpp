#include <windows.h>

#include <array>

#include "base/system_file.h"
#include "base/text.h"
#include "base/win32_handle.h"
#include "base/win32_text.h"

namespace base {
namespace {

std::string last_reason() {
  return reason_of(std::error_code(static_cast<int>(GetLastError()), std::system_category()));
}

}  // namespace

bool create_new_file(const std::filesystem::path& path, std::string& reason) {
  const Win32Handle file(
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.is_open() && GetLastError() != ERROR_FILE_EXISTS) reason = last_reason();
  return file.is_open();
}

std::string flush_to_disk(const std::filesystem::path& path) {
  const Win32Handle file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  return file.is_open() && FlushFileBuffers(file.get()) ? std::string() : last_reason();
}

// The library would give it in the code page of the user's language.
std::string reason_of(const std::error_code& error) {
  if (error.category() != std::system_category()) return error.message();
  std::array<wchar_t, 512> text{};
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                     static_cast<DWORD>(error.value()), 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
  std::wstring_view words(text.data(), length);
  while (!words.empty() && (words.back() <= L' ' || words.back() == L'.')) words.remove_suffix(1);
  return words.empty() ? "error " + std::to_string(error.value()) : utf8_from_wide(words);
}

std::filesystem::path path_from_text(std::string_view text) { return wide_from_utf8(utf8_text(text)); }

}  // namespace base
