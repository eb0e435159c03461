// How a simulated Garmin receiver takes in what is sent to it: uploads, the time, its position.
#include <chrono>
#include <cmath>
#include <numbers>

#include "simulators/garmin_simulator.h"

namespace simulators {

namespace {

constexpr std::uint8_t kDateTimeOfLink1 = 14;
constexpr std::chrono::microseconds kUploadPatience = std::chrono::seconds(10);

double degrees(double radians) { return radians * 180.0 / std::numbers::pi; }

}  // namespace

bool GarminSimulator::upload_is_open(Time at) {
  if (at - upload_heard_ > kUploadPatience) upload_.stop();
  return upload_.is_open();
}

// During an upload it takes no packet for one that it has merely no use for.
bool GarminSimulator::is_taken_in(std::uint8_t id, Time at) {
  return upload_is_open(at) || upload_.knows(id) || id == kDateTimeOfLink1 || id == ids_.date_time ||
         id == ids_.position;
}

// A packet whose answer was lost or was a NAK may come again: it is not counted, and not taken twice.
void GarminSimulator::on_reception(const Packet& packet, Time at) {
  const bool repeated = reception_ && reception_->may_come_again && reception_->packet == packet;
  Trouble trouble;
  if (!repeated) {
    trouble = trouble_at_next_packet();
    if (is_silent()) return;
    reception_ = Reception{.packet = packet};
  }
  upload_heard_ = at;
  if (!reception_->taken && !trouble.damaged) reception_->taken = take_in(packet);
  reception_->may_come_again = !reception_->taken || trouble.loses_ack || trouble.noisy;
  if (trouble.noisy) put_noise(at);
  if (!trouble.loses_ack) answer(reception_->taken ? kAck : kNak, packet.id, at);
}

void GarminSimulator::answer_again(Time at) {
  reception_->may_come_again = !reception_->taken;
  answer(reception_->taken ? kAck : kNak, reception_->packet.id, at);
}

bool GarminSimulator::take_in(const Packet& packet) {
  // Deliberate : under every link, since hosts set the clock with the packet of the first one.
  if (packet.id == kDateTimeOfLink1 || packet.id == ids_.date_time) return set_clock(packet);
  if (packet.id == ids_.position) return set_position(packet);
  if (packet.id == ids_.records) stop_sending();
  return upload_.take(packet, memory_);
}

bool GarminSimulator::set_clock(const Packet& packet) {
  using namespace std::chrono;
  base::ByteReader in(packet.data);
  const month its_month{in.u8()};
  const day its_day{in.u8()};
  const std::uint16_t its_year = in.u16();
  const std::int16_t its_hour = in.i16();
  const std::uint8_t its_minute = in.u8();
  const std::uint8_t its_second = in.u8();
  if (!in.ok() || in.remaining() > 0 || its_year > 9999) return false;
  const year_month_day date(year{its_year}, its_month, its_day);
  if (!date.ok() || its_hour < 0 || its_hour > 23 || its_minute > 59 || its_second > 60) return false;
  const sys_seconds now = sys_days(date) + hours(its_hour) + minutes(its_minute) + seconds(its_second);
  clock_error_ = now.time_since_epoch().count() - clock().unix_seconds();
  return true;
}

bool GarminSimulator::set_position(const Packet& packet) {
  base::ByteReader in(packet.data);
  const double latitude = degrees(in.f64());
  const double longitude = degrees(in.f64());
  if (!in.ok() || in.remaining() > 0) return false;
  if (!(std::abs(latitude) <= 90) || !(std::abs(longitude) <= 180)) return false;  // what is no number too
  here_.latitude = latitude;
  here_.longitude = longitude;
  return true;
}

}  // namespace simulators
