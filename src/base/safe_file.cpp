#include "base/safe_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>

#include "base/disk_flush.h"

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

void SafeFile::note_failure(int error) {
  if (reason_.empty()) reason_ = system_reason(error);
}

std::string SafeFile::open(const fs::path& path) {
  std::error_code error;
  // A link stays a link: what it points to is replaced.
  target_ = fs::weakly_canonical(path, error);
  if (error || target_.empty()) target_ = path;
  const fs::file_status status = fs::status(target_, error);
  if (fs::is_directory(status)) return reason_ = "it is a folder";
  const bool is_special = fs::exists(status) && !fs::is_regular_file(status);
  // A file that may not be written stays, though its folder would let it be replaced.
  if (fs::exists(status) && !is_special) {
    errno = 0;
    const std::ofstream probe(target_, std::ios::binary | std::ios::app);
    if (!probe) return reason_ = system_reason(errno);
  }
  if (!is_special) {
    temporary_ = target_;
    temporary_ += ".new~";
  }
  errno = 0;
  file_.open(is_special ? target_ : temporary_, std::ios::binary | std::ios::trunc);
  if (!file_) {
    temporary_.clear();
    return reason_ = system_reason(errno);
  }
  if (fs::exists(status) && !is_special) fs::permissions(temporary_, status.permissions(), error);
  return {};
}

void SafeFile::write(std::string_view bytes) {
  if (!reason_.empty()) return;
  errno = 0;
  if (!file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()))) note_failure(errno);
}

// A short write shows only at the flush or the close when the disk is full.
std::string SafeFile::commit() {
  errno = 0;
  if (reason_.empty() && !file_.flush()) note_failure(errno);
  if (reason_.empty() && !temporary_.empty()) flush_to_disk(temporary_);
  file_.close();
  if (!file_) note_failure(errno);
  if (reason_.empty() && !temporary_.empty()) {
    std::error_code error;
    fs::rename(temporary_, target_, error);
    if (error) {
      reason_ = error.message();
    } else {
      temporary_.clear();
    }
  }
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
