#include <benchmark/benchmark.h>

#include <string>

#include "store/item_store.h"
#include "tests/support/recording_front_end.h"

namespace {

// The cost of one insertion must not grow with what is already there.
void insert_waypoints(benchmark::State& state) {
  store::Settings settings;
  settings.HandleReadDups = store::Duplicates::Replace;
  support::RecordingFrontEnd front_end;
  std::vector<std::string> idents;
  for (int i = 0; i < state.range(0); ++i) idents.push_back("WAYPOINT" + std::to_string(i));
  for (auto _ : state) {
    store::ItemStore items(settings, front_end);
    for (const std::string& ident : idents) {
      items.start_item();
      items.CurrentItem.ident = ident;
      items.CurrentItem.position = {47.5, 11.25};
      if (items.push_waypoint(0) != 0) state.SkipWithError("refused");
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(insert_waypoints)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
