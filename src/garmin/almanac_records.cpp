#include "garmin/almanac_records.h"

#include <array>

namespace garmin {
namespace {

using store::AlmanacEntry;

// The floating point numbers behind the week, in their order.
constexpr std::array kOrbit{&AlmanacEntry::time_of_applicability,
                            &AlmanacEntry::af0,
                            &AlmanacEntry::af1,
                            &AlmanacEntry::eccentricity,
                            &AlmanacEntry::sqrt_semi_major_axis,
                            &AlmanacEntry::mean_anomaly,
                            &AlmanacEntry::argument_of_perigee,
                            &AlmanacEntry::right_ascension,
                            &AlmanacEntry::rate_of_right_ascension,
                            &AlmanacEntry::inclination};

template <bool has_health>
bool decode(base::ByteReader& in, SatelliteRecord& satellite) {
  AlmanacEntry entry;
  entry.week = in.i16();
  for (float AlmanacEntry::*const element : kOrbit) entry.*element = in.f32();
  if (has_health) entry.health = in.u8();
  satellite = entry.week < 0 ? std::nullopt : SatelliteRecord(entry);
  return true;
}

template <bool has_health>
bool encode(base::ByteWriter& out, const SatelliteRecord& satellite, const store::Settings&) {
  AlmanacEntry unknown;
  unknown.week = -1;
  const AlmanacEntry entry = satellite.value_or(unknown);
  out.i16(entry.week);
  for (float AlmanacEntry::*const element : kOrbit) out.f32(entry.*element);
  if (has_health) out.u8(entry.health.value_or(0));
  return true;
}

constexpr std::array kFormats{
    AlmanacFormat{500, 42, 42, {}, decode<false>, encode<false>},
    AlmanacFormat{501, 43, 43, {}, decode<true>, encode<true>},
};

}  // namespace

constinit const std::span<const AlmanacFormat> kAlmanacFormats = kFormats;

}  // namespace garmin
