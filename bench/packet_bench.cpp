#include <benchmark/benchmark.h>

#include "garmin/packet.h"

namespace {

// A waypoint record with some bytes that need stuffing.
base::Bytes message() {
  base::Bytes bytes{35, 100};
  for (int i = 0; i < 100; ++i) bytes.push_back(static_cast<std::uint8_t>(i * 7));
  return bytes;
}

void frame_packets(benchmark::State& state) {
  const base::Bytes bytes = message();
  for (auto _ : state) benchmark::DoNotOptimize(garmin::frame_message(bytes));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(frame_packets);

void unframe_packets(benchmark::State& state) {
  const base::Bytes wire = garmin::frame_message(message());
  garmin::PacketAssembler assembler;
  for (auto _ : state) {
    assembler.start();
    for (const std::uint8_t byte : wire) assembler.feed(byte);
    if (!garmin::is_intact(assembler.packet())) state.SkipWithError("damaged");
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(unframe_packets);

}  // namespace
