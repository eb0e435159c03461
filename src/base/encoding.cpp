#include "base/encoding.h"

#include <array>
#include <cstdint>
#include <optional>

namespace base {
namespace {

// Unicode of the bytes 0x80 to 0x9F in code page 1252; the five that it leaves free stay what they are.
constexpr std::array<char32_t, 32> kWindowsCharacters{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                      0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// Letters with accents in pairs, capital and small: one letter here for two code points from `first` on.
struct LetterPairs {
  char32_t first;
  std::string_view capitals;
};
constexpr std::array kLetterPairs{
    LetterPairs{0x0100, "AAACCCCDDEEEEEGGGGHHIIII"},
    LetterPairs{0x0134, "JK"},
    LetterPairs{0x0139, "LLLLLNNN"},
    LetterPairs{0x014A, "NOOO"},
    LetterPairs{0x0154, "RRRSSSSTTTUUUUUUWY"},
    LetterPairs{0x0179, "ZZZ"},
    LetterPairs{0x01A0, "O"},
    LetterPairs{0x01B5, "Z"},
    LetterPairs{0x01CD, "AIOUUUUU"},
    LetterPairs{0x01DE, "AA"},
    LetterPairs{0x01E4, "GGKOOZ"},
    LetterPairs{0x01F4, "G"},
    LetterPairs{0x01F8, "N"},
    LetterPairs{0x0200, "AAEEIIOORRUUSTYH"},
    LetterPairs{0x0224, "ZAEOOOOY"},
    LetterPairs{0x0490, "GGG"},  // Cyrillic beyond Russian
    LetterPairs{0x049A, "K"},
    LetterPairs{0x04A2, "N"},
    LetterPairs{0x04AE, "UU"},
    LetterPairs{0x04BA, "H"},
    LetterPairs{0x04D8, "A"},
    LetterPairs{0x04E8, "O"},
    LetterPairs{0x1E00, "ABBBCDDDDDEEEEEFGHHHHHIIKKKLLLLMMMNNNNOOOOPPRRRRSSSSSTTTTUUUUUVVWWWWWXXYZZZ"},
    LetterPairs{0x1EA0, "AAAAAAAAAAAAEEEEEEEEIIOOOOOOOOOOOOUUUUUUUYYYYLVY"},
};

// Substitutes in Latin-1 of the code points from `first` on, '|' between them. An empty one is of a character
// that nobody sees, '?' of one that has none.
struct Substitutes {
  char32_t first;
  std::string_view texts;
};
constexpr std::array kSubstitutes{
    Substitutes{0x0130, "I|i|IJ|ij"},
    Substitutes{0x0138, "k"},
    Substitutes{0x0149, "'n"},
    Substitutes{0x0152, "OE|oe"},
    Substitutes{0x0178, "Y"},
    Substitutes{0x017F, "s"},
    Substitutes{0x018F, "E"},
    Substitutes{0x0192, "f"},
    Substitutes{0x01AF, "U|u"},
    Substitutes{0x01C4, "DZ|Dz|dz|LJ|Lj|lj|NJ|Nj|nj"},
    Substitutes{0x01DD, "e"},
    Substitutes{0x01E2, "\xC6|\xE6"},
    Substitutes{0x01F0, "j|DZ|Dz|dz"},
    Substitutes{0x01FA, "\xC5|\xE5|\xC6|\xE6|\xD8|\xF8"},
    Substitutes{0x0222, "OU|ou"},
    Substitutes{0x0259, "e"},
    Substitutes{0x02B9, "'|\"|'|'|'"},
    Substitutes{0x02C6, "^|^|'"},
    Substitutes{0x02DA, "\xB0|?|~|\""},
    Substitutes{0x0386, "A|\xB7|E|I|I|?|O|?|Y|O|i"},
    Substitutes{0x0391, "A|V|G|D|E|Z|I|Th|I|K|L|M|N|X|O|P|R|?|S|T|Y|F|Ch|Ps|O|I|Y|a|e|i|i|y"},
    Substitutes{0x03B1, "a|v|g|d|e|z|i|th|i|k|l|m|n|x|o|p|r|s|s|t|y|f|ch|ps|o|i|y|o|y|o"},
    Substitutes{0x0400, "E|Yo|Dj|Gj|Ye|Dz|I|Yi|J|Lj|Nj|C|Kj|I|U|Dz"},
    Substitutes{0x0410, "A|B|V|G|D|E|Zh|Z|I|Y|K|L|M|N|O|P|R|S|T|U|F|Kh|Ts|Ch|Sh|Shch|\"|Y|'|E|Yu|Ya"},
    Substitutes{0x0430, "a|b|v|g|d|e|zh|z|i|y|k|l|m|n|o|p|r|s|t|u|f|kh|ts|ch|sh|shch|\"|y|'|e|yu|ya"},
    Substitutes{0x0450, "e|yo|dj|gj|ye|dz|i|yi|j|lj|nj|c|kj|i|u|dz"},
    Substitutes{0x1E96, "h|t|w|y|a|s|s|s|SS|d"},
    Substitutes{0x2000, " | | | | | | | | | | |||||"},
    Substitutes{0x2010, "-|-|-|-|-|-|?|_|'|'|,|'|\"|\"|\"|\"|+|++|\xB7|>|.|..|...|\xB7| | |||||| "},
    Substitutes{0x2030, "o/oo|?|'|\"|'''|'|\"|'''|^|<|>|*|!!|?!|\xAF|_"},
    Substitutes{0x2043, "-|/"},
    Substitutes{0x2047, "??|?!|!?"},
    Substitutes{0x205F, " |"},
    Substitutes{0x2070, "0|i|?|?|4|5|6|7|8|9|+|-|=|(|)|n|0|1|2|3|4|5|6|7|8|9|+|-|=|(|)"},
    Substitutes{0x20A0, "CE|CRC|Cr|FF|\xA3|?|NGN|Pts|Rs|KRW|ILS|VND|EUR|LAK|MNT|?|?|PHP|PYG|?|UAH|GHS|?|?|KZT|INR"},
    Substitutes{0x20BA, "TRY|?|AZN|RUB|GEL|BTC"},
    Substitutes{0x2103,
                "\xB0"
                "C"},
    Substitutes{0x2109,
                "\xB0"
                "F"},
    Substitutes{0x2116, "No"},
    Substitutes{0x2120, "SM|TEL|TM|?|?|?|Ohm"},
    Substitutes{0x212A, "K|\xC5|?|?|e"},
    Substitutes{0x2150, "1/7|1/9|1/10|1/3|2/3|1/5|2/5|3/5|4/5|1/6|5/6|1/8|3/8|5/8|7/8|1/"},
    Substitutes{0x2160, "I|II|III|IV|V|VI|VII|VIII|IX|X|XI|XII|L|C|D|M"},
    Substitutes{0x2170, "i|ii|iii|iv|v|vi|vii|viii|ix|x|xi|xii|l|c|d|m"},
    Substitutes{0x2190, "<-|^|->|v|<->|^v|NW|NE|SE|SW"},
    Substitutes{0x21D0, "<=|?|=>|?|<=>"},
    Substitutes{0x2205, "\xD8"},
    Substitutes{0x2212, "-|?|?|/|?|*|?|\xB7"},
    Substitutes{0x223C, "~"},
    Substitutes{0x2248, "~"},
    Substitutes{0x2260, "<>"},
    Substitutes{0x2264, "<=|>="},
    Substitutes{0x2300, "\xD8"},
    Substitutes{0x2605, "*|*"},
    Substitutes{0x3000, " |,|."},
    Substitutes{0xFB00, "ff|fi|fl|ffi|ffl|st|st"},
    Substitutes{0xFE00, "|||||||||||||||"},  // variants of the character before
    Substitutes{0xFEFF, ""},
};

// Latin-1 letters that come as a letter and an accent of its own behind it.
struct Accent {
  char32_t mark;
  std::string_view plain, accented;
};
constexpr std::array kAccents{
    Accent{0x0300, "AEIOUaeiou", "\xC0\xC8\xCC\xD2\xD9\xE0\xE8\xEC\xF2\xF9"},
    Accent{0x0301, "AEIOUYaeiouy", "\xC1\xC9\xCD\xD3\xDA\xDD\xE1\xE9\xED\xF3\xFA\xFD"},
    Accent{0x0302, "AEIOUaeiou", "\xC2\xCA\xCE\xD4\xDB\xE2\xEA\xEE\xF4\xFB"},
    Accent{0x0303, "ANOano", "\xC3\xD1\xD5\xE3\xF1\xF5"},
    Accent{0x0308, "AEIOUaeiouy", "\xC4\xCB\xCF\xD6\xDC\xE4\xEB\xEF\xF6\xFC\xFF"},
    Accent{0x030A, "Aa", "\xC5\xE5"},
    Accent{0x0327, "Cc", "\xC7\xE7"},
};
constexpr char32_t kFirstAccent = 0x0300;
constexpr char32_t kLastAccent = 0x036F;
constexpr char32_t kFirstFullWidth = 0xFF01;  // the printable ASCII characters once more, as wide as Chinese ones
constexpr char32_t kLastFullWidth = 0xFF5E;

constexpr unsigned char byte_of(char c) { return static_cast<unsigned char>(c); }

void append_utf8(std::string& out, char32_t character) {
  if (character < 0x80) {
    out += static_cast<char>(character);
    return;
  }
  if (character < 0x800) {
    out += static_cast<char>(0xC0 | character >> 6);
  } else {
    out += static_cast<char>(0xE0 | character >> 12);
    out += static_cast<char>(0x80 | (character >> 6 & 0x3F));
  }
  out += static_cast<char>(0x80 | (character & 0x3F));
}

// Takes the character that the text begins with; nothing, and nothing taken, when the text is no UTF-8 there.
std::optional<char32_t> take_character(std::string_view& text) {
  struct Form {
    std::size_t length;
    unsigned mask, lead;
    char32_t smallest;
  };
  for (const Form form :
       {Form{1, 0x80, 0, 0}, Form{2, 0xE0, 0xC0, 0x80}, Form{3, 0xF0, 0xE0, 0x800}, Form{4, 0xF8, 0xF0, 0x10000}}) {
    if ((byte_of(text[0]) & form.mask) != form.lead || text.size() < form.length) continue;
    char32_t character = byte_of(text[0]) & ~form.mask;
    for (std::size_t i = 1; i < form.length; ++i) {
      if ((byte_of(text[i]) & 0xC0) != 0x80) return std::nullopt;
      character = character << 6 | (byte_of(text[i]) & 0x3FU);
    }
    const bool is_surrogate = character >= 0xD800 && character < 0xE000;
    if (character < form.smallest || character > 0x10FFFF || is_surrogate) return std::nullopt;
    text.remove_prefix(form.length);
    return character;
  }
  return std::nullopt;
}

// The piece of that index between the bars; nothing beyond the last.
std::optional<std::string_view> piece(std::string_view texts, std::size_t index) {
  for (; index > 0; --index) {
    const std::size_t bar = texts.find('|');
    if (bar == std::string_view::npos) return std::nullopt;
    texts.remove_prefix(bar + 1);
  }
  return texts.substr(0, texts.find('|'));
}

void append_substitute(std::string& out, char32_t character) {
  if (character >= kFirstFullWidth && character <= kLastFullWidth) {
    out += static_cast<char>(character - kFirstFullWidth + '!');
    return;
  }
  for (const LetterPairs& row : kLetterPairs) {
    const std::size_t index = character < row.first ? row.capitals.size() * 2 : character - row.first;
    if (index >= row.capitals.size() * 2) continue;
    const char capital = row.capitals[index / 2];
    out += index % 2 == 0 ? capital : static_cast<char>(capital - 'A' + 'a');
    return;
  }
  for (auto row = kSubstitutes.rbegin(); row != kSubstitutes.rend(); ++row) {
    if (character < row->first) continue;
    const std::size_t index = character - row->first;
    out += index < row->texts.size() + 1 ? piece(row->texts, index).value_or("?") : "?";
    return;
  }
  out += '?';
}

// True when the letter that `out` ends with has a Latin-1 form with the accent, which takes its place.
bool put_accent(std::string& out, char32_t mark) {
  for (const Accent& accent : kAccents) {
    if (accent.mark != mark || out.empty()) continue;
    const std::size_t at = accent.plain.find(out.back());
    if (at == std::string_view::npos) return false;
    out.back() = accent.accented[at];
    return true;
  }
  return false;
}

// True when a character has been lost or replaced by others.
bool append_latin1(std::string& out, char32_t character) {
  if (character >= 0x80 && character < 0xA0) character = kWindowsCharacters[character - 0x80];
  if (character < 0x80 || (character >= 0xA0 && character < 0x100)) {
    out += static_cast<char>(character);
    return false;
  }
  if (character >= kFirstAccent && character <= kLastAccent) return !put_accent(out, character);
  const std::size_t before = out.size();
  append_substitute(out, character);
  return out.size() > before;
}

}  // namespace

std::string utf8_from_latin1(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (const char c : text) {
    const unsigned char byte = byte_of(c);
    append_utf8(result, byte >= 0x80 && byte < 0xA0 ? kWindowsCharacters[byte - 0x80U] : byte);
  }
  return result;
}

std::string latin1_from_utf8(std::string_view text, int* substitutes) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    if (const std::optional<char32_t> character = take_character(text)) {
      if (append_latin1(result, *character) && substitutes != nullptr) ++*substitutes;
    } else {
      result += text[0];
      text.remove_prefix(1);
    }
  }
  return result;
}

}  // namespace base
