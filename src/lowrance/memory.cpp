#include "lowrance/memory.h"

#include <algorithm>

#include "base/text.h"

namespace lowrance {

base::Bytes read_memory_block(const Connection& connection, std::uint32_t address, std::size_t size,
                              std::string_view label) {
  const auto count = static_cast<std::uint16_t>(std::min(size, kMemoryBlock));
  const base::Bytes request = base::ByteWriter().u32(address).u16(count).u8(0).result();
  std::optional<base::Bytes> answer = connection.link.ask(Command::ReadMemory, request, label);
  if (!answer || answer->size() != std::size_t{count} + 1) return {};
  answer->erase(answer->begin());
  return *std::move(answer);
}

base::Bytes read_memory(const Connection& connection, std::uint32_t address, std::size_t size, std::string_view what) {
  const std::string name(what);
  const std::size_t within = static_cast<std::size_t>(std::min<std::uint64_t>(size, kMemorySize - address));
  base::Bytes bytes;
  const std::string abort_text = "Operator Abort in Memory read for " + name;
  connection.front_end.set_progress_range(memory_blocks(within));
  while (bytes.size() < within) {
    if (connection.must_end(abort_text)) break;
    const std::size_t count = std::min(kMemoryBlock, within - bytes.size());
    const base::Bytes block = read_memory_block(connection, address + static_cast<std::uint32_t>(bytes.size()), count,
                                                count == kMemoryBlock ? "Reading Memory1" : "Reading Memory2");
    if (block.empty()) {                      // what follows could not be placed
      (void)connection.must_end(abort_text);  // ESC may have ended the wait
      break;
    }
    bytes.insert(bytes.end(), block.begin(), block.end());
    connection.front_end.write_progress(
        4, base::format_text("%05d Bytes of %s Read", static_cast<int>(bytes.size()), name.c_str()));
    connection.front_end.step_progress();
  }
  connection.front_end.set_progress_range(0);
  return bytes;
}

}  // namespace lowrance
