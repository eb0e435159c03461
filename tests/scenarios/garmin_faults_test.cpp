// Lines that disturb, receivers that fall silent, adapters that are pulled out, and users who change their
// mind, at every packet of a download.
#include "tests/support/transfer_scenario.h"

namespace {

using garmin::Kind;
using simulators::Fault;
using simulators::GarminOptions;
using support::ObservedGarmin;

constexpr int kFirstTransferPacket = 3;  // after product data and capability array
constexpr int kPackets = 46;             // of a download of all kinds of the short weekend

class FaultyDownload : public support::TransferScenario {
 protected:
  static GarminOptions with_fault(Fault::Kind kind, int packet) {
    GarminOptions options;
    options.faults = {{kind, packet}};
    return options;
  }
  bool download_with(Fault::Kind kind, int packet, Kind what = Kind::All) {
    simulate(support::short_weekend(), with_fault(kind, packet));
    session->settings.SA_SortAfterInput = 0;
    return download(what);
  }
  std::vector<std::string> undisturbed(Kind what = Kind::All) {
    EXPECT_TRUE(download_with(Fault::Kind::Noise, 1000, what));
    return whole_store();
  }
  // That what is stored is part of the whole; of the latest route point the link may be missing.
  void expect_part_of(const std::vector<std::string>& whole) {
    int strangers = 0;
    for (const std::string& record : whole_store())
      if (std::ranges::find(whole, record) == whole.end()) ++strangers;
    EXPECT_LE(strangers, items().route_count() > 0 ? 1 : 0);
  }
  // That the fault, at any of the packets, changes nothing of what is stored.
  void expect_no_harm(Fault::Kind kind) {
    const std::vector<std::string> whole = undisturbed();
    for (int packet = 1; packet <= kPackets; ++packet) {
      SCOPED_TRACE(packet);
      EXPECT_TRUE(download_with(kind, packet));
      EXPECT_EQ(whole_store(), whole);
      EXPECT_THAT(front_end.boxes, testing::IsEmpty());
      EXPECT_EQ(front_end.lines[6], "Proximity download completed");
      EXPECT_LT(elapsed, 4.5);
    }
  }
};

TEST_F(FaultyDownload, ALostAcknowledgementLosesNothingAndDoublesNothing) { expect_no_harm(Fault::Kind::DropAck); }

TEST_F(FaultyDownload, ADamagedPacketLosesNothingAndDoublesNothing) { expect_no_harm(Fault::Kind::BadChecksum); }

TEST_F(FaultyDownload, NoiseBeforeAPacketLosesNothingAndDoublesNothing) { expect_no_harm(Fault::Kind::Noise); }

TEST_F(FaultyDownload, NoiseOnEveryThirdPacketAndLostAnswersBetweenLoseNothing) {
  const std::vector<std::string> whole = undisturbed();
  GarminOptions options;
  for (int packet = kFirstTransferPacket; packet <= kPackets; ++packet) {
    constexpr std::array kKinds{Fault::Kind::Noise, Fault::Kind::DropAck, Fault::Kind::BadChecksum};
    options.faults.push_back({kKinds[static_cast<std::size_t>(packet % 3)], packet});
  }
  simulate(support::short_weekend(), options);
  session->settings.SA_SortAfterInput = 0;
  EXPECT_TRUE(download(Kind::All));
  EXPECT_EQ(whole_store(), whole);
}

TEST_F(FaultyDownload, WhatCameBeforeTheReceiverFellSilentIsKept) {
  const std::vector<std::string> whole = undisturbed(Kind::Waypoints);
  ASSERT_EQ(whole.size(), 4U);
  for (int packet = kFirstTransferPacket; packet <= kFirstTransferPacket + 5; ++packet) {
    SCOPED_TRACE(packet);
    EXPECT_FALSE(download_with(Fault::Kind::Silent, packet, Kind::Waypoints));
    const auto kept = static_cast<std::ptrdiff_t>(std::clamp(packet - kFirstTransferPacket - 1, 0, 4));
    EXPECT_EQ(whole_store(), std::vector(whole.begin(), whole.begin() + kept));
    EXPECT_THAT(front_end.boxes, testing::ElementsAre(testing::Pair("Download", "Serial Port Timeout")));
    EXPECT_THAT(front_end.lines[3], testing::HasSubstr("broke off"));
    EXPECT_GE(elapsed, 6.0);
    EXPECT_LE(elapsed, 8.0);
    EXPECT_FALSE(session->flags.PortOpen);
    EXPECT_EQ(front_end.lines.count(4) != 0 ? front_end.lines[4] : "", "");
  }
}

TEST_F(FaultyDownload, AnAdapterThatIsPulledOutEndsTheDownloadAtOnce) {
  const std::vector<std::string> whole = undisturbed();
  std::size_t least_kept = 0;
  for (int packet = kFirstTransferPacket; packet <= kPackets; ++packet) {
    SCOPED_TRACE(packet);
    EXPECT_FALSE(download_with(Fault::Kind::Unplug, packet));
    expect_part_of(whole);
    const std::size_t kept = whole_store().size();
    EXPECT_GE(kept, least_kept);
    least_kept = kept;
    EXPECT_THAT(front_end.boxes, testing::ElementsAre(testing::Pair("Download", "Serial Port Timeout")));
    EXPECT_LE(elapsed, 3.0);
    EXPECT_FALSE(session->flags.PortOpen);
  }
  EXPECT_EQ(least_kept, whole.size());  // only the closing packet was missing
}

TEST_F(FaultyDownload, ThatTheAdapterIsGoneStandsOnLine3WhateverWasBeingDownloaded) {
  for (const Kind kind : {Kind::Waypoints, Kind::Tracks, Kind::Routes, Kind::ProximityWaypoints}) {
    SCOPED_TRACE(static_cast<int>(kind));
    EXPECT_FALSE(download_with(Fault::Kind::Unplug, kFirstTransferPacket + 2, kind));
    EXPECT_EQ(front_end.lines[3], "The port sim:garmin has vanished (adapter unplugged?). Plug it in and try again.");
  }
}

TEST_F(FaultyDownload, AReceiverThatIsNotThereIsToldSoBeforeAnythingIsAsked) {
  EXPECT_FALSE(download_with(Fault::Kind::Silent, 1));
  EXPECT_THAT(front_end.boxes, testing::ElementsAre(testing::Pair("COM Timeout", "Serial Port Timeout")));
  EXPECT_EQ(front_end.lines[1], "Failed to open COM port!");
  EXPECT_THAT(front_end.lines[3], testing::HasSubstr("GARMIN"));
  EXPECT_LE(elapsed, 9.0);  // and 2.5 s of them listening whether it talks NMEA

  EXPECT_FALSE(download_with(Fault::Kind::Unplug, 1));
  EXPECT_THAT(front_end.lines[3], testing::HasSubstr("has vanished"));
  EXPECT_LE(elapsed, 3.0);
  EXPECT_TRUE(items().empty());
}

TEST_F(FaultyDownload, AfterASilenceTheNextDownloadIsCompleteAgain) {
  const std::vector<std::string> whole = undisturbed();
  EXPECT_FALSE(download_with(Fault::Kind::Silent, 20));
  EXPECT_NE(whole_store(), whole);
  EXPECT_EQ(undisturbed(), whole);
}

class AbortedDownload : public FaultyDownload {
 protected:
  [[nodiscard]] int count() { return static_cast<int>(support::all_records(items()).size()); }
  static bool is_abort(const base::Bytes& sent) {
    return sent == base::Bytes{0x10, 0x0A, 0x02, 0x00, 0x00, 0xF4, 0x10, 0x03};
  }
};

TEST_F(AbortedDownload, EscKeepsWhatCameTellsTheReceiverAndClosesThePort) {
  const std::vector<std::string> whole = undisturbed();
  for (int after = 1; after < static_cast<int>(whole.size()); ++after) {
    SCOPED_TRACE(after);
    ObservedGarmin& receiver = simulate(support::short_weekend());
    session->settings.SA_SortAfterInput = 0;
    front_end.esc = [this, after] { return count() >= after; };
    EXPECT_FALSE(download(Kind::All));
    EXPECT_GE(count(), after);
    EXPECT_LE(count(), after + 1);  // a route point is a waypoint too
    expect_part_of(whole);
    EXPECT_EQ(front_end.lines[2], "Operation Aborted");
    EXPECT_TRUE(is_abort(receiver.sent.back()));
    EXPECT_FALSE(receiver.is_open);
    EXPECT_FALSE(session->flags.PortOpen);
    EXPECT_FALSE(session->flags.UserAbort);
    EXPECT_EQ(front_end.status[1], " ");
    EXPECT_EQ(front_end.status[3], " ");
    EXPECT_EQ(front_end.progress_range, 0);
    EXPECT_THAT(front_end.boxes, testing::IsEmpty());
  }
}

TEST_F(AbortedDownload, ADownloadAfterEscIsComplete) {
  const std::vector<std::string> whole = undisturbed();
  for (const int after : {1, 4, 9, 14, 20}) {
    simulate(support::short_weekend());
    session->settings.SA_SortAfterInput = 0;
    front_end.esc = [this, after] { return count() >= after; };
    EXPECT_FALSE(download(Kind::All));
    front_end.esc = {};
    items().clear_all();
    EXPECT_TRUE(download(Kind::All));
    auto now = whole_store();
    EXPECT_EQ(now.size(), whole.size()) << after;
    EXPECT_THAT(front_end.boxes, testing::IsEmpty());
  }
}

TEST_F(AbortedDownload, EscWhileTheReceiverIsLookedForEndsWithoutABox) {
  ObservedGarmin& receiver = simulate(support::short_weekend());
  front_end.esc = [] { return true; };
  EXPECT_FALSE(download(Kind::All));
  EXPECT_EQ(front_end.lines[2], "Operation Aborted");
  EXPECT_THAT(front_end.boxes, testing::IsEmpty());
  EXPECT_FALSE(receiver.is_open);
  EXPECT_TRUE(items().empty());
}

}  // namespace
