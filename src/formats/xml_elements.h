// Elements of an XML document by what they are, whatever prefix their names have, and their texts.
#pragma once

#include <map>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace formats {

[[nodiscard]] std::string_view local_name(pugi::xml_node element);
[[nodiscard]] std::string_view prefix_of(pugi::xml_node element);
[[nodiscard]] bool declares_namespaces(pugi::xml_node element);

// The namespaces of a document's elements.
class Namespaces {
 public:
  // What the element's prefix stands for; empty when neither it nor an element around it says so.
  [[nodiscard]] std::string_view of(pugi::xml_node element);

 private:
  [[nodiscard]] std::optional<std::string_view> declared_in(pugi::xml_node element, std::string_view prefix);

  // By prefix, of elements with so many attributes that looking through them for each element inside takes too long.
  std::map<pugi::xml_node, std::map<std::string_view, std::string_view>> declarations_;
};

// The UTF-8 text of the element and of its CDATA sections. Line breaks and tabs only lay a file out: where there are
// any, the words have one blank between them. A reference to what is no character becomes U+FFFD; one to an entity
// that XML does not have stays as it is.
[[nodiscard]] std::string text_of(pugi::xml_node element);
// The same without blanks around it, for numbers and words.
[[nodiscard]] std::string value_of(pugi::xml_node element);
// The attribute's UTF-8 text, empty when there is none.
[[nodiscard]] std::string attribute_of(pugi::xml_node element, const char* name);

}  // namespace formats
