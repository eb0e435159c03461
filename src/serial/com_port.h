// The serial port layer: one port at a time, opened for one receiver operation and closed again, its line
// left as it was found. Synchronous; nobody but the caller waits: a receive loop asks AsyncInStat and
// EscPressed, sleeps in wait_for_input, and measures its own time-outs. All the rules about ports stand here,
// on any device.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "base/front_end.h"
#include "serial/device_flags.h"
#include "serial/nmea_detector.h"
#include "serial/port_list.h"
#include "serial/receiver.h"
#include "serial/serial_device.h"

namespace serial {

class ComPort {
 public:
  // Makes the device behind a port name; the device is kept until the name changes. None: no such port.
  using DeviceFactory = std::function<std::unique_ptr<SerialDevice>(const std::string& port_name)>;
  using PortLister = std::function<std::vector<PortInfo>()>;

  // Clock, front end and flags must outlive the port.
  ComPort(DeviceFactory factory, base::Clock& clock, base::FrontEnd& front_end, DeviceFlags& flags);

  // A change of port or family means another receiver: it is to be identified anew.
  void set_port_name(std::string name);
  [[nodiscard]] const std::string& port_name() const { return port_name_; }
  void set_family(int family);
  // The current speed in bits per second; 0 when none is known yet.
  void set_speed(int speed_bps) { speed_bps_ = speed_bps; }
  [[nodiscard]] int speed() const { return speed_bps_; }
  // Where the ports come from that a message names.
  void set_port_list(PortLister list) { list_ports_ = std::move(list); }

  // Opens and configures the port and makes sure that the receiver answers: PortOpen is set then. Failures
  // are told to the user. Families other than Garmin and Lowrance/Eagle, and no receiver, are not probed.
  void OpenGpsPort(int family, Receiver* receiver);

  // Opens the port and remembers its line settings: 0, or 1 after an error message.
  int AsyncInit(const std::string& port_name);
  // Sets the line; codes as in LineSettings. Failures are told only.
  void AsyncSet(int speed_bps, std::uint8_t data_bits, std::uint8_t stop_bits, std::uint8_t parity);
  // Puts the line back as it was found and closes the port; whether the close succeeded. Without an open port
  // nothing happens.
  bool AsyncStop();
  // Writes all bytes; false, without a message, when that failed.
  bool AsyncOut(std::span<const std::uint8_t> bytes);
  // The next byte, 0 to 255; 1000 or more when none came.
  int AsyncIn();
  // Whether a byte is waiting. Clears the line's error state. False for good, after a message, once the port
  // has vanished.
  bool AsyncInStat();
  // Writes "Comm error in ..." with the error number, and the line's errors if there are any.
  void AsyncError(std::string_view label, int error);
  // Whether ESC was pressed since this was asked last.
  bool EscPressed();
  // The same without forgetting it: for waits below the loop that is to act on it.
  bool esc_waits();
  // Sleeps at least this long.
  void DelayMs(int milliseconds);

  // Sleeps until a byte waits or the time is over; for the idle turns of a receive loop.
  void wait_for_input(std::chrono::milliseconds longest);
  // True when the port vanished while it was open; a receive loop ends then as with a time-out.
  [[nodiscard]] bool lost() const { return lost_; }
  // Whether any byte, and NMEA text, came since OpenGpsPort began, at whichever speed.
  [[nodiscard]] bool heard_anything() const { return anything_heard_; }
  [[nodiscard]] bool heard_nmea() const { return nmea_heard_; }
  // What the last opening failed on, and whose members may use a port that it had no permission for (or empty).
  [[nodiscard]] OpenProblem open_problem() const;
  [[nodiscard]] std::string permitted_group() const;

 private:
  bool open_line();
  bool probe_fails(Receiver& receiver);
  void give_up_garmin();
  void give_up_lowrance();
  void listen_for_nmea();
  [[nodiscard]] std::string open_advice() const;
  [[nodiscard]] std::string ports_text() const;
  [[nodiscard]] std::string silence_advice() const;
  [[nodiscard]] std::string lowrance_advice() const;

  DeviceFactory factory_;
  base::Clock& clock_;
  base::FrontEnd& front_end_;
  DeviceFlags& flags_;
  PortLister list_ports_ = list_serial_ports;
  std::unique_ptr<SerialDevice> device_;
  std::string device_name_;  // the port that device_ was made for
  std::string port_name_ = "COM1";
  int family_ = 0;
  int speed_bps_ = 0;
  std::uint8_t byte_ = 0;  // the one-byte input buffer
  bool lost_ = false;
  bool esc_waits_ = false;
  bool line_is_set_ = false;
  bool anything_heard_ = false;
  bool nmea_heard_ = false;
  NmeaDetector nmea_;  // over the bytes since the last AsyncSet
};

}  // namespace serial
