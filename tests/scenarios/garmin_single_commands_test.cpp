// What the single commands show of a receiver's answers.
#include "tests/support/hostile_receiver.h"
#include "tests/support/transfer_scenario.h"

namespace {

using base::ByteWriter;
using support::HostileReceiver;

constexpr int kPosition = 2, kTime = 5, kPowerOff = 8, kVoltages = 17;

class SingleCommand : public support::TransferScenario {
 protected:
  HostileReceiver& meet() {
    HostileReceiver& receiver = attach(std::make_unique<HostileReceiver>(clock));
    receiver.answers = {{HostileReceiver::kIdentification,
                         {HostileReceiver::product(128, 250), HostileReceiver::array("L001 A010 A600 D600 A700 D700")}},
                        // 1 June 2002 12:34:56, and 40 N 100 W in radians.
                        {kTime, {{14, {6, 1, 0xD2, 0x07, 12, 0, 34, 56}}}},
                        {kPosition, {{17, ByteWriter().f64(0.6981317007977318).f64(-1.7453292519943295).result()}}}};
    return receiver;
  }
  std::string voltages_shown(std::int16_t internal, std::int16_t external) {
    meet().answers[kVoltages] = {{40, ByteWriter().i16(internal).i16(external).result()}};
    const bool read = session->get_voltages();
    EXPECT_EQ(read, front_end.lines[4] != "Can't read voltages");
    return front_end.lines[4];
  }
};

TEST_F(SingleCommand, OneVoltageOfAtLeastOneVoltIsEnoughToShowBoth) {
  EXPECT_EQ(voltages_shown(1250, 0), "Int: 12.50,  Ext:  0.00");
  EXPECT_EQ(voltages_shown(99, 100), "Int:  0.99,  Ext:  1.00");
  EXPECT_EQ(voltages_shown(99, -1), "Can't read voltages");
}

TEST_F(SingleCommand, TheTimeIsShownInUtcWhateverTheZone) {
  meet();
  session->settings.TimeOffsetHours = 2;
  EXPECT_TRUE(session->get_time());
  EXPECT_EQ(front_end.lines[4], "Sat Jun 01 12:34:56 2002 UTC");
}

TEST_F(SingleCommand, ThePositionIsShownAsFilesAreWritten) {
  meet();
  EXPECT_TRUE(session->get_position());
  EXPECT_EQ(front_end.lines[4], "N40 00.0000 W100 00.0000 Sat Jun 01 12:34:56 2002");
  session->settings.TimeOffsetHours = 2;
  session->settings.externaldatum = "NAD27_CONUS";
  session->settings.DMSMode = geodesy::Notation::Ddd;
  EXPECT_TRUE(session->get_position());
  EXPECT_EQ(front_end.lines[4], "N39.9999905 W099.9995824 Sat Jun 01 14:34:56 2002");
  session->settings.externaldatum = "Atlantis";
  EXPECT_FALSE(session->get_position());
  EXPECT_THAT(front_end.boxes, testing::SizeIs(1));
}

TEST_F(SingleCommand, TheReceiverIsTurnedOffOnlyAfterAYes) {
  HostileReceiver& receiver = meet();
  front_end.answer = false;
  EXPECT_FALSE(session->power_off());
  EXPECT_THAT(receiver.heard, testing::IsEmpty());
  EXPECT_EQ(front_end.lines[1], "The GPS receiver was not turned off.");
  front_end.answer = true;
  EXPECT_TRUE(session->power_off());
  EXPECT_EQ(receiver.heard.back().data, (base::Bytes{kPowerOff, 0}));
  EXPECT_EQ(front_end.questions.back(),
            std::pair(std::string("Turn off GPS"), std::string("Turn off the GPS receiver?")));
}

}  // namespace
