#include "serial/com_port.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"

namespace serial {
namespace {

using base::format_text;

constexpr int kGarminSpeed = 9600;
constexpr int kNmeaSpeed = 4800;
constexpr int kLowranceDefaultSpeed = 115200;
constexpr int kMostLowranceAttempts = 10;
constexpr int kNoSuchFile = 2;
constexpr int kNoByte = 1000;  // AsyncIn's answer when no byte came, plus the buffer's old byte
// NMEA receivers send at least every 2 s.
constexpr std::chrono::milliseconds kNmeaListening{2500};

// Deliberate : 19200 stands before 57600; the order decides which speed a receiver that hears several is found at.
constexpr std::array kSpeedCycle{115200, 19200, 57600, 9600, 4800, 2400, 1200};

int next_speed(int speed_bps) {
  const auto* const at = std::find(kSpeedCycle.begin(), kSpeedCycle.end(), speed_bps);
  if (at == kSpeedCycle.end()) return speed_bps;  // the user's own speed is tried again
  return at + 1 == kSpeedCycle.end() ? kSpeedCycle.front() : at[1];
}

struct LineErrorText {
  bool LineErrors::*flag;
  const char* text;
};
constexpr std::array kLineErrorTexts{
    LineErrorText{&LineErrors::break_received, " Brk rcvd "},
    LineErrorText{&LineErrors::framing, " Frm err "},
    LineErrorText{&LineErrors::io, " I/O err "},
    LineErrorText{&LineErrors::unsupported_mode, " Bad Mode "},
    LineErrorText{&LineErrors::overrun, " OverRun "},
    LineErrorText{&LineErrors::input_overflow, " RcvOverrun "},
    LineErrorText{&LineErrors::output_full, " TxOverrun "},
    LineErrorText{&LineErrors::parity, " RcvParity "},
};

}  // namespace

ComPort::ComPort(DeviceFactory factory, base::Clock& clock, base::FrontEnd& front_end, DeviceFlags& flags)
    : factory_(std::move(factory)), clock_(clock), front_end_(front_end), flags_(flags) {}

void ComPort::set_port_name(std::string name) {
  if (name == port_name_) return;
  port_name_ = std::move(name);
  flags_.GpsIdentified = flags_.LowranceIdentified = false;
}

void ComPort::set_family(int family) {
  if (family == family_) return;
  family_ = family;
  flags_.GpsIdentified = flags_.LowranceIdentified = false;
}

void ComPort::OpenGpsPort(int family, Receiver* receiver) {
  if (flags_.PortOpen) return;
  esc_waits_ = anything_heard_ = nmea_heard_ = false;
  set_family(family);
  const bool probes = receiver != nullptr && (family == kGarminFamily || family == kLowranceFamily);
  front_end_.set_status(3, "Opening COM Port");
  int failed_attempts = 0;
  for (;;) {
    if (family == kLowranceFamily) {
      if (speed_bps_ == 0) speed_bps_ = kLowranceDefaultSpeed;
      front_end_.set_status(3, format_text("Trying %d baud", speed_bps_));
    } else {
      speed_bps_ = kGarminSpeed;
    }
    if (!open_line()) return;
    if (flags_.GpsIdentified || !probes || !probe_fails(*receiver)) break;
    if (family == kGarminFamily) return give_up_garmin();
    if (lost_ || ++failed_attempts == kMostLowranceAttempts) return give_up_lowrance();
    AsyncStop();
    speed_bps_ = next_speed(speed_bps_);
    if (EscPressed()) {
      front_end_.write_line(4, "ESC Pressed!");
      return;
    }
  }
  front_end_.refresh_title();
  flags_.PortOpen = true;
}

// The port open at the current speed; else the user is told why not.
bool ComPort::open_line() {
  if (AsyncInit(port_name_) != 0) {
    front_end_.write_line(2, "AsyncInit Error");
    AsyncStop();
    front_end_.write_line(3, open_advice());
    return false;
  }
  AsyncSet(speed_bps_, 8, 0, 0);
  return true;
}

bool ComPort::probe_fails(Receiver& receiver) {
  // A speed that the port does not have finds nobody, or somebody at another one.
  if (!line_is_set_ && receiver.family() == kLowranceFamily) return true;
  flags_.ComTimedOut = false;  // that of an earlier transfer says nothing about this receiver
  receiver.probe();
  front_end_.set_status(3, " ");
  return flags_.ComTimedOut || lost_;
}

void ComPort::give_up_garmin() {
  flags_.UserAbort = true;
  if (anything_heard_ && !lost_ && !nmea_heard_) listen_for_nmea();
  AsyncStop();
  front_end_.message_box("COM Timeout", "Serial Port Timeout");
  if (!lost_) front_end_.write_line(3, silence_advice());
}

void ComPort::give_up_lowrance() {
  if (!lost_) front_end_.message_box("COM Error", "Cannot find default port speed.");
  speed_bps_ = kLowranceDefaultSpeed;
  AsyncStop();
  flags_.UserAbort = true;
  if (!lost_) front_end_.write_line(3, lowrance_advice());
}

void ComPort::listen_for_nmea() {
  AsyncSet(kNmeaSpeed, 8, 0, 0);
  const std::chrono::microseconds end = clock_.monotonic() + kNmeaListening;
  while (clock_.monotonic() < end && !nmea_.found() && !lost_ && !EscPressed()) {
    wait_for_input(std::chrono::milliseconds(50));
    while (clock_.monotonic() < end && AsyncInStat()) AsyncIn();
  }
}

int ComPort::AsyncInit(const std::string& port_name) {
  lost_ = false;
  if (!device_ || device_name_ != port_name) {
    device_ = factory_(port_name);
    device_name_ = port_name;
  }
  if (const int error = device_ ? device_->open(port_name) : kNoSuchFile; error != 0) {
    AsyncError("AsyncInit 1", error);
    return 1;
  }
  if (const int error = device_->read_settings(); error != 0) {
    AsyncError("AsyncInit GetCommState", error);
    return 1;
  }
  return 0;
}

void ComPort::AsyncSet(int speed_bps, std::uint8_t data_bits, std::uint8_t stop_bits, std::uint8_t parity) {
  if (!device_) return AsyncError("AsyncSet", kNotOpen);
  nmea_ = {};
  device_->take_line_errors();
  const int error = device_->apply_settings({speed_bps, data_bits, stop_bits, parity});
  line_is_set_ = error == 0;
  if (!line_is_set_) AsyncError("AsyncSet", error);
}

bool ComPort::AsyncStop() {
  flags_.PortOpen = false;
  if (!device_) return false;
  const int error = device_->restore_settings();
  // What has vanished cannot be restored, and the user has been told.
  if (error != 0 && !lost_) AsyncError("AsyncStop", error);
  return device_->close() == 0;
}

bool ComPort::AsyncOut(std::span<const std::uint8_t> bytes) { return device_ && device_->write(bytes) == 0; }

int ComPort::AsyncIn() {
  const std::optional<std::uint8_t> byte = device_ ? device_->read_byte() : std::nullopt;
  if (!byte) return kNoByte + byte_;
  byte_ = *byte;
  anything_heard_ = true;
  nmea_.feed(byte_);
  nmea_heard_ = nmea_heard_ || nmea_.found();
  return byte_;
}

bool ComPort::AsyncInStat() {
  if (!device_) return false;
  const bool waiting = device_->input_waiting();
  device_->take_line_errors();
  if (!waiting && !lost_ && device_->vanished()) {
    lost_ = true;
    // Another receiver may be plugged in next.
    flags_.GpsIdentified = flags_.LowranceIdentified = false;
    AsyncError("AsyncIn", device_->vanish_error());
    front_end_.write_line(3, format_text("The port %s has vanished (adapter unplugged?). Plug it in and try again.",
                                         device_name_.c_str()));
  }
  return waiting;
}

void ComPort::AsyncError(std::string_view label, int error) {
  // Closing a port that never opened is no error.
  if (error == kNotOpen && label == "AsyncStop") return;
  front_end_.write_line(1, format_text("Comm error in %s: %d", std::string(label).c_str(), error));
  if (!device_) return;
  const LineErrors errors = device_->take_line_errors();
  std::string texts;
  for (const LineErrorText& row : kLineErrorTexts)
    if (errors.*row.flag) texts += row.text;
  if (!texts.empty()) front_end_.write_line(2, "Other errors: " + texts);
}

bool ComPort::EscPressed() { return std::exchange(esc_waits_, false) || front_end_.EscPressed(); }

bool ComPort::esc_waits() {
  esc_waits_ = esc_waits_ || front_end_.EscPressed();
  return esc_waits_;
}

void ComPort::DelayMs(int milliseconds) {
  const std::chrono::microseconds end = clock_.monotonic() + std::chrono::milliseconds(milliseconds);
  for (auto now = clock_.monotonic(); now < end; now = clock_.monotonic()) clock_.pause(end - now);
}

void ComPort::wait_for_input(std::chrono::milliseconds longest) {
  // A vanished device no longer sleeps.
  if (!device_ || device_->vanished()) return clock_.pause(longest);
  device_->wait_for_input(longest);
}

OpenProblem ComPort::open_problem() const { return device_ ? device_->open_problem() : OpenProblem::NoSuchPort; }

std::string ComPort::permitted_group() const { return device_ ? device_->permitted_group() : std::string(); }

std::string ComPort::open_advice() const {
  const char* const port = port_name_.c_str();
  const std::string group = permitted_group();
  switch (open_problem()) {
    case OpenProblem::NoSuchPort:
      return format_text("There is no port %s. %s", port, ports_text().c_str());
    case OpenProblem::NotSerial:
      return format_text("%s is not a serial device. %s", port, ports_text().c_str());
    case OpenProblem::InUse:
      return format_text("%s is in use by another program. Close that program and try again.", port);
    case OpenProblem::NoPermission:
      if (group.empty()) return format_text("No permission for %s: ask the administrator for access.", port);
      return format_text(
          "No permission for %s, which belongs to the group %s. Run: sudo usermod -aG %s $USER, "
          "then log in again.",
          port, group.c_str(), group.c_str());
    case OpenProblem::None:
    case OpenProblem::Other:
      break;
  }
  return format_text("%s cannot be opened or set up. Plug the adapter out and in and try again.", port);
}

std::string ComPort::ports_text() const {
  std::string names;
  for (const PortInfo& port : list_ports_()) names += (names.empty() ? "" : ", ") + port.name;
  if (names.empty()) return "This machine has no serial port: plug in an adapter.";
  return "Ports of this machine: " + names + ".";
}

std::string ComPort::silence_advice() const {
  const char* const port = port_name_.c_str();
  if (nmea_heard_) return format_text("The receiver on %s talks NMEA: set its interface to GARMIN.", port);
  if (anything_heard_)
    return format_text("Bytes came on %s, but no complete answer. Is the receiver's interface set to GARMIN?", port);
  return format_text("No answer on %s. Is the receiver on, connected and set to GARMIN interface?", port);
}

std::string ComPort::lowrance_advice() const {
  const char* const port = port_name_.c_str();
  if (nmea_heard_) return format_text("The receiver on %s talks NMEA, but no Lowrance/Eagle unit answers.", port);
  if (anything_heard_) return format_text("Bytes came on %s, but no complete answer at any speed.", port);
  return format_text("No answer on %s at any speed. Is the receiver on and connected?", port);
}

}  // namespace serial
