#include "simulators/pty_host.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace simulators {

namespace {

using std::chrono::microseconds;

constexpr microseconds kBatch = std::chrono::milliseconds(8);
constexpr microseconds kLongestSleep = std::chrono::milliseconds(100);
constexpr std::size_t kMostPending = 4096;

struct SpeedCode {
  speed_t code;
  int bits_per_second;
};
constexpr std::array kSpeedCodes = std::to_array<SpeedCode>({{B1200, 1200},
                                                             {B1800, 1800},
                                                             {B2400, 2400},
                                                             {B4800, 4800},
                                                             {B9600, 9600},
                                                             {B19200, 19200},
                                                             {B38400, 38400},
                                                             {B57600, 57600},
                                                             {B115200, 115200},
                                                             {B230400, 230400}});

std::string failure(const std::string& what) { return what + ": " + std::strerror(errno); }

std::string make_link(const std::string& target, const std::string& link) {
  std::error_code error;
  if (std::filesystem::is_symlink(std::filesystem::symlink_status(link, error))) {
    std::filesystem::remove(link, error);
  }
  std::filesystem::create_symlink(target, link, error);
  return error ? "Cannot make the link " + link + ": " + error.message() : std::string();
}

}  // namespace

std::string PtyHost::open(const std::string& link) {
  close();
  master_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
    return failure("Cannot make a pseudo-terminal");
  }
  const char* name = ptsname(master_);
  if (name == nullptr) return failure("Cannot make a pseudo-terminal");
  path_ = name;
  slave_ = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
  termios settings{};
  if (slave_ < 0 || tcgetattr(slave_, &settings) != 0) return failure("Cannot open " + path_);
  cfmakeraw(&settings);
  if (tcsetattr(slave_, TCSANOW, &settings) != 0 || fcntl(master_, F_SETFL, O_NONBLOCK) != 0) {
    return failure("Cannot set up " + path_);
  }
  if (link.empty()) return {};
  const std::string problem = make_link(path_, link);
  if (problem.empty()) link_ = link;
  return problem;
}

void PtyHost::close() {
  if (slave_ >= 0) ::close(slave_);
  if (master_ >= 0) ::close(master_);
  slave_ = master_ = -1;
  std::error_code error;
  if (!link_.empty() && std::filesystem::read_symlink(link_, error) == path_) {
    std::filesystem::remove(link_, error);
  }
  link_.clear();
  pending_.clear();
}

void PtyHost::serve(SimulatedReceiver& receiver, const std::function<bool()>& stop) {
  while (master_ >= 0 && !stop()) {
    take_due_output(receiver);
    write_pending();
    if (receiver.unplugged()) return close();
    wait(receiver);
    read_input(receiver);
  }
}

void PtyHost::take_due_output(SimulatedReceiver& receiver) {
  while (pending_.size() < kMostPending) {
    const std::optional<std::uint8_t> byte = receiver.take_output();
    if (!byte) return;
    pending_.push_back(static_cast<char>(*byte));
  }
}

void PtyHost::write_pending() {
  if (pending_.empty()) return;
  const ssize_t written = ::write(master_, pending_.data(), pending_.size());
  if (written > 0) pending_.erase(0, static_cast<std::size_t>(written));
}

void PtyHost::wait(SimulatedReceiver& receiver) {
  short events = receiver.input_room() > 0 ? POLLIN : 0;
  microseconds longest = kLongestSleep;
  if (pending_.empty()) {
    longest = std::min(longest, receiver.next_output_in(kBatch));
  } else {
    events |= POLLOUT;  // what is due later has to wait behind it anyway
  }
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(longest);
  const timespec timeout{.tv_sec = seconds.count(), .tv_nsec = std::chrono::nanoseconds(longest - seconds).count()};
  pollfd terminal{.fd = master_, .events = events, .revents = 0};
  ppoll(&terminal, 1, &timeout, nullptr);  // a signal ends it early, which is as good
}

// A pseudo-terminal carries bytes at any speed, but remembers which one the host program has set.
void PtyHost::tell_speed(SimulatedReceiver& receiver) const {
  termios settings{};
  if (tcgetattr(slave_, &settings) != 0) return;
  const auto row = std::ranges::find(kSpeedCodes, cfgetospeed(&settings), &SpeedCode::code);
  receiver.set_host_speed(row != kSpeedCodes.end() ? row->bits_per_second : 0);
}

void PtyHost::read_input(SimulatedReceiver& receiver) {
  std::array<std::uint8_t, 4096> buffer{};
  const std::size_t room = std::min(buffer.size(), receiver.input_room());
  if (room == 0) return;
  const ssize_t size = ::read(master_, buffer.data(), room);
  if (size <= 0) return;
  tell_speed(receiver);
  receiver.receive(std::span(buffer).first(static_cast<std::size_t>(size)));
}

}  // namespace simulators
