// Between the UTF-8 of other programs' files and the Latin-1 of records.
#pragma once

#include <string>
#include <string_view>

namespace base {

// Latin-1 bytes as UTF-8. Bytes 0x80 to 0x9F are taken for the characters that Windows has there (code page
// 1252), since that is where such texts come from.
[[nodiscard]] std::string utf8_from_latin1(std::string_view text);

// UTF-8 as Latin-1. A character without a Latin-1 form becomes a readable substitute (an en dash "-", a euro
// sign "EUR", a letter with a foreign accent its plain letter, Greek and Cyrillic letters their usual
// transliteration), or '?' where there is none. Bytes that are no UTF-8 are kept as they are: the text was
// Latin-1 already. `substitutes`, where given, counts the characters replaced.
[[nodiscard]] std::string latin1_from_utf8(std::string_view text, int* substitutes = nullptr);

}  // namespace base
