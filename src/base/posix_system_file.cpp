#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "base/system_file.h"

namespace base {
namespace {

std::string reason_of(int error) { return std::generic_category().message(error); }

}  // namespace

bool create_new_file(const std::filesystem::path& path, std::string& reason) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (file < 0) {
    if (errno != EEXIST) reason = reason_of(errno);
    return false;
  }
  (void)::close(file);
  return true;
}

std::string flush_to_disk(const std::filesystem::path& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (file < 0) return reason_of(errno);
  const int error = ::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP ? 0 : errno;
  (void)::close(file);
  return error == 0 ? std::string() : reason_of(error);
}

std::string move_over(const std::filesystem::path& from, const std::filesystem::path& to) {
  return ::rename(from.c_str(), to.c_str()) == 0 ? std::string() : reason_of(errno);
}

std::filesystem::path path_from_text(std::string_view text) { return text; }

}  // namespace base
