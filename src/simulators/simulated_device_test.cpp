#include <gtest/gtest.h>

#include "simulators/garmin_sim_device.h"
#include "tests/support/stepping_clock.h"

namespace simulators {
namespace {

using base::Bytes;
using namespace std::chrono_literals;

const Bytes kAskProduct{0x10, 0xFE, 1, 0x20, 0xE1, 0x10, 3};

class SimulatedDeviceTest : public testing::Test {
 protected:
  GarminSimDevice& make(int baud, std::vector<Fault> faults = {}) {
    GarminOptions options;
    options.baud = baud;
    options.faults = std::move(faults);
    return device.emplace(SimulatedData{}, options, clock);
  }
  support::SteppingClock clock;
  std::optional<GarminSimDevice> device;
};

TEST_F(SimulatedDeviceTest, OnlyItsOwnNameOpensIt) {
  make(0);
  EXPECT_NE(device->open("sim:other"), 0);
  EXPECT_EQ(device->open_problem(), serial::OpenProblem::NoSuchPort);
  EXPECT_EQ(device->write(kAskProduct), serial::kNotOpen);
  EXPECT_EQ(device->open("sim:garmin"), 0);
  EXPECT_NE(device->open("sim:garmin"), 0);
  EXPECT_EQ(device->open_problem(), serial::OpenProblem::InUse);
}

TEST_F(SimulatedDeviceTest, AWaitEndsAtTheFirstByteAndNoLaterThanAsked) {
  make(9600).open("sim:garmin");
  device->write(kAskProduct);
  device->wait_for_input(5ms);
  EXPECT_FALSE(device->input_waiting());
  EXPECT_EQ(clock.now, 5ms);
  device->wait_for_input(100ms);
  EXPECT_TRUE(device->input_waiting());
  EXPECT_EQ(clock.now, 8334us);
}

TEST_F(SimulatedDeviceTest, AClosedPortWaitsItsTimeAndReadsNothingAndWhatCameMeanwhileIsLost) {
  make(0).open("sim:garmin");
  device->write(kAskProduct);
  device->close();
  device->wait_for_input(7ms);
  EXPECT_EQ(clock.now, 7ms);
  EXPECT_EQ(device->read_byte(), std::nullopt);
  device->open("sim:garmin");
  EXPECT_FALSE(device->input_waiting());
}

TEST_F(SimulatedDeviceTest, AWriteLongerThanTheLineTakesWaitsForTheLine) {
  make(9600).open("sim:garmin");
  EXPECT_EQ(device->write(Bytes(9600, 0x41)), 0);
  EXPECT_GT(clock.now, 5s);  // all but the last 4096 bytes are through
  EXPECT_LT(clock.now, 6s);
}

TEST_F(SimulatedDeviceTest, AnUnpluggedReceiverVanishesAndEndsWaits) {
  make(0, {{Fault::Kind::Unplug, 1}}).open("sim:garmin");
  EXPECT_FALSE(device->vanished());
  device->write(kAskProduct);
  EXPECT_TRUE(device->vanished());
  device->wait_for_input(5s);
  EXPECT_EQ(clock.now, 0us);
  EXPECT_EQ(device->write(kAskProduct), serial::kNotOpen);
  device->close();
  EXPECT_NE(device->open("sim:garmin"), 0);
}

}  // namespace
}  // namespace simulators
