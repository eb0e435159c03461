// Elements of an XML document by what they are, whatever prefix their names have.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace formats {

[[nodiscard]] std::string_view local_name(pugi::xml_node element);
[[nodiscard]] std::string_view prefix_of(pugi::xml_node element);
[[nodiscard]] bool declares_namespaces(pugi::xml_node element);
// What the element's prefix stands for; empty when neither it nor an element around it says so.
[[nodiscard]] std::string_view namespace_of(pugi::xml_node element);
// The UTF-8 text of the element and of its CDATA sections. Line breaks only lay a file out: where there are any,
// the words have one blank between them.
[[nodiscard]] std::string text_of(pugi::xml_node element);

}  // namespace formats
