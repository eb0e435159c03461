#include "base/byte_cursor.h"

#include <algorithm>

namespace base {

std::string ByteReader::text(std::size_t size) {
  const std::span<const std::uint8_t> field = bytes(size);
  std::string result(field.begin(), std::find(field.begin(), field.end(), std::uint8_t{0}));
  result.erase(result.find_last_not_of(' ') + 1);
  return result;
}

std::string ByteReader::string() {
  const std::span<const std::uint8_t> rest = bytes_.subspan(at_);
  const auto end = std::find(rest.begin(), rest.end(), std::uint8_t{0});
  if (end == rest.end()) {
    take(rest.size() + 1);
    return {};
  }
  std::string result(rest.begin(), end);
  take(result.size() + 1);
  return result;
}

ByteWriter& ByteWriter::text(std::string_view value, std::size_t size) {
  std::string field(value.substr(0, size));
  field.resize(size, ' ');
  bytes_.insert(bytes_.end(), field.begin(), field.end());
  return *this;
}

ByteWriter& ByteWriter::string(std::string_view value, std::size_t longest) {
  const std::string_view kept = value.substr(0, longest);
  bytes_.insert(bytes_.end(), kept.begin(), kept.end());
  return u8(0);
}

}  // namespace base
