#include "simulators/pty_host.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <thread>

#include "simulators/garmin_simulator.h"

namespace simulators {
namespace {

using base::Bytes;

class RealClock : public base::Clock {
 public:
  [[nodiscard]] std::chrono::microseconds monotonic() const override {
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now().time_since_epoch());
  }
  [[nodiscard]] std::int64_t unix_seconds() const override { return 1000000000; }
  [[nodiscard]] int utc_offset_seconds() const override { return 0; }
  void pause(std::chrono::microseconds duration) override { std::this_thread::sleep_for(duration); }
};

const Bytes kAskProduct{0x10, 0xFE, 1, 0x20, 0xE1, 0x10, 3};
const Bytes kProductAsked{0x10, 6, 2, 0xFE, 0, 0xFA, 0x10, 3};

// Opens the port as a host program does, says one thing and reads `size` bytes or to the port's end.
Bytes talk(const std::string& path, const Bytes& bytes, std::size_t size) {
  const int port = open(path.c_str(), O_RDWR | O_NOCTTY);
  EXPECT_GE(port, 0);
  EXPECT_EQ(write(port, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  Bytes heard;
  pollfd poll_port{.fd = port, .events = POLLIN, .revents = 0};
  while (heard.size() < size && poll(&poll_port, 1, 5000) > 0) {
    std::uint8_t byte = 0;
    if (read(port, &byte, 1) != 1) break;
    heard.push_back(byte);
  }
  close(port);
  return heard;
}

TEST(PtyHost, HostsComeAndGoUntilTheReceiverIsUnplugged) {
  RealClock clock;
  GarminOptions options;
  options.product_id = 7;
  options.description = "GPS";
  options.baud = 115200;
  options.faults = {{Fault::Kind::Unplug, 3}};
  GarminSimulator receiver({}, options, clock);
  const auto link = std::filesystem::temp_directory_path() / ("pelorix-pty-test-" + std::to_string(getpid()));
  PtyHost host;
  ASSERT_EQ(host.open(link.string()), "");
  EXPECT_EQ(std::filesystem::read_symlink(link), host.path());
  std::thread service([&] { host.serve(receiver, [] { return false; }); });
  const Bytes answer = talk(link.string(), kAskProduct, 22);
  EXPECT_EQ(Bytes(answer.begin(), answer.begin() + std::min<std::ptrdiff_t>(8, std::ssize(answer))), kProductAsked);
  EXPECT_EQ(talk(link.string(), kAskProduct, 22), answer);
  EXPECT_LT(talk(link.string(), kAskProduct, 22).size(), 22u);
  service.join();
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(link)));
}

TEST(PtyHost, AFileInTheLinksPlaceIsLeftAlone) {
  PtyHost host;
  EXPECT_NE(host.open(std::filesystem::temp_directory_path().string()), "");
}

}  // namespace
}  // namespace simulators
