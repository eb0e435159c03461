// XML documents as files hold them: in many an encoding, cut short, or with something behind them.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace formats {

class XmlDocument {
 public:
  // The contents of a file, which must outlive the document. References such as &amp; stay as they are in the texts:
  // see text_of and attribute_of.
  explicit XmlDocument(std::string_view contents);

  // Why the contents are not one whole document and nothing else, with the line where that is known; empty when they
  // are.
  [[nodiscard]] const std::string& fault() const { return fault_; }
  [[nodiscard]] pugi::xml_node root() const { return document_.document_element(); }
  // The encoding that the document declares, where it was taken for Latin-1 because nothing here reads it; else empty.
  [[nodiscard]] const std::string& unread_encoding() const { return unread_encoding_; }
  // From 1; 0 where nobody knows.
  [[nodiscard]] int line_of(pugi::xml_node node) const { return line_at(node.offset_debug()); }

 private:
  [[nodiscard]] int line_at(std::ptrdiff_t offset) const;
  void find_fault(const pugi::xml_parse_result& result);

  std::string_view contents_;
  pugi::xml_document document_;
  pugi::xml_encoding encoding_ = pugi::encoding_auto;
  std::string fault_, unread_encoding_;
};

}  // namespace formats
