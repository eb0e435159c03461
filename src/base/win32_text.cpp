#include "base/win32_text.h"

#include <windows.h>

namespace base {

std::string narrow_from_wide(std::wstring_view text, unsigned code_page) {
  const auto length = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(code_page, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(code_page, 0, text.data(), length, result.data(), size, nullptr, nullptr);
  return result;
}

std::string utf8_from_wide(std::wstring_view text) { return narrow_from_wide(text, CP_UTF8); }

std::wstring wide_from_utf8(std::string_view text) {
  const auto length = static_cast<int>(text.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring result(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), size);
  return result;
}

}  // namespace base
