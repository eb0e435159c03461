#include <windows.h>

#include <algorithm>
#include <iostream>
#include <streambuf>
#include <string>
#include <string_view>

#include "base/safe_file.h"
#include "base/win32_text.h"
#include "ui/console/standard_streams.h"

namespace ui::console {
namespace {

// How many bytes at the end begin a character whose other bytes have not come yet.
std::size_t unfinished_bytes(std::string_view utf8_text) {
  for (std::size_t count = 1; count <= std::min<std::size_t>(utf8_text.size(), 3); ++count) {
    const auto byte = static_cast<unsigned char>(utf8_text[utf8_text.size() - count]);
    if ((byte & 0xC0) == 0x80) continue;  // neither a letter of ASCII nor the first byte of another character
    const std::size_t length = byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    return length > count ? count : 0;
  }
  return 0;
}

class StreamBuffer : public std::streambuf {
 public:
  explicit StreamBuffer(DWORD id) : handle_(GetStdHandle(id)) {
    DWORD mode = 0;
    is_console_ = GetConsoleMode(handle_, &mode) != 0;
    const UINT console_code_page = GetConsoleOutputCP();  // 0 without a console
    if (GetFileType(handle_) == FILE_TYPE_PIPE && console_code_page != 0) code_page_ = console_code_page;
  }

 protected:
  int_type overflow(int_type c) override {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    const char byte = traits_type::to_char_type(c);
    return xsputn(&byte, 1) == 1 ? c : traits_type::eof();
  }

  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    waiting_.append(bytes, static_cast<std::size_t>(count));
    return waiting_.size() < kBlock || write_waiting() ? count : 0;
  }

  int sync() override { return write_waiting() ? 0 : -1; }

 private:
  static constexpr std::size_t kBlock = std::size_t{1} << 14;

  bool write_waiting() {
    const std::size_t whole = waiting_.size() - unfinished_bytes(waiting_);
    const std::string text = base::with_line_ends(std::string_view(waiting_).substr(0, whole));
    waiting_.erase(0, whole);
    if (handle_ == nullptr || handle_ == INVALID_HANDLE_VALUE) return true;  // nobody wants it
    if (is_console_) return write_console(base::wide_from_utf8(text));
    return write_bytes(code_page_ == CP_UTF8 ? text : base::narrow_from_wide(base::wide_from_utf8(text), code_page_));
  }

  bool write_console(std::wstring_view text) const {
    DWORD written = 0;
    for (; !text.empty(); text.remove_prefix(written))
      if (WriteConsoleW(handle_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) == 0) return false;
    return true;
  }

  bool write_bytes(std::string_view bytes) const {
    DWORD written = 0;
    for (; !bytes.empty(); bytes.remove_prefix(written))
      if (WriteFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) == 0) return false;
    return true;
  }

  HANDLE handle_;  // the process's own
  bool is_console_ = false;
  UINT code_page_ = CP_UTF8;
  std::string waiting_;
};

}  // namespace

struct StandardStreams::Replacements {
  StreamBuffer output{STD_OUTPUT_HANDLE};
  StreamBuffer error{STD_ERROR_HANDLE};
  std::streambuf* old_output = std::cout.rdbuf(&output);
  std::streambuf* old_error = std::cerr.rdbuf(&error);
};

StandardStreams::StandardStreams() : replacements_(std::make_unique<Replacements>()) {}

StandardStreams::~StandardStreams() {
  std::cout.flush();
  std::cerr.flush();
  std::cout.rdbuf(replacements_->old_output);
  std::cerr.rdbuf(replacements_->old_error);
}

}  // namespace ui::console
