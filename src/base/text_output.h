// A text on its way out: collected in blocks and handed on, so that no file stands in memory as a whole.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace base {

class TextOutput {
 public:
  using Taker = std::function<void(std::string_view)>;

  explicit TextOutput(Taker taker) : taker_(std::move(taker)) { block_.reserve(kBlock + kRoom); }
  TextOutput(const TextOutput&) = delete;
  TextOutput& operator=(const TextOutput&) = delete;
  ~TextOutput() { flush(); }

  TextOutput& operator+=(std::string_view text) {
    block_ += text;
    if (block_.size() >= kBlock) flush();
    return *this;
  }
  TextOutput& operator+=(char c) { return *this += std::string_view(&c, 1); }

  // Hands on what has been collected; done at the end in any case.
  void flush() {
    if (!block_.empty()) taker_(block_);
    block_.clear();
  }

 private:
  static constexpr std::size_t kBlock = std::size_t{1} << 16;
  static constexpr std::size_t kRoom = 1024;

  Taker taker_;
  std::string block_;
};

}  // namespace base
