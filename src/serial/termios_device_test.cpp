#include "serial/termios_device.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "base/byte_cursor.h"
#include "serial/system_device.h"

namespace serial {
namespace {

using base::Bytes;
using std::chrono::milliseconds;

// A pseudo-terminal: the test holds the receiver's end, the device is opened by name.
class PseudoTerminal : public ::testing::Test {
 protected:
  PseudoTerminal() {
    grantpt(far_end_);
    unlockpt(far_end_);
    name_ = ptsname(far_end_);
  }
  ~PseudoTerminal() override { unplug(); }

  void unplug() {
    if (far_end_ >= 0) ::close(far_end_);
    far_end_ = -1;
  }
  void receiver_sends(const Bytes& bytes) {
    ASSERT_EQ(::write(far_end_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  Bytes receiver_got() {
    Bytes bytes(256);
    const ssize_t got = ::read(far_end_, bytes.data(), bytes.size());
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return bytes;
  }
  void open_line() {
    ASSERT_EQ(device_.open(name_), 0);
    ASSERT_EQ(device_.read_settings(), 0);
    ASSERT_EQ(device_.apply_settings({}), 0);
  }
  termios line() const {
    termios now{};
    tcgetattr(far_end_, &now);
    return now;
  }

  int far_end_ = posix_openpt(O_RDWR | O_NOCTTY);
  std::string name_;
  TermiosDevice device_;
};

TEST_F(PseudoTerminal, EveryByteValuePassesUnchangedBothWays) {
  open_line();
  ASSERT_EQ(device_.apply_settings({.speed_bps = 115200}), 0);
  Bytes all(256);
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i);
  ASSERT_EQ(device_.write(all), 0);
  EXPECT_EQ(receiver_got(), all);
  receiver_sends(all);
  Bytes received;
  while (received.size() < all.size()) {
    device_.wait_for_input(milliseconds(1000));
    ASSERT_TRUE(device_.input_waiting());
    received.push_back(*device_.read_byte());
  }
  EXPECT_EQ(received, all);
  EXPECT_FALSE(device_.read_byte());
  EXPECT_FALSE(device_.vanished());
}

TEST_F(PseudoTerminal, TheLineIsLeftAsItWasFound) {
  termios odd = line();
  cfsetspeed(&odd, B1200);
  odd.c_cflag = (odd.c_cflag & ~static_cast<tcflag_t>(CSIZE | CLOCAL)) | CS8 | CSTOPB | HUPCL;
  odd.c_lflag |= ECHO | ICANON;
  odd.c_iflag |= IXON | IXOFF | ICRNL;
  odd.c_cc[VMIN] = 7;
  ASSERT_EQ(tcsetattr(far_end_, TCSANOW, &odd), 0);
  const termios before = line();
  open_line();
  const termios during = line();
  EXPECT_EQ(cfgetospeed(&during), static_cast<speed_t>(B9600));
  EXPECT_EQ(during.c_lflag & (ECHO | ICANON), 0u);
  EXPECT_EQ(during.c_iflag & (IXON | IXOFF | ICRNL), 0u);
  EXPECT_EQ(device_.restore_settings(), 0);
  EXPECT_EQ(device_.close(), 0);
  const termios after = line();
  EXPECT_EQ(after.c_iflag, before.c_iflag);
  EXPECT_EQ(after.c_oflag, before.c_oflag);
  EXPECT_EQ(after.c_cflag, before.c_cflag);
  EXPECT_EQ(after.c_lflag, before.c_lflag);
  EXPECT_EQ(after.c_cc[VMIN], 7);
}

TEST_F(PseudoTerminal, AProgramThatEndsWithoutClosingLeavesTheLineAsItWasFoundToo) {
  const termios before = line();
  {
    TermiosDevice other;
    ASSERT_EQ(other.open(name_), 0);
    ASSERT_EQ(other.read_settings(), 0);
    ASSERT_EQ(other.apply_settings({.speed_bps = 4800}), 0);
    ASSERT_NE(line().c_lflag, before.c_lflag);
  }
  EXPECT_EQ(line().c_lflag, before.c_lflag);
  EXPECT_EQ(line().c_cflag, before.c_cflag);
}

TEST_F(PseudoTerminal, ASecondProgramFindsThePortInUseUntilItIsClosed) {
  open_line();
  TermiosDevice other;
  EXPECT_EQ(other.open(name_), EBUSY);
  EXPECT_EQ(other.open_problem(), OpenProblem::InUse);
  device_.close();
  EXPECT_EQ(other.open(name_), 0);
  EXPECT_EQ(other.open_problem(), OpenProblem::None);
}

TEST_F(PseudoTerminal, AnUnpluggedPortVanishesAfterItsLastBytesWereRead) {
  open_line();
  receiver_sends({0x41});
  device_.wait_for_input(milliseconds(1000));
  ASSERT_TRUE(device_.input_waiting());
  unplug();
  EXPECT_EQ(device_.read_byte(), 0x41);
  device_.wait_for_input(milliseconds(1000));
  EXPECT_FALSE(device_.input_waiting());
  EXPECT_TRUE(device_.vanished());
  EXPECT_EQ(device_.write(Bytes{1}), EIO);
  device_.restore_settings();
  device_.close();
  EXPECT_EQ(device_.open(name_), ENOENT);
  EXPECT_FALSE(device_.vanished());
}

TEST_F(PseudoTerminal, AWriteToAPortThatIsGoneShowsItToo) {
  open_line();
  unplug();
  EXPECT_NE(device_.write(Bytes{1}), 0);
  EXPECT_TRUE(device_.vanished());
}

TEST_F(PseudoTerminal, WaitingEndsWithTheByteNotWithTheTime) {
  open_line();
  const auto start = std::chrono::steady_clock::now();
  std::thread receiver([this] { receiver_sends({1}); });
  device_.wait_for_input(milliseconds(10000));
  receiver.join();
  EXPECT_TRUE(device_.input_waiting());
  EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(5000));
}

TEST_F(PseudoTerminal, LinesThatNoPortCanBeSetToAreRefused) {
  open_line();
  EXPECT_EQ(device_.apply_settings({.speed_bps = 12345}), EINVAL);
  EXPECT_EQ(device_.apply_settings({.data_bits = 9}), EINVAL);
  EXPECT_EQ(device_.apply_settings({.stop_bits = 1}), EINVAL);
  EXPECT_EQ(device_.apply_settings({.parity = 5}), EINVAL);
  EXPECT_EQ(device_.apply_settings({.speed_bps = 115200}), 0);
}

TEST(TermiosDevice, APortThatIsNotThereGivesError2) {
  TermiosDevice device;
  EXPECT_EQ(device.open("/dev/no-such-port"), 2);
  EXPECT_EQ(device.open_problem(), OpenProblem::NoSuchPort);
  EXPECT_EQ(device.restore_settings(), 6);
  EXPECT_EQ(device.close(), 6);
  EXPECT_EQ(device.write(Bytes{1}), 6);
}

TEST(TermiosDevice, FilesFoldersAndOtherDevicesAreNotSerial) {
  TermiosDevice device;
  for (const char* name : {"/dev/null", "/tmp"}) {
    EXPECT_NE(device.open(name), 0) << name;
    EXPECT_EQ(device.open_problem(), OpenProblem::NotSerial) << name;
  }
  const std::string file = ::testing::TempDir() + "no_port";
  ::close(::open(file.c_str(), O_CREAT | O_RDWR, 0600));
  EXPECT_EQ(device.open(file), ENOTTY);
  EXPECT_EQ(device.open_problem(), OpenProblem::NotSerial);
  std::filesystem::remove(file);
}

TEST(TermiosDevice, RefusalsAreToldApart) {
  EXPECT_EQ(open_problem_of(EACCES), OpenProblem::NoPermission);
  EXPECT_EQ(open_problem_of(EBUSY), OpenProblem::InUse);
  EXPECT_EQ(open_problem_of(EIO), OpenProblem::NoSuchPort);
  EXPECT_EQ(open_problem_of(ENOMEM), OpenProblem::Other);
}

TEST(DevicePath, WindowsNamesAndBareNamesFindTheirDevice) {
  EXPECT_EQ(device_path("COM1"), "/dev/ttyS0");
  EXPECT_EQ(device_path("com12"), "/dev/ttyS11");
  EXPECT_EQ(device_path("ttyUSB0"), "/dev/ttyUSB0");
  EXPECT_EQ(device_path("pts/3"), "/dev/pts/3");
  EXPECT_EQ(device_path("/dev/serial/by-id/usb-x"), "/dev/serial/by-id/usb-x");
  EXPECT_EQ(device_path("./pty"), "./pty");
  EXPECT_EQ(device_path("COM0"), "/dev/COM0");
  EXPECT_EQ(device_path("COMA"), "/dev/COMA");
}

}  // namespace
}  // namespace serial
