#include <fcntl.h>
#include <unistd.h>

#include "base/disk_flush.h"

namespace base {

void flush_to_disk(const std::filesystem::path& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (file < 0) return;
  (void)::fsync(file);
  (void)::close(file);
}

}  // namespace base
