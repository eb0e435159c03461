#include <benchmark/benchmark.h>

#include "geodesy/datum_shift.h"
#include "tests/support/recording_front_end.h"

namespace {

void shift_a_million_positions(benchmark::State& state) {
  support::RecordingFrontEnd front_end;
  const geodesy::DatumTable datums;
  geodesy::DatumShift shift(datums, front_end);
  for (auto _ : state) {
    shift.set_datum_shift("WGS-84", "NAD27_CONUS");
    double sum = 0;
    for (int i = 0; i < 1000000; ++i) sum += shift.molodensky_shift({40 + i * 1e-5, -100 - i * 1e-5}).latitude;
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * 1000000);
}
BENCHMARK(shift_a_million_positions)->Unit(benchmark::kMillisecond);

}  // namespace
