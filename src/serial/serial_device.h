// The seam under all receiver traffic: one serial port of the operating system, or a simulated receiver that
// behaves like one. About one system call an operation; every product rule stands above it in ComPort.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace serial {

// The error number of an operation on a device that is not open (the Win32 invalid-handle code).
inline constexpr int kNotOpen = 6;
// The usual one of a port that has vanished: input/output error on Linux, access denied on Windows.
inline constexpr int kVanished = 5;

struct LineSettings {
  int speed_bps = 9600;
  std::uint8_t data_bits = 8;
  std::uint8_t stop_bits = 0;  // 0 one, 1 one and a half, 2 two
  std::uint8_t parity = 0;     // 0 none, 1 odd, 2 even, 3 mark, 4 space
};

// What went wrong on the line since it was last asked.
struct LineErrors {
  bool break_received = false;
  bool framing = false;
  bool io = false;
  bool unsupported_mode = false;
  bool overrun = false;
  bool input_overflow = false;
  bool output_full = false;
  bool parity = false;
};

// Why a port could not be opened, so that the user can be told what to do.
enum class OpenProblem { None, NoSuchPort, NoPermission, InUse, NotSerial, Other };

// Operations that can fail return 0 or the system's error number, kNotOpen when the device is not open.
class SerialDevice {
 public:
  virtual ~SerialDevice() = default;

  // Opens an existing port for this program alone.
  virtual int open(const std::string& name) = 0;
  // What the last open failed on.
  [[nodiscard]] virtual OpenProblem open_problem() const = 0;
  // The group whose members may use a port that could not be opened for want of permission; empty when unknown.
  [[nodiscard]] virtual std::string permitted_group() const { return {}; }
  // Reads the line settings as they are and remembers them for restore_settings.
  virtual int read_settings() = 0;
  // Raw, no flow control, DTR and RTS held on.
  virtual int apply_settings(const LineSettings& settings) = 0;
  virtual int restore_settings() = 0;
  virtual int close() = 0;

  // Writes all the bytes, waiting as long as the line takes but not for ever; 0 or an error number.
  virtual int write(std::span<const std::uint8_t> bytes) = 0;
  // Whether a byte can be read now.
  virtual bool input_waiting() = 0;
  // The next byte; nothing when none is waiting.
  virtual std::optional<std::uint8_t> read_byte() = 0;
  // Sleeps until a byte is waiting or the time is over.
  virtual void wait_for_input(std::chrono::milliseconds longest) = 0;
  // Reads and clears the line's error state.
  virtual LineErrors take_line_errors() = 0;
  // True once the port has vanished (adapter unplugged, pseudo-terminal closed).
  [[nodiscard]] virtual bool vanished() const = 0;
  // The error number that showed it.
  [[nodiscard]] virtual int vanish_error() const { return kVanished; }
};

}  // namespace serial
