// A text of at most N bytes held in place, so that records stay plain values of a fixed size.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace base {

// Assigning a longer text keeps its first N bytes. The bytes are Latin-1 and may be any but NUL.
template <std::size_t N>
class FixedText {
  static_assert(N < 256);

 public:
  FixedText() = default;
  FixedText(std::string_view text) { *this = text; }  // NOLINT: a text is what it holds
  FixedText& operator=(std::string_view text) {
    text = text.substr(0, std::min(N, text.find('\0')));
    std::copy(text.begin(), text.end(), bytes_.begin());
    std::fill(bytes_.begin() + static_cast<std::ptrdiff_t>(text.size()), bytes_.end(), '\0');
    size_ = static_cast<std::uint8_t>(text.size());
    return *this;
  }

  static constexpr std::size_t longest() { return N; }
  [[nodiscard]] std::string_view view() const { return {bytes_.data(), size_}; }
  operator std::string_view() const { return view(); }  // NOLINT
  [[nodiscard]] bool empty() const { return size_ == 0; }
  [[nodiscard]] std::size_t size() const { return size_; }
  void replace(char old_byte, char new_byte) {
    std::replace(bytes_.begin(), bytes_.begin() + size_, old_byte, new_byte);
  }
  friend bool operator==(const FixedText& left, std::string_view right) { return left.view() == right; }
  friend bool operator==(const FixedText& left, const FixedText& right) { return left.view() == right.view(); }

 private:
  std::uint8_t size_ = 0;
  std::array<char, N> bytes_{};
};

}  // namespace base
