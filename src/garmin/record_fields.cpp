#include "garmin/record_fields.h"

#include <algorithm>
#include <cmath>

namespace garmin {
namespace {

constexpr std::int32_t kPole = 1 << 30;
constexpr double kSemicircles = 2147483648.0;  // to 180 degrees
// Text files count longitudes up to 360, and a datum shift may carry one a little further.
constexpr double kMostLongitude = 361;

}  // namespace

void ItemReading::position() {
  const std::int32_t latitude = in_.i32();
  const std::int32_t longitude = in_.i32();
  has_position_ = latitude >= -kPole && latitude <= kPole;
  if (has_position_) item_.position = {latitude * (180.0 / kSemicircles), longitude * (180.0 / kSemicircles)};
}

void ItemReading::time(std::uint32_t) {
  const std::uint32_t seconds = in_.u32();
  const bool none = seconds == 0x7FFFFFFF || seconds == kNoTime;
  item_.time = {none ? 0 : seconds};
}

float ItemReading::read_metres() {
  const float metres = in_.f32();
  return std::isfinite(metres) ? metres : store::kNotKnown;
}

void ItemWriting::position() {
  const double latitude = std::round(item_.position.latitude / 180.0 * kSemicircles);
  // A NaN is in no range either.
  has_position_ = std::abs(latitude) <= kPole && std::abs(item_.position.longitude) <= kMostLongitude;
  if (!has_position_) return;
  const double longitude = std::round(std::remainder(item_.position.longitude, 360.0) / 180.0 * kSemicircles);
  out_.i32(static_cast<std::int32_t>(latitude));
  out_.u32(static_cast<std::uint32_t>(static_cast<std::int64_t>(longitude)));  // 180 degrees becomes -180
}

void ItemWriting::metres(float store::ItemRecord::*field) {
  const float metres = item_.*field;
  out_.f32(store::is_known(metres) && std::isfinite(metres) ? metres : kNotKnownToReceivers);
}

void ItemWriting::append_text(std::string_view text, std::size_t longest, std::size_t texts_behind) {
  const std::size_t taken = std::min(out_.result().size() + 1 + texts_behind, kLongestEncoded);
  out_.string(receiver_comment(text, Letters::Ascii), std::min(longest, kLongestEncoded - taken));
}

}  // namespace garmin
