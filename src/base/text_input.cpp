#include "base/text_input.h"

#include <algorithm>

namespace base {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 16;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

void TextInput::read_block() {
  const std::size_t held = buffer_.size();
  buffer_.resize(held + kBlock);
  stream_->read(buffer_.data() + held, static_cast<std::streamsize>(kBlock));
  buffer_.resize(held + static_cast<std::size_t>(stream_->gcount()));
  if (*stream_) return;
  failed_ = stream_->bad();
  stream_ = nullptr;
}

bool TextInput::read_until(std::size_t size) {
  buffer_.erase(0, buffer_.size() - window_.size());
  while (stream_ != nullptr && buffer_.size() < size) read_block();
  window_ = buffer_;
  return window_.size() >= size;
}

void TextInput::take(std::size_t size) {
  window_.remove_prefix(size);
  taken_ += size;
}

std::string_view TextInput::next_line(std::size_t longest) {
  // The longest line and its end stand in the window, so what is returned stays where it is.
  fill(longest + 2);
  std::string_view line = window_.substr(0, longest);
  line = line.substr(0, line.find('\n'));
  line = line.substr(0, line.find('\r'));
  take(line.size());
  if (window_.starts_with('\r')) take(1);
  if (window_.starts_with('\n')) take(1);
  return line;
}

std::string_view TextInput::peek(std::size_t size) {
  fill(size);
  return window_.substr(0, size);
}

std::string_view TextInput::rest() {
  if (stream_ != nullptr) {
    buffer_.erase(0, buffer_.size() - window_.size());
    while (stream_ != nullptr) read_block();
    window_ = buffer_;
  }
  const std::string_view all = window_;
  take(all.size());
  return all;
}

int TextInput::skip_empty_lines() {
  if (taken_ == 0 && peek(kByteOrderMark.size()) == kByteOrderMark) take(kByteOrderMark.size());
  int lines = 0;
  for (;; ++lines) {
    const std::string_view ahead = peek(kLongestLine);
    const std::size_t end = ahead.find_first_not_of(" \t");
    if (end == std::string_view::npos || (ahead[end] != '\n' && ahead[end] != '\r')) return lines;
    (void)next_line();
  }
}

}  // namespace base
