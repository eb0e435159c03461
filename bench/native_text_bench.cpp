#include <benchmark/benchmark.h>

#include "geodesy/datum_shift.h"
#include "store/item_store.h"
#include "tests/support/recording_front_end.h"
#include "textfile/text_reader.h"
#include "textfile/text_writer.h"

namespace {

constexpr int kItems = 100000;

struct Bench {
  store::Settings settings;
  support::RecordingFrontEnd front_end;
  geodesy::DatumTable datums;
  geodesy::DatumShift shift{datums, front_end};
  store::ItemStore items{settings, front_end};

  void fill(bool tracks) {
    for (int i = 0; i < kItems; ++i) {
      items.start_item();
      items.CurrentItem.position = {45 + i * 1e-5, -7 - i * 1e-5};
      items.CurrentItem.time = {static_cast<std::uint32_t>(800000000 + i * 5)};
      items.CurrentItem.altitude = static_cast<float>(i % 3000);
      items.CurrentItem.ident = tracks ? "" : "WPT" + std::to_string(i);
      items.CurrentItem.comment = tracks ? "" : "A COMMENT";
      items.CurrentItem.symbol = 18;
      items.CurrentItem.waypoint_class = 0;
      (void)(tracks ? items.push_track() : items.push_waypoint(0));
    }
  }
  std::string write() {
    std::string text;
    {
      base::TextOutput out([&text](std::string_view block) { text += block; });
      textfile::TextWriter(items, shift, front_end).write({}, out);
    }
    return text;
  }
};

void write_text(benchmark::State& state) {
  Bench bench;
  bench.fill(state.range(0) != 0);
  for (auto _ : state) benchmark::DoNotOptimize(bench.write());
  state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(write_text)->ArgName("tracks")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void read_text(benchmark::State& state) {
  Bench bench;
  bench.fill(state.range(0) != 0);
  const std::string text = bench.write();
  for (auto _ : state) {
    bench.items.clear_all();
    textfile::TextReader reader(bench.items, bench.shift, bench.datums, bench.settings, bench.front_end, {});
    base::TextInput input(text);
    reader.read(input, "bench.txt");
    if (bench.items.waypoint_count() + bench.items.track_point_count() != kItems)
      state.SkipWithError("items were not read");
  }
  state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(read_text)->ArgName("tracks")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
