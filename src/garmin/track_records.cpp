#include "garmin/track_records.h"

#include <array>

namespace garmin {
namespace {

using base::ByteReader;
using store::ItemRecord;

bool read_place_and_time(ByteReader& in, ItemRecord& item) {
  const bool has_position = read_position(in, item.position);
  item.time = read_time(in);
  return has_position;
}

void read_segment_flag(ByteReader& in, ItemRecord& item) {
  item.segment_flag = in.u8() != 0 ? store::kStartsSegment : store::kContinues;
}

bool decode_d300(ByteReader& in, ItemRecord& item) {
  const bool has_position = read_place_and_time(in, item);
  read_segment_flag(in, item);
  return has_position;
}

template <std::size_t skipped_after_depth>
bool decode_with_altitude(ByteReader& in, ItemRecord& item) {
  const bool has_position = read_place_and_time(in, item);
  item.altitude = read_metres(in);
  item.depth = read_metres(in);
  in.skip(skipped_after_depth);
  read_segment_flag(in, item);
  return has_position;
}

bool decode_d310(ByteReader& in, ItemRecord& item) {
  item.segment_flag = store::kStartsNamedTrack;
  in.skip(1);  // shown on the receiver's map
  const std::uint8_t colour = in.u8();
  // "Transparent" has no name in the table and counts as the default, like every undefined value.
  item.colour = std::min(colour, store::kDefaultColour);
  item.ident = in.string();
  return true;
}

bool decode_d311(ByteReader& in, ItemRecord& item) {
  item.segment_flag = store::kStartsNamedTrack;
  item.colour = store::kDefaultColour;
  item.ident = "Track " + std::to_string(in.u16());
  return true;
}

constexpr std::size_t kTemperatureSize = 4;
constexpr std::array kPoints{
    RecordFormat{300, 13, 13, decode_d300},
    RecordFormat{301, 21, 21, decode_with_altitude<0>},
    RecordFormat{302, 25, 25, decode_with_altitude<kTemperatureSize>},
};
constexpr std::array kHeaders{
    RecordFormat{310, 3, kLongestRecord, decode_d310},
    RecordFormat{311, 2, 2, decode_d311},
    RecordFormat{312, 3, kLongestRecord, decode_d310},
};

}  // namespace

constinit const std::span<const RecordFormat> kTrackPointFormats = kPoints;
constinit const std::span<const RecordFormat> kTrackHeaderFormats = kHeaders;

}  // namespace garmin
