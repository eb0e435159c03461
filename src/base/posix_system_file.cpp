#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "base/system_file.h"

namespace base {
namespace {

std::string words_of(int error) { return reason_of(std::error_code(error, std::generic_category())); }

}  // namespace

bool create_new_file(const std::filesystem::path& path, std::string& reason) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (file < 0) {
    if (errno != EEXIST) reason = words_of(errno);
    return false;
  }
  (void)::close(file);
  return true;
}

std::string flush_to_disk(const std::filesystem::path& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (file < 0) return words_of(errno);
  const int error = ::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP ? 0 : errno;
  (void)::close(file);
  return error == 0 ? std::string() : words_of(error);
}

std::string reason_of(const std::error_code& error) { return error.message(); }

std::filesystem::path path_from_text(std::string_view text) { return text; }

}  // namespace base
