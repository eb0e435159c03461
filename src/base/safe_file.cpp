#include "base/safe_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <system_error>

#include "base/system_file.h"

namespace base {
namespace {

namespace fs = std::filesystem;

std::string system_reason(int error) {
  return error == 0 ? "the system gives no reason" : std::generic_category().message(error);
}

}  // namespace

std::string with_line_ends(std::string_view text) {
  if (kLineEnd == "\n") return std::string(text);
  std::string result;
  result.reserve(text.size() + text.size() / 40);
  for (const char c : text) {
    if (c == '\n') {
      result += kLineEnd;
    } else {
      result += c;
    }
  }
  return result;
}

void SafeFile::note_failure(const std::string& reason) {
  if (reason_.empty()) reason_ = reason;
}

// A link stays a link: what it points to is replaced, or comes to be. Empty where links lead in a circle.
fs::path SafeFile::end_of_links(fs::path path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int i = 0; i < kMostLinks; ++i) {
    // Standard output under one of its names: whatever it has been redirected to, it is written to, not replaced.
    if (path == "/proc/self/fd/1" || !fs::is_symlink(path, error)) return path;
    const fs::path next = fs::read_symlink(path, error);
    if (error) return path;
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  return {};
}

std::string SafeFile::open(const fs::path& path) {
  std::error_code error;
  target_ = end_of_links(path);
  if (target_.empty()) return reason_ = "its links lead in a circle";
  if (target_ == "/proc/self/fd/1") {
    out_ = &std::cout;
    return {};
  }
  out_ = &file_;
  const fs::file_status status = fs::status(target_, error);
  if (fs::is_directory(status)) return reason_ = "it is a folder";
  errno = 0;
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    file_.open(target_, std::ios::binary | std::ios::app);
    return file_ ? std::string() : reason_ = system_reason(errno);
  }
  // A file that may not be written stays, though its folder would let it be replaced.
  if (fs::exists(status)) {
    const std::ofstream probe(target_, std::ios::binary | std::ios::app);
    if (!probe) return reason_ = system_reason(errno);
  }
  if (!create_temporary()) return reason_;
  errno = 0;
  file_.open(temporary_, std::ios::binary | std::ios::trunc);
  if (!file_) note_failure(system_reason(errno));
  if (fs::exists(status)) fs::permissions(temporary_, status.permissions(), error);
  return reason_;
}

// Under a name of its own, so that nothing that is there is overwritten, and two saves do not meet.
bool SafeFile::create_temporary() {
  constexpr int kMostNames = 1000;
  for (int i = 0; i < kMostNames; ++i) {
    fs::path path = target_.parent_path() / (".pelorix-" + std::to_string(i) + ".new~");
    if (create_new_file(path, reason_)) {
      temporary_ = std::move(path);
      return true;
    }
    if (!reason_.empty()) return false;
  }
  reason_ = "there are a thousand unfinished saves in its folder";
  return false;
}

void SafeFile::write(std::string_view bytes) {
  if (!reason_.empty()) return;
  errno = 0;
  if (!out_->write(bytes.data(), static_cast<std::streamsize>(bytes.size()))) note_failure(system_reason(errno));
}

// A short write shows only at the flush or the close when the disk is full.
std::string SafeFile::commit() {
  errno = 0;
  if (reason_.empty() && !out_->flush()) note_failure(system_reason(errno));
  if (out_ == &file_) {
    file_.close();
    if (!file_) note_failure(system_reason(errno));
  }
  if (!reason_.empty() || temporary_.empty()) return reason_;
  note_failure(flush_to_disk(temporary_));
  if (reason_.empty()) note_failure(move_over(temporary_, target_));
  if (reason_.empty()) temporary_.clear();
  return reason_;
}

SafeFile::~SafeFile() {
  if (temporary_.empty()) return;
  file_.close();
  std::error_code error;
  fs::remove(temporary_, error);
}

std::string save_file(const fs::path& path, std::string_view contents) {
  SafeFile file;
  std::string reason = file.open(path);
  if (!reason.empty()) return reason;
  file.write(contents);
  return file.commit();
}

bool open_file(const fs::path& path, std::ifstream& file, std::uint64_t& size, std::string& reason) {
  std::error_code error;
  if (fs::is_directory(path, error)) {
    reason = "it is a folder";
    return false;
  }
  errno = 0;
  file.open(path, std::ios::binary);
  if (!file) {
    reason = system_reason(errno);
    return false;
  }
  size = fs::is_regular_file(path, error) ? fs::file_size(path, error) : 0;
  if (error) size = 0;
  return true;
}

bool load_file(const fs::path& path, std::string& contents, std::string& reason) {
  std::ifstream file;
  std::uint64_t size = 0;
  if (!open_file(path, file, size, reason)) return false;
  contents.clear();
  errno = 0;
  constexpr std::size_t kBlock = std::size_t{1} << 16;
  const std::unique_ptr<char[]> block(new char[kBlock]);
  while (file.read(block.get(), kBlock) || file.gcount() > 0)
    contents.append(block.get(), static_cast<std::size_t>(file.gcount()));
  if (file.bad()) {
    reason = system_reason(errno);
    return false;
  }
  return true;
}

}  // namespace base
