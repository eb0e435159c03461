// What all fuzz targets share: one input goes through one reader into an empty store, and what is stored then
// must be possible. Built with libFuzzer and both sanitizers; fuzz/run runs the targets.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/clock.h"
#include "base/quiet_front_end.h"
#include "base/text_input.h"
#include "geodesy/datum_shift.h"
#include "geodesy/datum_table.h"
#include "store/command_options.h"
#include "store/file_context.h"
#include "store/item_store.h"

namespace fuzz {

class SilentFrontEnd : public base::QuietFrontEnd {
 public:
  void write_line(int line, std::string_view) override {
    if (line < 1 || line > 10) std::abort();
  }
};

class StoppedClock : public base::Clock {
 public:
  [[nodiscard]] std::chrono::microseconds monotonic() const override { return {}; }
  [[nodiscard]] std::int64_t unix_seconds() const override { return 1'000'000'000; }
  [[nodiscard]] int utc_offset_seconds() const override { return 0; }
  void pause(std::chrono::microseconds) override {}
};

// A datum shift may carry a position a little beyond the pole or the date line.
inline void must_be_possible(const store::ItemRecord& item) {
  if (!std::isfinite(item.position.latitude) || std::abs(item.position.latitude) > 91) std::abort();
  if (!std::isfinite(item.position.longitude) || std::abs(item.position.longitude) > 361) std::abort();
  if (item.in_use != 1) std::abort();
}

using Reader = int (*)(const store::FileContext& context, base::TextInput& input, const std::string& file_name);

inline int run(Reader read, const std::uint8_t* data, std::size_t size) {
  SilentFrontEnd front_end;
  StoppedClock clock;
  store::Settings settings;
  geodesy::DatumTable datums;
  geodesy::DatumShift shift(datums, front_end);
  store::ItemStore items(settings, front_end);
  store::CommandOptions options(settings, front_end);
  const store::FileContext context{items,
                                   shift,
                                   datums,
                                   settings,
                                   front_end,
                                   clock,
                                   [&options](std::string_view line) { options.do_command(line); }};
  base::TextInput input(std::string_view(reinterpret_cast<const char*>(data), size));
  const int accepted = read(context, input, "fuzzed");
  // A file that is refused as a whole leaves nothing behind. (One of which no record counts may: a route point
  // whose route found no room is a waypoint all the same.)
  if (accepted < 0 && !items.empty()) std::abort();
  for (int i = 1; i <= items.waypoint_count(); ++i) must_be_possible(items.waypoint(i));
  for (int i = 1; i <= items.track_point_count(); ++i) must_be_possible(items.track_point(i));
  for (int i = 1; i <= items.event_count(); ++i) must_be_possible(items.event(i));
  for (int i = 1; i <= items.proximity_count(); ++i) must_be_possible(items.proximity(i));
  return 0;
}

}  // namespace fuzz

// One target: the whole of its source file.
#define PELORIX_FUZZ_READER(reader)                                                   \
  extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) { \
    return fuzz::run(reader, data, size);                                             \
  }
