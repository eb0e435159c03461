#include "base/safe_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <system_error>

namespace base {
namespace {

namespace fs = std::filesystem;

std::string system_reason(int error) {
  return error == 0 ? "the system gives no reason" : std::generic_category().message(error);
}

// Empty on success. A short write shows only at the flush or the close when the disk is full.
std::string write_all(const fs::path& path, std::string_view contents) {
  errno = 0;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (file) file.write(contents.data(), static_cast<std::streamsize>(contents.size()));
  if (file) file.flush();
  if (file) file.close();
  return file ? std::string() : system_reason(errno);
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

std::string save_file(const fs::path& path, std::string_view contents) {
  std::error_code error;
  // A link stays a link: what it points to is replaced.
  fs::path target = fs::weakly_canonical(path, error);
  if (error || target.empty()) target = path;
  const fs::file_status status = fs::status(target, error);
  if (fs::is_directory(status)) return "it is a folder";
  if (fs::exists(status) && !fs::is_regular_file(status)) return write_all(target, contents);
  // A file that may not be written stays, though its folder would let it be replaced.
  if (fs::exists(status)) {
    errno = 0;
    const std::ofstream probe(target, std::ios::binary | std::ios::app);
    if (!probe) return system_reason(errno);
  }
  fs::path temporary = target;
  temporary += ".new~";
  std::string reason = write_all(temporary, contents);
  if (reason.empty() && fs::exists(status)) fs::permissions(temporary, status.permissions(), error);
  if (reason.empty()) {
    fs::rename(temporary, target, error);
    if (error) reason = error.message();
  }
  if (!reason.empty()) fs::remove(temporary, error);
  return reason;
}

bool load_file(const fs::path& path, std::string& contents, std::string& reason) {
  std::error_code error;
  if (fs::is_directory(path, error)) {
    reason = "it is a folder";
    return false;
  }
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    reason = system_reason(errno);
    return false;
  }
  contents.clear();
  constexpr std::size_t kBlock = std::size_t{1} << 20;
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
