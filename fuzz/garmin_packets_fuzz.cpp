// Bytes from a line go through the packet assembler; what comes out intact must be framed as it came in.
#include <cstdlib>

#include "garmin/packet.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  garmin::PacketAssembler assembler;
  assembler.start();
  for (const std::uint8_t byte : std::span(data, size)) {
    const auto state = assembler.feed(byte);
    if (state == garmin::PacketAssembler::State::NeedsMore) continue;
    const base::Bytes packet = assembler.packet();
    if (packet.size() > garmin::kLongestPacket) std::abort();
    assembler.start();
    if (state == garmin::PacketAssembler::State::TooLong || !garmin::is_intact(packet)) continue;
    const auto content = garmin::packet_data(packet);
    if (content.size() + 6 != packet.size()) std::abort();
    base::ByteWriter message;
    message.u8(garmin::packet_id(packet)).u8(packet[2]).bytes(content);  // the size byte may be wrong
    garmin::PacketAssembler again;
    again.start();
    for (const std::uint8_t framed : garmin::frame_message(message.result())) (void)again.feed(framed);
    if (again.packet() != packet) std::abort();
  }
  return 0;
}
