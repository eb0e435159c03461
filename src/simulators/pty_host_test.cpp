#include "simulators/pty_host.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <vector>

namespace simulators {
namespace {

// Writes down what it is told, and sends nothing.
class ListeningReceiver : public SimulatedReceiver {
 public:
  void set_host_speed(int bits_per_second) override { speeds.push_back(bits_per_second); }
  void receive(std::span<const std::uint8_t> bytes) override { heard += bytes.size(); }
  [[nodiscard]] std::size_t input_room() override { return 4096; }
  [[nodiscard]] bool output_ready() override { return false; }
  std::optional<std::uint8_t> take_output() override { return std::nullopt; }
  [[nodiscard]] std::chrono::microseconds next_output_in(std::chrono::microseconds) override { return kNever; }
  [[nodiscard]] bool unplugged() override { return false; }

  std::vector<int> speeds;
  std::size_t heard = 0;
};

TEST(PtyHost, TheReceiverIsToldTheSpeedOfTheLineBeforeWhatTheHostWrote) {
  PtyHost host;
  ASSERT_EQ(host.open(), "");
  const int line = ::open(host.path().c_str(), O_RDWR | O_NOCTTY);
  ASSERT_GE(line, 0);
  ListeningReceiver receiver;
  const auto say_at = [&](speed_t speed) {
    termios settings{};
    tcgetattr(line, &settings);
    cfsetspeed(&settings, speed);
    tcsetattr(line, TCSANOW, &settings);
    const std::size_t wanted = receiver.heard + 1;
    ASSERT_EQ(::write(line, "U", 1), 1);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    host.serve(receiver, [&] { return receiver.heard >= wanted || std::chrono::steady_clock::now() > end; });
    EXPECT_EQ(receiver.heard, wanted);
  };
  say_at(B1200);
  say_at(B19200);
  say_at(B110);  // no receiver has this one
  EXPECT_EQ(receiver.speeds, (std::vector{1200, 19200, 0}));
  ::close(line);
}

}  // namespace
}  // namespace simulators
