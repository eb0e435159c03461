#include "lowrance/plot_trails.h"

#include "base/text.h"
#include "tests/support/lowrance_conversation.h"

namespace lowrance {
namespace {

using base::Bytes;
using testing::ElementsAre;
using testing::Pair;

constexpr std::uint32_t kArea = 0x21000;

// Bern: y 5955688, x 897614.
constexpr GridPoint kBern{0x005AE068, 0x000DB24E};

class PlotTrails : public support::LowranceConversation {
 protected:
  bool download(int trail) {
    remarks = {};
    const Conversation conversation(connection());
    return TrailDownload(connection(), items, {376000000}, remarks).download(trail);
  }
  bool upload(int trail, int track) {
    remarks = {};
    requests.clear();
    const Conversation conversation(connection());
    return TrailUpload(connection(), items, remarks).upload(trail, track);
  }
  // A selected point at the place.
  void add_point(const GridPoint& place, bool starts = false) {
    if (starts) items.start_segment();
    items.start_item();
    items.CurrentItem.position = *from_grid(place);
    ASSERT_EQ(items.push_track(), 0);
    items.select('T', items.track_point_count(), true);
  }
  // `count` points, each 7 m north and 3 m west of the one before.
  void add_track(int count) {
    for (int i = 0; i < count; ++i) add_point({kBern.y + 7 * i, kBern.x - 3 * i}, i == 0);
  }
  std::vector<GridPoint> stored() {
    std::vector<GridPoint> points;
    for (int i = 1; i <= items.track_point_count(); ++i) points.push_back(to_grid(items.track_point(i).position));
    return points;
  }

  // A unit of protocol version 0 with this at kArea: its pointer tells `pointer`.
  void become_old(const Bytes& area, const std::string& pointer) {
    unit_info[kVersionAt] = 0;
    memory_at = kArea;
    memory = area;
    answer = [pointer](const Request& request) {
      return request.code == kGetPointer ? Answer(hex("00 00" + pointer)) : Answer();
    };
  }

  store::Settings settings;
  store::ItemStore items{settings, front_end};
  base::Remarks remarks;
};

// Sends its trail 2 block by block and moves on with each, whether it arrives or not: delta i is i north, 1 west.
class TrailByCommands : public PlotTrails {
 protected:
  TrailByCommands() {
    answer = [this](const Request& request) {
      return request.code == kGetOrigin ? send_origin() : send_deltas(request);
    };
  }
  Answer send_origin() {
    passed = 0;
    return hex(base::format_text("00 01 68E05A00 4EB20D00 %02X %02X", deltas & 0xFF, deltas >> 8));
  }
  Answer send_deltas(const Request& request) {
    const int count = std::min({request.data[1] | request.data[2] << 8, most, deltas - passed});
    std::string block = base::format_text("00 01 %02X00", count);
    for (int i = 0; i < count; ++i, ++passed) block += base::format_text("%02X00 FFFF", passed % 100);
    return hex(block);
  }
  // The first `count` points of the trail.
  std::vector<GridPoint> trail(int count) const {
    std::vector<GridPoint> points{kBern};
    for (int i = 0; i < count - 1; ++i) points.push_back({points.back().y + i % 100, points.back().x - 1});
    return points;
  }

  int deltas = 80;
  int most = 40;   // deltas that the unit sends at once
  int passed = 0;  // deltas of it
};

TEST_F(TrailByCommands, EightyDeltasTakeTwoFullBlocksAndARequestForNone) {
  EXPECT_TRUE(download(2));
  EXPECT_EQ(sent(), hex("0312 01  0313 01 2800  0313 01 2800  0313 01 0000"));
  EXPECT_EQ(stored(), trail(81));
  EXPECT_EQ(items.track_point(81).time.seconds, 376000000U);
  most = 20;  // short blocks make a whole trail, too
  items.clear_tracks();
  EXPECT_TRUE(download(2));
  EXPECT_EQ(stored(), trail(81));
  deltas = 0;  // this is none
  EXPECT_TRUE(download(2));
  answer = [](const Request&) { return hex("00 08 00000000 00000000 0000"); };
  EXPECT_TRUE(download(9));
  EXPECT_EQ(items.track_point_count(), 81);
  EXPECT_EQ(front_end.lines, (Lines{{4, "T00081"}, {8, "No points in trail 2"}, {10, "No points in trail 9"}}));
  EXPECT_EQ(remarks.text(), "");
}

TEST_F(TrailByCommands, AfterALostBlockTheTrailIsDownloadedOnceMore) {
  struct Loss {
    std::function<bool(int block)> is_lost;  // block: which one it is of this session
    std::size_t downloads;
    int points;  // of 301 that are kept: none of those that may be out of place
  };
  deltas = 300;
  for (const Loss& loss : {Loss{[](int block) { return block == 2; }, 2, 301},
                           {[this](int) { return passed > 80; }, 3, 81},
                           {[](int block) { return block == 4 || block == 7 || block == 9; }, 3, 121},
                           // The third comes in the place of the second.
                           {[this](int) { return passed == 80; }, 3, 41}}) {
    items.clear_tracks();
    begin();
    is_lost = [&, block = 0](const Request& request) mutable {
      return request.code == kGetDeltas && loss.is_lost(++block);
    };
    EXPECT_EQ(download(2), loss.points == 301);
    EXPECT_EQ(requests_of(kGetOrigin).size(), loss.downloads);
    EXPECT_EQ(stored(), trail(loss.points));
    if (loss.points == 301) continue;
    EXPECT_EQ(remarks.text(), base::format_text("plot trail 2 broke off after %d of 301 points", loss.points));
  }
}

TEST_F(TrailByCommands, AnswersThatMakeNoSenseEndATrail) {
  struct Row {
    std::string origin, block;
    int points;  // -1: it did not come
  };
  const std::string origin = "00 01 00000000 00000000 0100", east = "00 01 0100 0000 C800";
  for (const Row& row : {Row{"00 01 00000000 16B93001 0100", east, 1},   // to the date line, and 200 m further
                         {"00 01 00000000 FFFFFF7F 0100", east, 0},      // far beyond it
                         {origin, "00 01 0000", 1},                      // a block without deltas
                         {origin, "00 00 0100 0000 C800", 1},            // of trail 1
                         {origin, "00 01 0200 0000 0100 0000 0100", 1},  // more than asked for
                         {"00 00 00000000 00000000 0100", east, -1},     // of trail 1
                         {"00 01 0000", east, -1}}) {
    items.clear_tracks();
    answer = [&row](const Request& request) { return hex(request.code == kGetOrigin ? row.origin : row.block); };
    EXPECT_FALSE(download(2));
    EXPECT_EQ(items.track_point_count(), std::max(row.points, 0));
    EXPECT_EQ(remarks.text(), row.points < 0
                                  ? "plot trail 2 did not come"
                                  : base::format_text("plot trail 2 broke off after %d of 2 points", row.points));
  }
}

TEST_F(TrailByCommands, AFullStoreRefusesOnce) {
  while (items.track_point_count() < store::kTrackPointCapacity - 2) {
    items.start_item();
    ASSERT_EQ(items.push_track(), 0);
  }
  EXPECT_FALSE(download(2));
  EXPECT_EQ(front_end.times_written(1, "Too many track points"), 1);
  EXPECT_EQ(remarks.text(), "the store had room for 2 of 81 points of plot trail 2");
}

// An area of 36 bytes has room for 4 deltas, at 0x21010, 14, 18 and 1C.
class TrailInMemory : public PlotTrails {
 protected:
  TrailInMemory() {
    become_old(hex("005AE068 000DB24E 00021018 00021014 00030030 7F7F7F7F 00010010 FFFEFFE0 7F7F7F7F"),
               "00021000 0024");
  }
  // The last two bytes of the addresses of the first delta and behind the last one.
  void set_run(const std::string& run) {
    std::ranges::copy(hex(run.substr(0, 4)), memory.begin() + 10);
    std::ranges::copy(hex(run.substr(5)), memory.begin() + 14);
  }

  // From 0x21018 to the end of the ring, then from its beginning to 0x21014.
  const std::vector<GridPoint> wrapped{
      kBern, {kBern.y + 1, kBern.x + 16}, {kBern.y - 1, kBern.x - 16}, {kBern.y + 2, kBern.x + 32}};
};

TEST_F(TrailInMemory, AWrappedRingIsReadInOrderHoweverLateItComes) {
  EXPECT_TRUE(download(1));
  EXPECT_EQ(stored(), wrapped);
  EXPECT_EQ(sent(), hex("0307 00  0008 00100200 1000 00  0008 18100200 0800 00  0008 10100200 0400 00"));
  EXPECT_EQ(front_end.times_written(4, "00008 Bytes of deltas Read"), 1);
  items.clear_tracks();
  late = std::chrono::milliseconds(3500);
  EXPECT_TRUE(download(1));
  EXPECT_EQ(stored(), wrapped);
}

TEST_F(TrailInMemory, APointerThatIsPossibleOnlyInLittleEndianIsTakenSo) {
  set_run("1018 1020");  // in one go
  for (const char* pointer : {"00021000 0024", "00100200 9000"}) {
    items.clear_tracks();
    become_old(Bytes(memory), pointer);
    EXPECT_TRUE(download(1));
    EXPECT_THAT(stored(), ElementsAre(wrapped[0], wrapped[1], wrapped[2]));
  }
  requests.clear();
  for (const char* pointer : {"00021000 8080", "00021000 0000", "FFFFFFFF 7F7F", "00021000 01"}) {
    become_old({}, pointer);
    EXPECT_FALSE(download(1));
    EXPECT_EQ(remarks.text(), "the unit does not tell where it keeps plot trail 1");
  }
  EXPECT_TRUE(requests_of(kReadMemory).empty());
}

TEST_F(TrailInMemory, AddressesThatJumpAreRefusedAndAnEmptyRingIsNoTrail) {
  for (const char* run :
       {"100C 1014", "1010 1024", "1018 100C", "1024 1010", "1010 1013", "1019 1014", "1018 1012", "FFFF FFFE"}) {
    set_run(run);
    EXPECT_FALSE(download(1)) << run;
    EXPECT_EQ(remarks.text(), "plot trail 1: the unit's memory makes no sense");
  }
  EXPECT_EQ(front_end.lines, Lines());
  set_run("1018 1018");
  EXPECT_TRUE(download(1));
  std::fill(memory.begin() + 12, memory.begin() + 16, std::uint8_t{0});
  EXPECT_TRUE(download(1));
  EXPECT_EQ(front_end.times_written(4, "No Tracks to send"), 2);
  EXPECT_EQ(items.track_point_count(), 0);
}

TEST_F(TrailInMemory, WhatLiesBehindARunThatDoesNotComeWholeIsNotKept) {
  is_lost = [](const Request& request) { return request.code == kReadMemory && request.data[4] == 8; };
  EXPECT_FALSE(download(1));
  EXPECT_EQ(remarks.text(), "plot trail 1 broke off after 1 of 4 points");
  EXPECT_EQ(requests_of(kReadMemory).size(), 4U);
  for (const int wrong : {-1, 1}) {
    surplus = 0;
    is_lost = [this, wrong](const Request& request) {
      if (request.code == kReadMemory) surplus = wrong;  // behind the header
      return false;
    };
    EXPECT_FALSE(download(1));
    EXPECT_EQ(remarks.text(), "plot trail 1 broke off after 1 of 4 points");
  }
}

using TrailUploads = PlotTrails;

TEST_F(TrailUploads, FortyOnePointsAreAnOriginAndOneBlockAndWhatTheUnitKeptOfThemIsAsked) {
  add_track(41);
  EXPECT_TRUE(upload(3, 1));
  std::string block = "02 2800";
  for (int i = 0; i < 40; ++i) block += "0700 FDFF";
  EXPECT_EQ(sent(), hex("0314 02 68E05A00 4EB20D00 2800  0315 " + block + "0312 02"));
  EXPECT_EQ(front_end.lines, (Lines{{4, "T00041 Sent"}}));
  add_point({kBern.y + 7 * 41, kBern.x - 3 * 41});
  answer = [](const Request&) { return hex("00 02 00000000 00000000 2700"); };
  EXPECT_FALSE(upload(3, 1));
  EXPECT_EQ(requests_of(kSetDeltas).back(), hex("02 0100 0700 FDFF"));
  EXPECT_EQ(remarks.text(), "the unit kept 40 of 42 points of plot trail 3");
}

TEST_F(TrailUploads, TracksAreCountedByWhatIsSelectedOfThem) {
  for (int i = 0; i < 3; ++i) add_track(3);
  for (int i = 1; i <= 4; ++i) items.select('T', i, false);
  EXPECT_EQ(TrailUpload(connection(), items, remarks).selected_tracks(), 2);
  EXPECT_TRUE(upload(1, 1));
  // The second track, without its first point.
  EXPECT_EQ(requests_of(kSetOrigin).front(), hex("00 6FE05A00 4BB20D00 0100"));
  for (int i : {5, 7, 8}) items.select('T', i, false);
  EXPECT_FALSE(upload(1, 1));
  EXPECT_EQ(remarks.text(), "plot trail 1 has fewer than 2 points and was not sent");
  EXPECT_TRUE(requests.empty());
}

TEST_F(TrailUploads, WhatTheUnitHasNoPlaceForIsLeftOutAndAStepTooLongEndsATrack) {
  add_track(3);
  store::ItemRecord pole = items.track_point(2);
  pole.position.latitude = -90;
  items.replace('T', 2, pole);
  add_point({kBern.y + 14 + 32768, kBern.x});
  add_point({kBern.y + 14 + 32768, kBern.x});
  EXPECT_FALSE(upload(1, 1));
  EXPECT_EQ(requests_of(kSetDeltas), (std::vector<Bytes>{hex("00 0100 0E00 FAFF")}));
  EXPECT_EQ(remarks.text(),
            "1 track points are where the unit has no places and were not sent; "
            "plot trail 1 ends after 2 of 4 points, as the next is too far away");
}

// The unit takes the deltas of a repeated message twice, so the trail is sent from its first point again.
TEST_F(TrailUploads, ALostAnswerDoublesNothing) {
  add_track(161);
  int blocks = 0;
  is_lost = [&](const Request& request) { return request.code == kSetDeltas && ++blocks == 3; };
  EXPECT_TRUE(upload(1, 1));
  EXPECT_EQ(requests_of(kSetOrigin).size(), 2U);
  const std::vector<Bytes> sent = requests_of(kSetDeltas);
  ASSERT_EQ(sent.size(), 8U);  // three and a repetition, then all four
  EXPECT_EQ(sent[4], sent[0]);

  is_lost = [&](const Request& request) { return request.code == kSetDeltas && ++blocks > 3; };
  EXPECT_FALSE(upload(1, 1));
  EXPECT_EQ(requests_of(kSetOrigin).size(), 3U);
  EXPECT_EQ(remarks.text(),
            "plot trail 1 may be damaged: the unit was too slow to answer; 4 messages of plot trail 1 "
            "were not answered");
  is_lost = [](const Request&) { return true; };
  EXPECT_FALSE(upload(1, 1));
  EXPECT_TRUE(requests_of(kSetDeltas).empty());
  EXPECT_THAT(remarks.text(), testing::HasSubstr("plot trail 1 was broken off before its end"));
}

TEST_F(TrailUploads, AnImageIsReadBackEqualAndTheRestOfItsAreaIsCleared) {
  become_old(Bytes(420, 0x55), "00021000 01A4");  // room for 100 deltas
  add_track(46);
  const std::vector<GridPoint> sent = stored();
  EXPECT_TRUE(upload(1, 1));
  EXPECT_EQ(Bytes(memory.begin(), memory.begin() + 20), hex("005AE068 000DB24E 00021010 000210C4 0007FFFD"));
  EXPECT_EQ(Bytes(memory.begin() + 0xC4, memory.end() - 4), Bytes(220));
  EXPECT_EQ(Bytes(memory.end() - 4, memory.end()), Bytes(4, 0x55));
  std::vector<std::size_t> sizes;
  for (const Bytes& write : requests_of(kWriteMemory)) sizes.push_back(write.size() - 4);
  EXPECT_THAT(sizes, ElementsAre(16, 160, 20, 160, 60));
  EXPECT_THAT(front_end.line_writes,
              testing::IsSupersetOf({Pair(4, "T00041 Sent"), Pair(4, "T00046 Sent"), Pair(3, "Clearing buffer"),
                                     Pair(4, "T00015 left"), Pair(4, "T00000 left")}));
  items.clear_tracks();
  EXPECT_TRUE(download(1));
  EXPECT_EQ(stored(), sent);
}

TEST_F(TrailUploads, AnImageHoldsWhatItsAreaHasRoomFor) {
  become_old(Bytes(36), "00021000 0024");
  add_track(6);
  EXPECT_FALSE(upload(1, 1));
  EXPECT_EQ(front_end.lines, (Lines{{1, "Too many plot points. Sending the first 5 points."}, {4, "T00005 Sent"}}));
  EXPECT_EQ(remarks.text(), "the unit has room for the first 5 of 6 points of plot trail 1");
  items.clear_tracks();
  EXPECT_TRUE(download(1));
  EXPECT_EQ(items.track_point_count(), 5);

  become_old(Bytes(20), "00021000 0014");  // no room for a delta
  items.select_all('T', true);
  EXPECT_FALSE(upload(1, 1));
  EXPECT_TRUE(requests_of(kWriteMemory).empty());
}

}  // namespace
}  // namespace lowrance
