// The data of one packet through every record format: what is decoded must be possible, and encoded again it must say
// the same.
#include <cmath>
#include <cstdlib>

#include "garmin/almanac_records.h"
#include "garmin/route_records.h"
#include "garmin/track_records.h"
#include "garmin/waypoint_records.h"

namespace {

using Data = std::span<const std::uint8_t>;

template <typename Record>
void try_formats(std::span<const garmin::FormatOf<Record>> formats, const Record& blank, Data data) {
  const store::Settings settings;
  for (const auto& format : formats) {
    Record record = blank;
    if (!garmin::decode_record(formats, format.number, "fuzzed", data, record)) continue;
    const auto encoded = garmin::encode_record(formats, format.number, record, settings);
    if (!encoded || encoded->size() > garmin::kLongestRecord) std::abort();
    Record again = blank;
    if (!garmin::decode_record(formats, format.number, "fuzzed", Data(*encoded), again)) std::abort();
    // What the record has no room for, or receivers do not take, may go on the first way, but on no later one.
    if (garmin::encode_record(formats, format.number, again, settings) != encoded) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const Data data(bytes, size);
  const store::ItemRecord item = store::blank_item();
  try_formats(garmin::kWaypointFormats, item, data);
  try_formats(garmin::kProximityFormats, item, data);
  try_formats(garmin::kRouteLinkFormats, item, data);
  try_formats(garmin::kTrackPointFormats, item, data);
  try_formats(garmin::kTrackHeaderFormats, item, data);
  try_formats(garmin::kRouteHeaderFormats, garmin::RouteHeader{}, data);
  try_formats(garmin::kAlmanacFormats, garmin::SatelliteRecord{}, data);
  return 0;
}
