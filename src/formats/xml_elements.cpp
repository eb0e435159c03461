#include "formats/xml_elements.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"

namespace formats {
namespace {

// The prefix that an attribute declares a namespace for; empty for the one of names without prefix.
std::optional<std::string_view> declared_prefix(pugi::xml_attribute attribute) {
  constexpr std::string_view kDeclaration = "xmlns";
  const std::string_view name = attribute.name();
  if (!name.starts_with(kDeclaration)) return std::nullopt;
  if (name.size() == kDeclaration.size()) return std::string_view();
  if (name[kDeclaration.size()] != ':') return std::nullopt;
  return name.substr(kDeclaration.size() + 1);
}

// Those that XML allows. Characters beyond 16 bits are none of Latin-1, so nobody misses them.
bool is_character(long long code) {
  return code == '\t' || code == '\n' || code == '\r' || (code >= ' ' && code < 0xD800) ||
         (code >= 0xE000 && code < 0xFFFE);
}

// The UTF-8 of what stands between & and ; where it is a reference.
std::optional<std::string> meaning_of(std::string_view reference) {
  constexpr std::array<std::pair<std::string_view, char>, 5> kEntities{
      {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
  for (const auto& [name, character] : kEntities)
    if (reference == name) return std::string(1, character);
  if (!reference.starts_with('#')) return std::nullopt;
  const bool is_hexadecimal = reference.starts_with("#x");
  const std::optional<long long> code =
      base::parse_integer(reference.substr(is_hexadecimal ? 2 : 1), is_hexadecimal ? 16 : 10);
  if (!code) return std::nullopt;
  return pugi::as_utf8(std::wstring(1, static_cast<wchar_t>(is_character(*code) ? *code : 0xFFFD)));
}

std::string without_references(std::string_view text) {
  constexpr std::size_t kLongestReference = 32;
  std::string result;
  for (;;) {
    const std::size_t start = text.find('&');
    result += text.substr(0, start);
    if (start == std::string_view::npos) return result;
    text.remove_prefix(start + 1);
    const std::size_t end = text.substr(0, kLongestReference).find(';');
    std::optional<std::string> meaning;
    if (end != std::string_view::npos) meaning = meaning_of(text.substr(0, end));
    result += meaning.value_or("&");
    if (meaning) text.remove_prefix(end + 1);
  }
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
  return std::ranges::any_of(element.attributes(),
                             [](pugi::xml_attribute attribute) { return declared_prefix(attribute).has_value(); });
}

std::string_view Namespaces::of(pugi::xml_node element) {
  const std::string_view prefix = prefix_of(element);
  for (pugi::xml_node holder = element; holder; holder = holder.parent())
    if (const std::optional<std::string_view> name_space = declared_in(holder, prefix)) return *name_space;
  return {};
}

std::optional<std::string_view> Namespaces::declared_in(pugi::xml_node element, std::string_view prefix) {
  constexpr int kFewAttributes = 8;
  int seen = 0;
  for (const pugi::xml_attribute attribute : element.attributes()) {
    if (++seen > kFewAttributes) break;
    if (declared_prefix(attribute) == prefix) return attribute.value();
  }
  if (seen <= kFewAttributes) return std::nullopt;
  const auto [entry, is_new] = declarations_.try_emplace(element);
  auto& declarations = entry->second;
  if (is_new)
    for (const pugi::xml_attribute attribute : element.attributes())
      if (const std::optional<std::string_view> declared = declared_prefix(attribute))
        declarations.emplace(*declared, attribute.value());
  const auto found = declarations.find(prefix);
  return found == declarations.end() ? std::nullopt : std::optional(found->second);
}

std::string text_of(pugi::xml_node element) {
  std::string text;
  for (const pugi::xml_node part : element.children()) {
    if (part.type() == pugi::node_pcdata) text += without_references(part.value());
    if (part.type() == pugi::node_cdata) text += part.value();
  }
  if (text.find_first_of("\t\n\r") == std::string::npos) return text;
  std::ranges::replace(text, '\n', ' ');
  std::ranges::replace(text, '\r', ' ');
  std::string words;
  for (const std::string_view word : base::split_words(text)) {
    if (!words.empty()) words += ' ';
    words += word;
  }
  return words;
}

std::string value_of(pugi::xml_node element) { return std::string(base::trim_blanks(text_of(element))); }

std::string attribute_of(pugi::xml_node element, const char* name) {
  return without_references(element.attribute(name).value());
}

}  // namespace formats
