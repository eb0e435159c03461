#include "garmin/track_records.h"

#include <array>
#include <limits>

#include "base/text.h"
#include "garmin/record_fields.h"

namespace garmin {
namespace {

using store::ItemRecord;

constexpr std::string_view kNumberedName = "Track ";

class TrackReading : public ItemReading {
 public:
  using ItemReading::ItemReading;

  void segment_flag() { item_.segment_flag = in_.u8() != 0 ? store::kStartsSegment : store::kContinues; }
  void starts_log() { item_.segment_flag = store::kStartsNamedTrack; }
  // "Transparent" has no name in the table and counts as the default, like every undefined value.
  void colour() { item_.colour = std::min(in_.u8(), store::kDefaultColour); }
  void number_for_a_name() {
    item_.colour = store::kDefaultColour;
    item_.ident = std::string(kNumberedName) + std::to_string(in_.u16());
  }
};

class TrackWriting : public ItemWriting {
 public:
  using ItemWriting::ItemWriting;

  void segment_flag() { out_.u8(item_.segment_flag == store::kContinues ? 0 : 1); }
  void starts_log() {}
  void colour() { out_.u8(item_.colour < store::kDefaultColour ? item_.colour : std::uint8_t{255}); }
  void number_for_a_name() {
    const std::string_view name = item_.ident;
    const bool is_numbered = name.starts_with(kNumberedName);
    const auto number = is_numbered ? base::parse_integer(name.substr(kNumberedName.size())) : std::nullopt;
    const bool fits = number && *number >= 0 && *number <= std::numeric_limits<std::uint16_t>::max();
    out_.u16(static_cast<std::uint16_t>(fits ? *number : item_.number));
  }
};

constexpr auto place_and_time = [](auto& fields) {
  fields.position();
  fields.time(0);
};

constexpr auto heights = [](auto& fields) {
  fields.metres(&ItemRecord::altitude);
  fields.metres(&ItemRecord::depth);
};

constexpr auto d300 = [](auto& fields) {
  place_and_time(fields);
  fields.segment_flag();
};

constexpr auto d301 = [](auto& fields) {
  place_and_time(fields);
  heights(fields);
  fields.segment_flag();
};

constexpr auto d302 = [](auto& fields) {
  place_and_time(fields);
  heights(fields);
  fields.not_kept_f32(kNotKnownToReceivers);  // temperature
  fields.segment_flag();
};

// D312 only adds the colour "transparent", which the store does not have.
constexpr auto d310 = [](auto& fields) {
  fields.starts_log();
  fields.not_kept_u8(1);  // shown on the receiver's map
  fields.colour();
  fields.ident();
};

constexpr auto d311 = [](auto& fields) {
  fields.starts_log();
  fields.number_for_a_name();
};

template <typename Layout>
constexpr RecordFormat row(std::uint16_t number, std::size_t shortest, std::size_t longest, NameRule name,
                           Layout layout) {
  return row_of<TrackReading, TrackWriting>(number, shortest, longest, name, layout);
}

constexpr NameRule kNameless{0, Letters::Capitals, false};
constexpr NameRule kLong{50, Letters::Ascii};

constexpr std::array kPoints{
    row(300, 13, 13, kNameless, d300),
    row(301, 21, 21, kNameless, d301),
    row(302, 25, 25, kNameless, d302),
};
constexpr std::array kHeaders{
    row(310, 3, kLongestRecord, kLong, d310),
    row(311, 2, 2, kNameless, d311),
    row(312, 3, kLongestRecord, kLong, d310),
};

}  // namespace

constinit const std::span<const RecordFormat> kTrackPointFormats = kPoints;
constinit const std::span<const RecordFormat> kTrackHeaderFormats = kHeaders;

}  // namespace garmin
