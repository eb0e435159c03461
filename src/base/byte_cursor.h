// Bounds-checked little-endian reading and writing of byte records, the only way bytes from files and
// receivers are decoded here.
#pragma once

#include <bit>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace base {

using Bytes = std::vector<std::uint8_t>;

// Reads forward over bytes that somebody else owns and keeps alive. A read past the end yields zeros (or an
// empty text) and clears ok() for good: decode the whole record, then ask ok() once.
class ByteReader {
 public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::uint8_t u8() { return static_cast<std::uint8_t>(little_endian(1)); }
  std::uint16_t u16() { return static_cast<std::uint16_t>(little_endian(2)); }
  std::int16_t i16() { return static_cast<std::int16_t>(u16()); }
  std::uint32_t u32() { return static_cast<std::uint32_t>(little_endian(4)); }
  std::int32_t i32() { return static_cast<std::int32_t>(u32()); }
  float f32() { return std::bit_cast<float>(u32()); }
  double f64() { return std::bit_cast<double>(little_endian(8)); }

  // `size` bytes as they stand; empty when fewer are left.
  std::span<const std::uint8_t> bytes(std::size_t size) {
    if (!take(size)) return {};
    return bytes_.subspan(at_ - size, size);
  }

  // A field of `size` bytes padded with NULs or blanks: cut at the first NUL, trailing blanks removed.
  std::string text(std::size_t size);

  // A text up to its NUL, which is taken too. Without a NUL before the end the read fails.
  std::string string();

  void skip(std::size_t size) { take(size); }

  [[nodiscard]] std::size_t remaining() const { return bytes_.size() - at_; }
  [[nodiscard]] bool ok() const { return ok_; }

 private:
  bool take(std::size_t size) {
    if (size > remaining()) {
      ok_ = false;
      at_ = bytes_.size();
      return false;
    }
    at_ += size;
    return true;
  }
  std::uint64_t little_endian(std::size_t size) {
    const std::span<const std::uint8_t> field = bytes(size);
    std::uint64_t value = 0;
    for (std::size_t i = field.size(); i > 0; --i) value = value << 8 | field[i - 1];
    return value;
  }

  std::span<const std::uint8_t> bytes_;
  std::size_t at_ = 0;
  bool ok_ = true;
};

// Appends little-endian fields to a growing record.
class ByteWriter {
 public:
  ByteWriter& u8(std::uint8_t value) { return little_endian(value, 1); }
  ByteWriter& u16(std::uint16_t value) { return little_endian(value, 2); }
  ByteWriter& i16(std::int16_t value) { return u16(static_cast<std::uint16_t>(value)); }
  ByteWriter& u32(std::uint32_t value) { return little_endian(value, 4); }
  ByteWriter& i32(std::int32_t value) { return u32(static_cast<std::uint32_t>(value)); }
  ByteWriter& f32(float value) { return u32(std::bit_cast<std::uint32_t>(value)); }
  ByteWriter& f64(double value) { return little_endian(std::bit_cast<std::uint64_t>(value), 8); }
  ByteWriter& bytes(std::span<const std::uint8_t> values) {
    for (const std::uint8_t value : values) bytes_.push_back(value);
    return *this;
  }
  // Exactly `size` bytes: cut, or padded with blanks on the right.
  ByteWriter& text(std::string_view value, std::size_t size);
  // The text, cut to `longest` bytes, and a NUL.
  ByteWriter& string(std::string_view value, std::size_t longest);

  [[nodiscard]] const Bytes& result() const { return bytes_; }

 private:
  ByteWriter& little_endian(std::uint64_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    return *this;
  }

  Bytes bytes_;
};

}  // namespace base
