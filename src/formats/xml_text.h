// Pieces of XML that writers append.
#pragma once

#include <string>
#include <string_view>

namespace formats {

// A Latin-1 text as UTF-8 that may stand in an element or between the quotes of an attribute. Control characters,
// of which XML has no form, must have been taken out.
void append_xml_text(std::string& out, std::string_view latin1);

// The shortest decimal number, without exponent, that reads back as the same value. Finite values only.
void append_xml_number(std::string& out, double value);
void append_xml_number(std::string& out, float value);

// The element with contents that are XML already; nothing when there are none.
void append_element(std::string& out, std::string_view name, std::string_view contents);

}  // namespace formats
