#include "garmin/single_commands.h"

#include <array>
#include <cmath>
#include <string>

#include "base/byte_cursor.h"
#include "base/text.h"
#include "geodesy/angle.h"
#include "store/garmin_time.h"

namespace garmin {
namespace {

using namespace std::chrono_literals;

// A receiver may go on with data that nobody asked for; after so many packets it is taken for noise.
constexpr std::string_view kPortSaysWhy = "";  // a port that cannot be opened
constexpr int kMostStrayPackets = 50;
// A request is sent again when nothing follows its acknowledgement. After so many there is no answer.
constexpr int kMostReplies = 3;
constexpr auto kPowerOffPatience = 1s;
constexpr auto kPollInterval = 20ms;  // between two looks at ESC
constexpr std::size_t kVoltagesSize = 4, kDateTimeSize = 8, kPositionSize = 16, kPvtSize = 64;
// Half a turn in radians need not be exactly 180 degrees.
constexpr double kRounding = 1e-9;

std::string wrong_size(const char* packet, std::size_t size, std::size_t right_size) {
  return base::format_text("%s: %d bytes instead of %d", packet, static_cast<int>(size), static_cast<int>(right_size));
}

// Two radians as they stand in a packet.
geodesy::Position read_radians(base::ByteReader& in) {
  const double latitude = in.f64();
  const double longitude = in.f64();
  return {latitude * geodesy::kDegreesPerRadian, longitude * geodesy::kDegreesPerRadian};
}

}  // namespace

GarminCommands::GarminCommands(const Connection& connection, base::Clock& clock)
    : connection_(connection), clock_(clock) {
  connection_.link.on(PacketKind::Voltages, [this](auto data) { take_voltages(data); });
  connection_.link.on(PacketKind::Pid_Date_Time_Data, [this](auto data) { take_date_time(data); });
  connection_.link.on(PacketKind::Pid_Position_Data, [this](auto data) { take_position(data); });
  connection_.link.on(PacketKind::PvtData, [this](auto data) { take_pvt(data); });
}

std::optional<Voltages> GarminCommands::read_voltages() {
  voltages_ = {};
  const bool reached =
      run([this] { return ask(numbers().voltages, "Send Voltages", PacketKind::Voltages) != Answer::Stopped; });
  return reached ? std::optional(voltages_) : std::nullopt;
}

std::optional<std::int64_t> GarminCommands::read_time() {
  return run([this] { return ask_time() == Answer::Came; }) ? date_time_ : std::nullopt;
}

std::optional<PlaceAndTime> GarminCommands::read_position() {
  position_.reset();
  const bool answered = run([this] {
    const Answer answer = ask(numbers().position, "Send GPS Position", PacketKind::Pid_Position_Data);
    return answer == Answer::Came && position_ && ask_time() == Answer::Came;
  });
  if (!answered || !position_ || !date_time_) return std::nullopt;
  return PlaceAndTime{*position_, *date_time_};
}

GarminCommands::Answer GarminCommands::ask_time() {
  date_time_.reset();
  return ask(numbers().time, "Send GPS Time", PacketKind::Pid_Date_Time_Data);
}

bool GarminCommands::follow_position(const LineSink& sink) {
  return run([&] {
    const Protocols& protocols = connection_.selection.protocols();
    if (protocols.pvt_transfer == kNone || !id_of(PacketKind::PvtData, protocols.link)) {
      connection_.front_end.write_line(1, "This receiver has no position-velocity-time data.");
      return false;
    }
    sink_ = &sink;
    sink_has_enough_ = false;
    connection_.selection.send_command(numbers().start_pvt, "Start PVT data");
    const bool ended_as_wished = receive_pvt();
    sink_ = nullptr;
    connection_.flags.UserAbort = false;  // ESC is how it ends
    connection_.selection.send_command(numbers().stop_pvt, "Stop PVT data");
    if (ended_as_wished) (void)receive_until(PacketKind::Pid_Ack_Byte);
    return ended_as_wished;
  });
}

// Until the user or the sink has enough; false when the receiver falls silent or sends other things only.
bool GarminCommands::receive_pvt() {
  while (!sink_has_enough_)
    if (receive_until(PacketKind::PvtData) != Answer::Came) return connection_.flags.UserAbort;
  return true;
}

bool GarminCommands::power_off() {
  const Conversation conversation(connection_, kPortSaysWhy);
  const bool reached = conversation.is_open() && !connection_.stopped();
  bool refused = false;
  if (reached) {
    const auto send = [this] { connection_.selection.send_command(numbers().power_off, "Power off"); };
    send();
    for (int packets = 0; packets < kMostStrayPackets && anything_comes(); ++packets) {
      connection_.link.getGarminMessage();
      if (connection_.link.last_kind() == PacketKind::Pid_Ack_Byte) refused = false;
      if (connection_.stopped() || connection_.link.last_kind() == PacketKind::Pid_Ack_Byte) break;
      refused = connection_.link.last_kind() == PacketKind::Pid_Nak_Byte;
      if (refused) send();
    }
    connection_.flags.GpsIdentified = false;
  }
  if (refused) connection_.front_end.write_line(1, "The receiver refuses to be turned off.");
  return reached && !refused;
}

// Whether a byte comes before the patience ends. A receive of the link would wait much longer, and ask again.
bool GarminCommands::anything_comes() {
  const auto end = clock_.monotonic() + kPowerOffPatience;
  while (!connection_.port.AsyncInStat()) {
    if (connection_.port.lost() || clock_.monotonic() >= end || connection_.port.EscPressed()) return false;
    connection_.port.wait_for_input(kPollInterval);
  }
  return true;
}

bool GarminCommands::send_utc_time() {
  // Deliberate : packet id 14 under every link protocol.
  constexpr std::uint8_t kDateTimeId = 14;
  const store::CalendarTime now = store::calendar_time(clock_.unix_seconds() - store::kGarminEpochUnix);
  base::ByteWriter out;
  out.u8(kDateTimeId).u8(kDateTimeSize);
  out.u8(static_cast<std::uint8_t>(now.month)).u8(static_cast<std::uint8_t>(now.day));
  out.u16(static_cast<std::uint16_t>(now.year)).i16(static_cast<std::int16_t>(now.hour));
  out.u8(static_cast<std::uint8_t>(now.minute)).u8(static_cast<std::uint8_t>(now.second));
  connection_.link.sendGarminPacket(out.result(), "Sending UTC date/time");
  // A receiver that refuses the time may take the almanac all the same.
  for (int packets = 0; packets < kMostStrayPackets; ++packets) {
    connection_.link.getGarminMessage();
    if (connection_.stopped()) return false;
    const PacketKind came = connection_.link.last_kind();
    if (came == PacketKind::Pid_Ack_Byte || came == PacketKind::Pid_Nak_Byte) return true;
  }
  return false;
}

void GarminCommands::close_link() {
  connection_.flags.GpsIdentified = false;
  connection_.link.Identifying = true;  // whatever the receiver still sends is nobody's fault
  connection_.selection.send_command(numbers().abort, "Gabort");
  connection_.link.getGarminMessage();
  connection_.link.Identifying = false;
  connection_.close_port();
}

bool GarminCommands::run(const std::function<bool()>& exchange) {
  const Conversation conversation(connection_, kPortSaysWhy);
  const bool done = conversation.is_open() && !connection_.stopped() && exchange();
  // Who was stopped or hears nothing waits for no answer to the farewell.
  if (connection_.flags.PortOpen && connection_.stopped()) {
    connection_.selection.send_command(numbers().abort, "Gabort");
    connection_.flags.GpsIdentified = false;
  } else if (connection_.flags.PortOpen) {
    close_link();
  }
  return done;
}

GarminCommands::Answer GarminCommands::ask(std::uint8_t command, std::string_view label, PacketKind answer) {
  connection_.selection.send_command(command, label);
  return receive_until(answer);
}

GarminCommands::Answer GarminCommands::receive_until(PacketKind kind) {
  int replies = 0;
  for (int packets = 0; packets < kMostStrayPackets; ++packets) {
    connection_.link.getGarminMessage();
    if (connection_.stopped()) return Answer::Stopped;
    const PacketKind came = connection_.link.last_kind();
    if (came == kind) return Answer::Came;
    const bool is_reply = came == PacketKind::Pid_Ack_Byte || came == PacketKind::Pid_Nak_Byte;
    if (is_reply && ++replies == kMostReplies) return Answer::None;
  }
  connection_.front_end.write_line(2, "The receiver keeps sending packets that were not asked for.");
  return Answer::Stopped;
}

void GarminCommands::refuse(std::string_view why) {
  connection_.front_end.write_line(1, std::string(why) + ": record refused");
}

void GarminCommands::take_voltages(std::span<const std::uint8_t> data) {
  if (data.size() < kVoltagesSize) return refuse(wrong_size("Voltages", data.size(), kVoltagesSize));
  base::ByteReader in(data);
  const double internal = in.i16() * 0.01;
  const double external = in.i16() * 0.01;
  voltages_ = {internal, external};
}

void GarminCommands::take_date_time(std::span<const std::uint8_t> data) {
  if (data.size() != kDateTimeSize) return refuse(wrong_size("Pid_Date_Time_Data", data.size(), kDateTimeSize));
  base::ByteReader in(data);
  const unsigned month = in.u8();
  const unsigned day = in.u8();
  const int year = in.u16();
  const int hour = in.i16();
  const unsigned minute = in.u8();
  const unsigned second = in.u8();
  // A negative hour becomes one that no day has.
  date_time_ = store::seconds_of({year, month, day, static_cast<unsigned>(hour), minute, second});
  if (!date_time_)
    refuse(base::format_text("Pid_Date_Time_Data: there is no %04d-%02u-%02u %02d:%02u:%02u", year, month, day, hour,
                             minute, second));
}

void GarminCommands::take_position(std::span<const std::uint8_t> data) {
  if (data.size() != kPositionSize) return refuse(wrong_size("Pid_Position_Data", data.size(), kPositionSize));
  base::ByteReader in(data);
  const geodesy::Position position = read_radians(in);
  const bool is_on_earth =
      std::abs(position.latitude) <= 90 + kRounding && std::abs(position.longitude) <= 180 + kRounding;
  if (!is_on_earth) return refuse("Pid_Position_Data: no position on the earth");
  position_ = position;
}

// The layout (D800) follows the maker's published interface document. The numbers are shown as they come.
void GarminCommands::take_pvt(std::span<const std::uint8_t> data) {
  if (sink_ == nullptr) return;  // a receiver that was left in this mode
  if (data.size() != kPvtSize) return refuse(wrong_size("PVT data", data.size(), kPvtSize));
  base::ByteReader in(data);
  std::array<double, 4> height_and_errors{};
  for (double& metres : height_and_errors) metres = in.f32();
  const int fix = in.i16();
  const double time_of_week = in.f64();
  const geodesy::Position position = read_radians(in);
  std::array<double, 4> velocity_and_sea{};
  for (double& value : velocity_and_sea) value = in.f32();
  const int leap_seconds = in.i16();
  const long week_days = in.i32();
  const auto& [altitude, error, horizontal, vertical] = height_and_errors;
  const auto& [east, north, up, sea_level] = velocity_and_sea;
  const std::string line = base::format_text("%f,%f,%f,%f,%d,%f,%f,%f,%f,%f,%f,%f,%d,%ld\n", altitude, error,
                                             horizontal, vertical, fix, time_of_week, position.latitude,
                                             position.longitude, east, north, up, sea_level, leap_seconds, week_days);
  if (!(*sink_)(line)) sink_has_enough_ = true;
}

}  // namespace garmin
