// Between the UTF-8 of this program and the UTF-16 of Windows.
#pragma once

#include <string>
#include <string_view>

namespace base {

// What is no text in its encoding becomes U+FFFD.
[[nodiscard]] std::string utf8_from_wide(std::wstring_view text);
[[nodiscard]] std::wstring wide_from_utf8(std::string_view text);

// In a code page of Windows, by its number; what it does not have becomes '?' or a letter that looks alike.
[[nodiscard]] std::string narrow_from_wide(std::wstring_view text, unsigned code_page);

}  // namespace base
