// A serial port of Windows, by the calls that every version of it has: no overlapped mode and no driver
// time-outs; a read asks only for bytes that are there.
// clang-format off
#include <windows.h>
#include <timeapi.h>  // needs what the one before declares
// clang-format on

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "base/win32_handle.h"
#include "serial/system_device.h"

namespace serial {
namespace {

// Windows sleeps in steps of 16 ms unless it is asked for finer ones, as it is while this lives; at each packet that
// would cost as much as a byte in sixteen.
class FineTimer {
 public:
  FineTimer() { timeBeginPeriod(kMilliseconds); }
  ~FineTimer() { timeEndPeriod(kMilliseconds); }
  FineTimer(const FineTimer&) = delete;
  FineTimer& operator=(const FineTimer&) = delete;

 private:
  static constexpr UINT kMilliseconds = 1;
};

struct Reason {
  DWORD error;
  OpenProblem problem;
};
constexpr std::array kReasons{
    Reason{ERROR_SUCCESS, OpenProblem::None},
    Reason{ERROR_FILE_NOT_FOUND, OpenProblem::NoSuchPort},
    Reason{ERROR_PATH_NOT_FOUND, OpenProblem::NoSuchPort},
    Reason{ERROR_INVALID_NAME, OpenProblem::NoSuchPort},
    Reason{ERROR_DEV_NOT_EXIST, OpenProblem::NoSuchPort},
    Reason{ERROR_ACCESS_DENIED, OpenProblem::InUse},  // what a port gives that somebody else has open
    Reason{ERROR_SHARING_VIOLATION, OpenProblem::InUse},
    Reason{ERROR_INVALID_FUNCTION, OpenProblem::NotSerial},
    Reason{ERROR_INVALID_PARAMETER, OpenProblem::NotSerial},
    Reason{ERROR_INVALID_HANDLE, OpenProblem::NotSerial},  // something else was opened, whose settings cannot be read
};

// What drivers answer, each in its own way, once the adapter is gone.
constexpr DWORD kNoSuchDevice = 433;  // ERROR_NO_SUCH_DEVICE, not known to every compiler's headers
constexpr std::array<DWORD, 9> kVanishErrors{
    kNoSuchDevice,        ERROR_ACCESS_DENIED,        ERROR_BAD_COMMAND,    ERROR_OPERATION_ABORTED, ERROR_GEN_FAILURE,
    ERROR_DEVICE_REMOVED, ERROR_DEVICE_NOT_CONNECTED, ERROR_FILE_NOT_FOUND, ERROR_FILE_INVALID};

struct LineErrorBit {
  DWORD bit;
  bool LineErrors::*flag;
};
constexpr std::array kLineErrorBits{
    LineErrorBit{CE_BREAK, &LineErrors::break_received},
    LineErrorBit{CE_FRAME, &LineErrors::framing},
    LineErrorBit{CE_IOE, &LineErrors::io},
    LineErrorBit{CE_MODE, &LineErrors::unsupported_mode},
    LineErrorBit{CE_OVERRUN, &LineErrors::overrun},
    LineErrorBit{CE_RXOVER, &LineErrors::input_overflow},
    LineErrorBit{CE_TXFULL, &LineErrors::output_full},
    LineErrorBit{CE_RXPARITY, &LineErrors::parity},
};

// The destructor restores and closes an open port.
class Win32Device : public SerialDevice {
 public:
  Win32Device() = default;
  ~Win32Device() override {
    restore_settings();
    close();
  }
  Win32Device(const Win32Device&) = delete;
  Win32Device& operator=(const Win32Device&) = delete;

  int open(const std::string& name) override {
    close();
    port_ = base::Win32Handle(
        CreateFileA(device_path(name).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    const DWORD error = is_open() ? DWORD{ERROR_SUCCESS} : GetLastError();
    note_open_result(error);
    if (is_open()) timer_.emplace();
    found_.reset();
    vanish_error_ = 0;
    return static_cast<int>(error);
  }
  [[nodiscard]] OpenProblem open_problem() const override { return problem_; }

  int read_settings() override {
    if (!is_open()) return kNotOpen;
    line_.DCBlength = sizeof line_;
    if (GetCommState(port_.get(), &line_) == 0) {
      const DWORD error = GetLastError();
      note_open_result(error);
      return note_failure(error);
    }
    found_ = line_;
    return 0;
  }

  int apply_settings(const LineSettings& settings) override {
    if (!is_open()) return kNotOpen;
    line_.BaudRate = static_cast<DWORD>(settings.speed_bps);
    line_.ByteSize = settings.data_bits;
    line_.StopBits = settings.stop_bits;
    line_.Parity = settings.parity;
    line_.fOutxCtsFlow = FALSE;
    line_.fOutxDsrFlow = FALSE;
    line_.fDsrSensitivity = FALSE;
    line_.fOutX = FALSE;
    line_.fInX = FALSE;
    line_.fNull = FALSE;
    line_.fDtrControl = DTR_CONTROL_ENABLE;
    line_.fRtsControl = RTS_CONTROL_ENABLE;
    return SetCommState(port_.get(), &line_) != 0 ? 0 : note_failure(GetLastError());
  }

  int restore_settings() override {
    if (!is_open()) return kNotOpen;
    if (!found_) return 0;
    line_ = *found_;
    return SetCommState(port_.get(), &line_) != 0 ? 0 : note_failure(GetLastError());
  }

  int close() override {
    timer_.reset();
    next_ = end_ = 0;
    return is_open() ? static_cast<int>(port_.close()) : kNotOpen;
  }

  int write(std::span<const std::uint8_t> bytes) override {
    if (!is_open()) return kNotOpen;
    DWORD written = 0;
    if (WriteFile(port_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) == 0)
      return note_failure(GetLastError());
    return written == bytes.size() ? 0 : ERROR_WRITE_FAULT;
  }

  bool input_waiting() override {
    if (next_ == end_) fill_buffer();
    return next_ < end_;
  }

  std::optional<std::uint8_t> read_byte() override {
    if (!input_waiting()) return std::nullopt;
    return buffer_[next_++];
  }

  void wait_for_input(std::chrono::milliseconds longest) override {
    // Sleeping for an event of the line would need overlapped mode.
    const auto end = std::chrono::steady_clock::now() + longest;
    while (is_open() && !input_waiting() && !vanished() && std::chrono::steady_clock::now() < end) Sleep(1);
  }

  LineErrors take_line_errors() override {
    LineErrors errors;
    DWORD bits = 0;
    if (!is_open() || ClearCommError(port_.get(), &bits, nullptr) == 0) return errors;
    for (const LineErrorBit& row : kLineErrorBits) errors.*row.flag = (bits & row.bit) != 0;
    return errors;
  }

  [[nodiscard]] bool vanished() const override { return vanish_error_ != 0; }
  [[nodiscard]] int vanish_error() const override { return vanish_error_; }

 private:
  [[nodiscard]] bool is_open() const { return port_.is_open(); }

  void note_open_result(DWORD error) {
    const auto* const reason =
        std::find_if(kReasons.begin(), kReasons.end(), [error](const Reason& row) { return row.error == error; });
    problem_ = reason == kReasons.end() ? OpenProblem::Other : reason->problem;
  }

  // Remembers a failure that only a port that is gone gives; returns the error.
  int note_failure(DWORD error) {
    // A driver that was set up to abort on line errors refuses everything after one, until it has been cleared.
    const bool line_error = error == ERROR_OPERATION_ABORTED && ClearCommError(port_.get(), nullptr, nullptr) != 0;
    const bool gone =
        !line_error && std::find(kVanishErrors.begin(), kVanishErrors.end(), error) != kVanishErrors.end();
    if (vanish_error_ == 0 && gone) vanish_error_ = static_cast<int>(error);
    return static_cast<int>(error);
  }

  void fill_buffer() {
    if (!is_open() || vanished()) return;
    next_ = end_ = 0;
    DWORD errors = 0;
    COMSTAT status{};
    if (ClearCommError(port_.get(), &errors, &status) == 0) {
      note_failure(GetLastError());
      return;
    }
    const DWORD wanted = std::min(status.cbInQue, static_cast<DWORD>(buffer_.size()));
    if (wanted == 0) return;
    DWORD got = 0;
    if (ReadFile(port_.get(), buffer_.data(), wanted, &got, nullptr) == 0) note_failure(GetLastError());
    end_ = got;
  }

  base::Win32Handle port_;
  std::optional<FineTimer> timer_;  // while the port is open
  OpenProblem problem_ = OpenProblem::None;
  DCB line_{};
  std::optional<DCB> found_;  // the line as it was; none before it was read
  int vanish_error_ = 0;
  std::array<std::uint8_t, 256> buffer_{};
  std::size_t next_ = 0;
  std::size_t end_ = 0;
};

}  // namespace

std::unique_ptr<SerialDevice> make_system_device() { return std::make_unique<Win32Device>(); }

// Without the prefix only COM1 to COM9 are port names.
std::string device_path(std::string_view port_name) {
  return std::string(port_name.starts_with(R"(\\)") ? "" : R"(\\.\)") + std::string(port_name);
}

}  // namespace serial
