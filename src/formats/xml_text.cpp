#include "formats/xml_text.h"

#include <array>
#include <charconv>

#include "base/encoding.h"

namespace formats {
namespace {

void append_escaped(std::string& out, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
}

template <typename Number>
void append_shortest(std::string& out, Number value) {
  std::array<char, 400> digits;  // the smallest of numbers has 324 zeros before its digits
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
  out.append(digits.data(), end);
}

}  // namespace

void append_xml_text(std::string& out, std::string_view latin1) { append_escaped(out, base::utf8_from_latin1(latin1)); }

void append_xml_number(std::string& out, double value) { append_shortest(out, value); }
void append_xml_number(std::string& out, float value) { append_shortest(out, value); }

void append_element(std::string& out, std::string_view name, std::string_view contents) {
  if (contents.empty()) return;
  out += '<';
  out += name;
  out += '>';
  out += contents;
  out += "</";
  out += name;
  out += '>';
}

}  // namespace formats
