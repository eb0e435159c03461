#include "serial/termios_device.h"

#include <fcntl.h>
#include <grp.h>
#include <linux/serial.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <thread>

#include "base/text.h"
#include "serial/system_device.h"

namespace serial {
namespace {

using std::chrono::steady_clock;

// How long a USB adapter may keep bytes before it begins to send them, with some to spare.
constexpr std::chrono::milliseconds kAdapterDelay{20};
// A write is given up when the line has not taken it in twice the time that it needs, and this much more.
constexpr std::chrono::seconds kWritePatience{2};
constexpr short kGone = POLLHUP | POLLERR | POLLNVAL;

struct Speed {
  int bps;
  speed_t code;
};
constexpr std::array kSpeeds{Speed{1200, B1200},   Speed{2400, B2400},   Speed{4800, B4800},   Speed{9600, B9600},
                             Speed{19200, B19200}, Speed{38400, B38400}, Speed{57600, B57600}, Speed{115200, B115200}};
constexpr std::array<tcflag_t, 4> kDataBits{CS5, CS6, CS7, CS8};
constexpr std::array<tcflag_t, 5> kParities{0, PARENB | PARODD, PARENB, PARENB | PARODD | CMSPAR, PARENB | CMSPAR};

struct Reason {
  int error;
  OpenProblem problem;
};
constexpr std::array kReasons{
    Reason{0, OpenProblem::None},
    Reason{ENOENT, OpenProblem::NoSuchPort},
    Reason{ENOTDIR, OpenProblem::NoSuchPort},
    Reason{ENODEV, OpenProblem::NoSuchPort},
    Reason{ENXIO, OpenProblem::NoSuchPort},
    Reason{EIO, OpenProblem::NoSuchPort},  // a name without hardware behind it, such as most of /dev/ttyS*
    Reason{EACCES, OpenProblem::NoPermission},
    Reason{EPERM, OpenProblem::NoPermission},
    Reason{EBUSY, OpenProblem::InUse},
    Reason{ENOTTY, OpenProblem::NotSerial},
    Reason{EISDIR, OpenProblem::NotSerial},
    Reason{EINVAL, OpenProblem::NotSerial},
};

bool means_vanished(int error) { return error == EIO || error == ENXIO || error == ENODEV || error == EBADF; }

// Eight data bits, start and stop.
std::chrono::microseconds wire_time(std::size_t bytes, int speed_bps) {
  return std::chrono::microseconds(static_cast<std::int64_t>(bytes) * 10'000'000 / speed_bps);
}

int whole_milliseconds(std::chrono::nanoseconds time) {
  return static_cast<int>(
      std::clamp<std::int64_t>(std::chrono::ceil<std::chrono::milliseconds>(time).count(), 0, 60'000));
}

// The group that the file's mode lets in; joining root's own would give away far more than a port.
std::string group_with_access(const char* path) {
  struct stat status {};
  if (stat(path, &status) != 0 || status.st_gid == 0 || (status.st_mode & 060) != 060) return {};
  const group* const owner = getgrgid(status.st_gid);
  return owner == nullptr ? std::string() : owner->gr_name;
}

}  // namespace

OpenProblem open_problem_of(int error) {
  const auto* const reason =
      std::find_if(kReasons.begin(), kReasons.end(), [error](const Reason& row) { return row.error == error; });
  return reason == kReasons.end() ? OpenProblem::Other : reason->problem;
}

std::string device_path(std::string_view port_name) {
  if (port_name.starts_with('/') || port_name.starts_with('.')) return std::string(port_name);
  if (base::equal_ignoring_case(port_name.substr(0, 3), "COM")) {
    const std::optional<long long> number = base::parse_integer(port_name.substr(3));
    if (number && *number > 0) return "/dev/ttyS" + std::to_string(*number - 1);
  }
  // A bare name is a device; failing that, a link to one in the current folder.
  const std::string device = "/dev/" + std::string(port_name);
  return access(device.c_str(), F_OK) != 0 && access(std::string(port_name).c_str(), F_OK) == 0 ? std::string(port_name)
                                                                                                : device;
}

std::unique_ptr<SerialDevice> make_system_device() { return std::make_unique<TermiosDevice>(); }

TermiosDevice::TermiosDevice() = default;

TermiosDevice::~TermiosDevice() {
  restore_settings();
  close();
}

int TermiosDevice::open(const std::string& name) {
  close();
  found_.reset();
  vanish_error_ = 0;
  output_ends_ = {};
  next_ = end_ = 0;
  const std::string path = device_path(name);
  fd_ = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  const int error = fd_ < 0 ? errno : claim();
  problem_ = open_problem_of(error);
  group_ = problem_ == OpenProblem::NoPermission ? group_with_access(path.c_str()) : std::string();
  if (error != 0) {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
    return error;
  }
  counts_ = error_counts();
  return 0;
}

// Makes sure that the open file is a terminal and nobody else's.
int TermiosDevice::claim() const {
  termios line{};
  if (tcgetattr(fd_, &line) != 0) return errno;
  if (flock(fd_, LOCK_EX | LOCK_NB) != 0) return errno == EWOULDBLOCK ? EBUSY : errno;
  int exclusive = 0;  // the system itself keeps out everybody but the administrator
  if (ioctl(fd_, TIOCGEXCL, &exclusive) == 0 && exclusive != 0) return EBUSY;
  // A pseudo-terminal would stay exclusive after a crash, as long as its other end is open.
  if (has_modem_lines()) ioctl(fd_, TIOCEXCL);
  return 0;
}

bool TermiosDevice::has_modem_lines() const {
  int lines = 0;
  return ioctl(fd_, TIOCMGET, &lines) == 0;
}

int TermiosDevice::read_settings() {
  if (fd_ < 0) return kNotOpen;
  auto line = std::make_unique<termios>();
  if (tcgetattr(fd_, line.get()) != 0) return note_failure(errno);
  found_ = std::move(line);
  return 0;
}

int TermiosDevice::apply_settings(const LineSettings& settings) {
  if (fd_ < 0) return kNotOpen;
  const auto* const speed =
      std::find_if(kSpeeds.begin(), kSpeeds.end(), [&](const Speed& row) { return row.bps == settings.speed_bps; });
  const bool one_and_a_half = settings.stop_bits == 1;  // which a line has with five data bits only
  if (speed == kSpeeds.end() || settings.data_bits < 5 || settings.data_bits > 8 || settings.stop_bits > 2 ||
      settings.parity >= kParities.size() || (one_and_a_half && settings.data_bits != 5))
    return EINVAL;
  termios line{};
  if (tcgetattr(fd_, &line) != 0) return note_failure(errno);
  cfmakeraw(&line);
  line.c_iflag &= ~static_cast<tcflag_t>(IXOFF | IXANY | INPCK | IGNPAR);
  line.c_cflag &= ~static_cast<tcflag_t>(CSIZE | CSTOPB | PARENB | PARODD | CMSPAR | CRTSCTS);
  line.c_cflag |= CLOCAL | CREAD | kDataBits[settings.data_bits - 5u] | kParities[settings.parity];
  if (settings.stop_bits != 0) line.c_cflag |= CSTOPB;
  // A read that finds nothing says so, instead of looking like a line that was hung up.
  line.c_cc[VMIN] = 1;
  line.c_cc[VTIME] = 0;
  cfsetispeed(&line, speed->code);
  cfsetospeed(&line, speed->code);
  let_output_leave();
  if (tcsetattr(fd_, TCSANOW, &line) != 0) return note_failure(errno);
  speed_bps_ = settings.speed_bps;
  int lines = TIOCM_DTR | TIOCM_RTS;
  ioctl(fd_, TIOCMBIS, &lines);  // a pseudo-terminal refuses, having none
  return 0;
}

int TermiosDevice::restore_settings() {
  if (fd_ < 0) return kNotOpen;
  if (!found_) return 0;
  let_output_leave();
  // Not after draining: a line that is stuck would never drain.
  return tcsetattr(fd_, TCSANOW, found_.get()) == 0 ? 0 : note_failure(errno);
}

int TermiosDevice::close() {
  if (fd_ < 0) return kNotOpen;
  let_output_leave();
  // What a stuck line has not taken by now would make the close wait for it, half a minute long.
  if (has_modem_lines()) tcflush(fd_, TCOFLUSH);
  ioctl(fd_, TIOCNXCL);
  const int error = ::close(fd_) == 0 ? 0 : errno;
  fd_ = -1;
  return error;
}

// The last bytes written, often a farewell to the receiver, are not cut by a change of speed or the close.
// What is written to a pseudo-terminal is at the other end already.
void TermiosDevice::let_output_leave() const {
  if (!vanished() && has_modem_lines()) std::this_thread::sleep_until(output_ends_);
}

int TermiosDevice::write(std::span<const std::uint8_t> bytes) {
  if (fd_ < 0) return kNotOpen;
  const auto start = steady_clock::now();
  const auto needed = wire_time(bytes.size(), speed_bps_);
  const auto deadline = start + 2 * needed + kWritePatience;
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd_, bytes.data(), bytes.size());
    if (written > 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(written));
      continue;
    }
    if (written < 0 && errno != EAGAIN && errno != EINTR) return note_failure(errno);
    const auto left = deadline - steady_clock::now();
    if (left <= left.zero()) return ETIMEDOUT;
    pollfd wait{fd_, POLLOUT, 0};
    poll(&wait, 1, whole_milliseconds(left));
  }
  output_ends_ = start + needed + kAdapterDelay;
  return 0;
}

bool TermiosDevice::input_waiting() {
  if (next_ == end_) fill_buffer();
  return next_ < end_;
}

std::optional<std::uint8_t> TermiosDevice::read_byte() {
  if (!input_waiting()) return std::nullopt;
  return buffer_[next_++];
}

void TermiosDevice::wait_for_input(std::chrono::milliseconds longest) {
  if (fd_ < 0 || vanished() || next_ < end_) return;
  pollfd wait{fd_, POLLIN, 0};
  if (poll(&wait, 1, whole_milliseconds(longest)) <= 0 || (wait.revents & kGone) == 0) return;
  fill_buffer();  // the last bytes are still there
  if (next_ == end_ && !vanished()) vanish_error_ = EIO;
}

void TermiosDevice::fill_buffer() {
  if (fd_ < 0 || vanished()) return;
  const ssize_t got = ::read(fd_, buffer_.data(), buffer_.size());
  next_ = 0;
  end_ = got > 0 ? static_cast<std::size_t>(got) : 0;
  if (got == 0) vanish_error_ = EIO;  // hung up
  if (got < 0) note_failure(errno);
}

// Remembers a failure that only a port that is gone gives; returns the error.
int TermiosDevice::note_failure(int error) {
  if (vanish_error_ == 0 && means_vanished(error)) vanish_error_ = error;
  return error;
}

std::optional<TermiosDevice::ErrorCounts> TermiosDevice::error_counts() const {
  serial_icounter_struct counts{};
  if (ioctl(fd_, TIOCGICOUNT, &counts) != 0) return std::nullopt;
  return ErrorCounts{counts.brk, counts.frame, counts.parity, counts.overrun, counts.buf_overrun};
}

LineErrors TermiosDevice::take_line_errors() {
  LineErrors errors;
  if (fd_ < 0 || !counts_) return errors;  // the device keeps no counts
  const std::optional<ErrorCounts> now = error_counts();
  if (!now) return errors;
  constexpr std::array kFlags{&LineErrors::break_received, &LineErrors::framing, &LineErrors::parity,
                              &LineErrors::overrun, &LineErrors::input_overflow};
  for (std::size_t i = 0; i < kFlags.size(); ++i) errors.*kFlags[i] = (*now)[i] != (*counts_)[i];
  counts_ = now;
  return errors;
}

}  // namespace serial
