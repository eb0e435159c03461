#include <fcntl.h>
#include <unistd.h>

#include "ui/console/standard_streams.h"

namespace ui::console {

struct StandardStreams::Replacements {};

StandardStreams::StandardStreams() {
  int descriptor = 0;
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) descriptor = open("/dev/null", O_RDWR);
  if (descriptor > STDERR_FILENO) close(descriptor);
}

StandardStreams::~StandardStreams() = default;

}  // namespace ui::console
