#include "formats/xml_elements.h"

#include <algorithm>

#include "base/text.h"

namespace formats {
namespace {

constexpr std::string_view kDeclaration = "xmlns";

bool declares(std::string_view attribute, std::string_view prefix) {
  if (!attribute.starts_with(kDeclaration)) return false;
  attribute.remove_prefix(kDeclaration.size());
  return prefix.empty() ? attribute.empty() : attribute.starts_with(':') && attribute.substr(1) == prefix;
}

}  // namespace

std::string_view local_name(pugi::xml_node element) {
  std::string_view name = element.name();
  name.remove_prefix(name.find(':') + 1);
  return name;
}

std::string_view prefix_of(pugi::xml_node element) {
  const std::string_view name = element.name();
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

bool declares_namespaces(pugi::xml_node element) {
  for (const pugi::xml_attribute attribute : element.attributes())
    if (std::string_view(attribute.name()).starts_with(kDeclaration)) return true;
  return false;
}

std::string_view namespace_of(pugi::xml_node element) {
  const std::string_view prefix = prefix_of(element);
  for (pugi::xml_node holder = element; holder; holder = holder.parent())
    for (const pugi::xml_attribute attribute : holder.attributes())
      if (declares(attribute.name(), prefix)) return attribute.value();
  return {};
}

std::string text_of(pugi::xml_node element) {
  std::string text;
  for (const pugi::xml_node part : element.children())
    if (part.type() == pugi::node_pcdata || part.type() == pugi::node_cdata) text += part.value();
  if (text.find_first_of("\n\r") == std::string::npos) return text;
  std::ranges::replace(text, '\n', ' ');
  std::ranges::replace(text, '\r', ' ');
  std::string words;
  for (const std::string_view word : base::split_words(text)) {
    if (!words.empty()) words += ' ';
    words += word;
  }
  return words;
}

}  // namespace formats
