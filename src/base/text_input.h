// A text on its way in: lines of a file or of memory, holding no more of a file than a block of it.
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <string_view>

namespace base {

class TextInput {
 public:
  static constexpr std::size_t kLongestLine = 65535;  // bytes; far beyond any line that a program writes

  // Memory that outlives the input...
  explicit TextInput(std::string_view memory) : size_(memory.size()), window_(memory) {}
  // ... or a stream that does, of `size` bytes; 0 where nobody knows.
  TextInput(std::istream& stream, std::uint64_t size) : stream_(&stream), size_(size) {}
  TextInput(const TextInput&) = delete;
  TextInput& operator=(const TextInput&) = delete;

  [[nodiscard]] bool at_end() { return !fill(1); }
  // The next line without its end (LF, CR LF or CR); a longer one comes in pieces of `longest` bytes (at most
  // kLongestLine), the rest as a line of its own. Valid until the next call.
  std::string_view next_line(std::size_t longest = kLongestLine);
  // What comes next without taking it: at most `size` bytes (at most kLongestLine), fewer only at the end.
  // Valid until the next call.
  [[nodiscard]] std::string_view peek(std::size_t size);
  [[nodiscard]] bool next_begins_with(char c) { return fill(1) && window_.front() == c; }
  // All that has not been taken, which is taken now. Valid as long as the input.
  std::string_view rest();
  // Takes empty lines and lines of blanks, and a UTF-8 byte order mark where the text begins with one. The number of
  // lines taken.
  int skip_empty_lines();

  // The system failed to read on, which otherwise looks like the end.
  [[nodiscard]] bool failed() const { return failed_; }
  // Somebody has asked to stop the reading, so that what was read may not be all.
  void abort() { aborted_ = true; }
  [[nodiscard]] bool aborted() const { return aborted_; }

  [[nodiscard]] std::uint64_t size() const { return size_; }    // bytes; 0 when not known
  [[nodiscard]] std::uint64_t taken() const { return taken_; }  // bytes

 private:
  // True when that many bytes stand in the window.
  bool fill(std::size_t size) { return window_.size() >= size || (stream_ != nullptr && read_until(size)); }
  bool read_until(std::size_t size);
  void read_block();
  void take(std::size_t size);

  std::istream* stream_ = nullptr;  // none, or not any longer: all there is stands in the window
  std::uint64_t size_ = 0;
  std::uint64_t taken_ = 0;
  bool failed_ = false;
  bool aborted_ = false;
  std::string buffer_;       // of a stream
  std::string_view window_;  // what has been read and not taken
};

}  // namespace base
