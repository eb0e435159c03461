#include "formats/xml_document.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace formats {
namespace {

// Fragments too, since the parser drops text beside the root of what it takes for a document.
constexpr unsigned kParsing = pugi::parse_cdata | pugi::parse_eol | pugi::parse_wconv_attribute |
                              pugi::parse_ws_pcdata_single | pugi::parse_fragment;

// A file whose bytes tell nothing else and that declares one of these is UTF-8.
constexpr std::array<std::string_view, 10> kUnicodeNames{"utf-8",    "utf8",     "us-ascii", "ascii",    "utf-16",
                                                         "utf-16le", "utf-16be", "utf-32",   "utf-32le", "utf-32be"};
constexpr std::array<std::string_view, 4> kLatin1Names{"iso-8859-1", "latin1", "windows-1252", "cp1252"};

bool is_one_of(std::string_view name, const auto& names) {
  return std::ranges::any_of(names, [name](std::string_view known) { return base::equal_ignoring_case(name, known); });
}

// The encoding that the document declares, in bytes that are ASCII; empty when it declares none.
std::string_view declared_encoding(std::string_view contents) {
  contents.remove_prefix(std::min(contents.find_first_not_of(" \t\r\n"), contents.size()));
  if (!contents.starts_with("<?xml")) return {};
  const std::string_view declaration = contents.substr(0, contents.find("?>"));
  const std::size_t quote = declaration.find_first_of("\"'", declaration.find("encoding"));
  if (quote == std::string_view::npos) return {};
  constexpr std::string_view kLettersOfNames = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";
  const std::string_view name = declaration.substr(quote + 1);
  return name.substr(0, name.find_first_not_of(kLettersOfNames));
}

// The parser ends at a character 0: true when there is more than such characters behind it.
bool goes_on_behind_zero(std::string_view contents, pugi::xml_encoding encoding) {
  const bool is_utf16 = encoding == pugi::encoding_utf16_le || encoding == pugi::encoding_utf16_be;
  const bool is_utf32 = encoding == pugi::encoding_utf32_le || encoding == pugi::encoding_utf32_be;
  const std::size_t size = is_utf16 ? 2 : is_utf32 ? 4 : 1;
  bool has_zero = false;
  for (std::size_t i = 0; i + size <= contents.size(); i += size) {
    const bool is_zero = contents.substr(i, size).find_first_not_of('\0') == std::string_view::npos;
    if (has_zero && !is_zero) return true;
    has_zero = is_zero;
  }
  return false;
}

}  // namespace

XmlDocument::XmlDocument(std::string_view contents) : contents_(contents) {
  const std::string_view declared = declared_encoding(contents);
  const bool is_latin1 = is_one_of(declared, kLatin1Names);
  if (!declared.empty() && !is_latin1 && !is_one_of(declared, kUnicodeNames)) unread_encoding_ = declared;
  const bool as_latin1 = is_latin1 || !unread_encoding_.empty();
  const pugi::xml_parse_result result = document_.load_buffer(contents.data(), contents.size(), kParsing,
                                                              as_latin1 ? pugi::encoding_latin1 : pugi::encoding_auto);
  encoding_ = result.encoding;
  find_fault(result);
}

int XmlDocument::line_at(std::ptrdiff_t offset) const {
  // In other encodings the parser counts in bytes that the file does not have.
  if (encoding_ != pugi::encoding_utf8 || offset < 0) return 0;
  return static_cast<int>(std::ranges::count(contents_.substr(0, static_cast<std::size_t>(offset)), '\n')) + 1;
}

void XmlDocument::find_fault(const pugi::xml_parse_result& result) {
  const auto set_fault = [this](int line, std::string_view what) {
    fault_ = (line == 0 ? "" : "line " + std::to_string(line) + ": ") + std::string(what);
  };
  if (!result) return set_fault(line_at(result.offset), result.description());
  for (const pugi::xml_node node : document_.children()) {
    if (node.type() != pugi::node_element) return set_fault(0, "text outside the document");
    if (node != root()) return set_fault(line_of(node), "more than one document");
  }
  if (!root()) return set_fault(0, "no element");
  if (goes_on_behind_zero(contents_, encoding_)) set_fault(0, "text outside the document");
}

}  // namespace formats
