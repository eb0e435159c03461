// What a simulated Garmin receiver answers to each request and command.
#include <algorithm>
#include <chrono>
#include <numbers>

#include "simulators/garmin_screen.h"
#include "simulators/garmin_simulator.h"

namespace simulators {

namespace {

constexpr std::uint8_t kVoltages = 40;
constexpr std::uint8_t kProtocolArray = 253;
constexpr std::uint8_t kProductData = 255;

constexpr std::chrono::microseconds kPvtInterval = std::chrono::seconds(1);
constexpr std::int64_t kGarminEpoch = 631065600;  // 1989-12-31 00:00:00 UTC in Unix seconds
constexpr int kLeapSeconds = 18;                  // GPS time minus UTC
constexpr std::int64_t kDaySeconds = 86400;
constexpr std::int64_t kWeekSeconds = 7 * kDaySeconds;

double radians(double degrees) { return degrees * std::numbers::pi / 180.0; }

}  // namespace

void GarminSimulator::send_product_data(Time at) {
  base::ByteWriter out;
  out.u16(options_.product_id).i16(options_.software_version).string(product_description(options_), 250);
  std::vector<Packet> packets{{kProductData, out.result()}};
  if (!capabilities_.data.empty()) packets.push_back({kProtocolArray, capabilities_.data});
  send_all(std::move(packets), at);
}

void GarminSimulator::send_records(const GarminMemory::Records& records, std::uint16_t command, Time at) {
  if (!records) return;
  const std::size_t count = std::min(records->size(), kMostRecords);
  std::vector<Packet> packets;
  packets.reserve(count + 2);
  packets.push_back({ids_.records, base::ByteWriter().u16(static_cast<std::uint16_t>(count)).result()});
  packets.insert(packets.end(), records->begin(), records->begin() + static_cast<std::ptrdiff_t>(count));
  packets.push_back({kTransferComplete, base::ByteWriter().u16(command).result()});
  send_all(std::move(packets), at);
}

void GarminSimulator::abort_transfer(Time) { stop_sending(); }

void GarminSimulator::send_date_time(Time at) {
  if (capabilities_.capabilities.date_time_transfer == 0) return;
  using namespace std::chrono;
  const sys_seconds now{seconds(own_unix_seconds())};
  const sys_days today = floor<days>(now);
  const year_month_day date(today);
  const hh_mm_ss time(now - today);
  base::ByteWriter out;
  out.u8(static_cast<std::uint8_t>(static_cast<unsigned>(date.month())));
  out.u8(static_cast<std::uint8_t>(static_cast<unsigned>(date.day())));
  out.u16(static_cast<std::uint16_t>(static_cast<int>(date.year())));
  out.i16(static_cast<std::int16_t>(time.hours().count()));
  out.u8(static_cast<std::uint8_t>(time.minutes().count()));
  out.u8(static_cast<std::uint8_t>(time.seconds().count()));
  send_all({{ids_.date_time, out.result()}}, at);
}

void GarminSimulator::send_position(Time at) {
  if (capabilities_.capabilities.position_transfer == 0) return;
  base::ByteWriter out;
  out.f64(radians(here_.latitude)).f64(radians(here_.longitude));
  send_all({{ids_.position, out.result()}}, at);
}

void GarminSimulator::send_voltages(Time at) {
  constexpr std::int16_t kInternal = 587;  // hundredths of a volt: four good cells, nothing plugged in
  constexpr std::int16_t kExternal = 0;
  send_all({{kVoltages, base::ByteWriter().i16(kInternal).i16(kExternal).result()}}, at);
}

void GarminSimulator::send_screen(Time at) { send_all(screen_packets(options_), at); }

void GarminSimulator::start_pvt(Time at) {
  if (capabilities_.capabilities.pvt_transfer != 0) pvt_due_ = at;
}

void GarminSimulator::stop_pvt(Time) { pvt_due_.reset(); }

void GarminSimulator::send_pvt(Time at) {
  pvt_due_ = at + kPvtInterval;
  if (ack_deadline_ || upload_is_open(at)) return;  // it never comes between the packets of a transfer
  const std::int64_t gps_seconds = own_unix_seconds() - kGarminEpoch + kLeapSeconds;
  constexpr float kEllipsoidAboveSea = -52.0F;  // at the place where it stands
  base::ByteWriter out;
  out.f32(here_.altitude.value_or(0) - kEllipsoidAboveSea).f32(8.0F).f32(6.0F).f32(5.0F);
  out.i16(3);  // a three-dimensional fix
  out.f64(static_cast<double>(gps_seconds % kWeekSeconds));
  out.f64(radians(here_.latitude)).f64(radians(here_.longitude));
  out.f32(0).f32(0).f32(0);  // it stands still
  out.f32(kEllipsoidAboveSea).i16(kLeapSeconds);
  out.i32(static_cast<std::int32_t>(gps_seconds / kWeekSeconds * 7));
  send_new({ids_.pvt, out.result()}, at);
  loses_next_ack_ = false;
}

void GarminSimulator::power_off(Time) {
  stop_sending();
  pvt_due_.reset();
  fall_silent();
}

}  // namespace simulators
