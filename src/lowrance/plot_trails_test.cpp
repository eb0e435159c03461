#include "lowrance/plot_trails.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/lowrance_conversation.h"

namespace lowrance {
namespace {

using base::Bytes;
using testing::ElementsAre;
using testing::Pair;

constexpr int kGetPointer = 0x0307, kGetOrigin = 0x0312, kGetDeltas = 0x0313, kSetOrigin = 0x0314, kSetDeltas = 0x0315;
constexpr std::uint32_t kArea = 0x21000;

// Bern: y 5955688, x 897614.
constexpr GridPoint kBern{0x005AE068, 0x000DB24E};

class PlotTrails : public support::LowranceConversation {
 protected:
  bool download(int trail) {
    const Conversation conversation(connection());
    return TrailDownload(connection(), items, {376000000}, remarks).download(trail);
  }
  bool upload(int trail, int track) {
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

  // A unit of protocol version 0 with one area of `size` bytes: its pointer tells `pointer`.
  void become_old(std::size_t size, Bytes pointer) {
    unit_info[kVersionAt] = 0;
    memory_at = kArea;
    memory = Bytes(size);
    answer = [pointer](const Request& request) { return request.code == kGetPointer ? Answer(pointer) : Answer(); };
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
    sent = 0;
    return Bytes{0,
                 1,
                 0x68,
                 0xE0,
                 0x5A,
                 0x00,
                 0x4E,
                 0xB2,
                 0x0D,
                 0x00,
                 static_cast<std::uint8_t>(deltas),
                 static_cast<std::uint8_t>(deltas >> 8)};
  }
  Answer send_deltas(const Request& request) {
    const int wanted = request.data[1] | request.data[2] << 8;
    const int count = std::min(wanted, deltas - sent);
    Bytes block{0, 1, static_cast<std::uint8_t>(count), 0};
    for (int i = 0; i < count; ++i, ++sent) {
      const auto north = static_cast<std::uint8_t>(sent % 100);
      block.insert(block.end(), {north, 0, 0xFF, 0xFF});
    }
    return block;
  }
  // The first `count` points of the trail.
  std::vector<GridPoint> trail(int count) const {
    std::vector<GridPoint> points{kBern};
    for (int i = 0; i < count - 1; ++i) points.push_back({points.back().y + i % 100, points.back().x - 1});
    return points;
  }

  int deltas = 80;
  int sent = 0;
};

TEST_F(TrailByCommands, EightyDeltasTakeTwoFullBlocksAndARequestForNone) {
  EXPECT_TRUE(download(2));
  EXPECT_EQ(requests,
            (std::vector<Request>{
                {kGetOrigin, {1}}, {kGetDeltas, {1, 40, 0}}, {kGetDeltas, {1, 40, 0}}, {kGetDeltas, {1, 0, 0}}}));
  EXPECT_EQ(stored(), trail(81));
  EXPECT_EQ(items.track_count(), 1);
  EXPECT_EQ(items.track_point(81).time.seconds, 376000000u);
  EXPECT_EQ(front_end.lines[4], "T00081");
  EXPECT_EQ(remarks.text(), "");
}

TEST_F(TrailByCommands, EachTrailBecomesATrackOfItsOwn) {
  deltas = 1;
  EXPECT_TRUE(download(2));
  EXPECT_TRUE(download(2));
  EXPECT_EQ(items.track_point_count(), 4);
  EXPECT_EQ(items.track_point(3).segment_flag, store::kStartsSegment);
  EXPECT_EQ(items.track_point(4).segment_flag, store::kContinues);
}

TEST_F(TrailByCommands, ATrailWithoutDeltasIsNone) {
  deltas = 0;
  EXPECT_TRUE(download(2));
  EXPECT_EQ(front_end.lines[8], "No points in trail 2");
  answer = [](const Request&) { return Bytes{0, 8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}; };
  EXPECT_TRUE(download(9));
  EXPECT_EQ(front_end.lines[10], "No points in trail 9");
  EXPECT_EQ(items.track_point_count(), 0);
}

TEST_F(TrailByCommands, AfterALostBlockTheTrailIsDownloadedOnceMore) {
  deltas = 100;
  int blocks = 0;
  is_lost = [&blocks](const Request& request) { return request.code == kGetDeltas && ++blocks == 2; };
  EXPECT_TRUE(download(2));
  EXPECT_EQ(stored(), trail(101));
  EXPECT_EQ(requests_of(kGetOrigin).size(), 2u);
}

TEST_F(TrailByCommands, PointsBehindABlockThatNeverComesAreMissingAndTold) {
  deltas = 300;
  is_lost = [this](const Request& request) { return request.code == kGetDeltas && sent > 80; };
  EXPECT_FALSE(download(2));
  EXPECT_EQ(requests_of(kGetOrigin).size(), 3u);
  EXPECT_EQ(stored(), trail(81));
  EXPECT_EQ(remarks.text(), "plot trail 2 broke off after 81 of 301 points");
}

TEST_F(TrailByCommands, WhatMayBeOutOfPlaceIsNotKept) {
  deltas = 100;
  // Each time the second block gets lost, and the third comes in its place.
  is_lost = [this](const Request& request) { return request.code == kGetDeltas && sent == 80; };
  EXPECT_FALSE(download(2));
  EXPECT_EQ(stored(), trail(41));
  EXPECT_EQ(remarks.text(), "plot trail 2 broke off after 41 of 101 points");
}

TEST_F(TrailByCommands, AnswersThatMakeNoSenseEndATrail) {
  const Bytes beyond_the_date_line{0, 1, 0, 0, 0, 0, 0x16, 0xB9, 0x30, 0x01, 1, 0};  // x 19970326, then 200 east
  answer = [&](const Request& request) {
    return request.code == kGetOrigin ? beyond_the_date_line : Bytes{0, 1, 1, 0, 0, 0, 200, 0};
  };
  EXPECT_FALSE(download(2));
  EXPECT_EQ(remarks.text(), "plot trail 2 broke off after 1 of 2 points");

  answer = [&](const Request& request) {
    return request.code == kGetOrigin ? Bytes{0, 1, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0x7F, 1, 0} : Bytes{0, 1, 0, 0};
  };
  EXPECT_FALSE(download(2));  // x 2147483647
  answer = [&](const Request&) { return Bytes{0, 1, 0, 0}; };
  EXPECT_FALSE(download(2));
  EXPECT_EQ(items.track_point_count(), 1);
  EXPECT_EQ(remarks.text(),
            "plot trail 2 broke off after 1 of 2 points; plot trail 2 broke off after 0 of 2 points; plot trail 2 did "
            "not come");
}

TEST_F(TrailByCommands, EscKeepsWhatCame) {
  front_end.esc = [this] { return requests_of(kGetDeltas).size() == 1; };
  EXPECT_FALSE(download(2));
  EXPECT_EQ(stored(), trail(41));
  EXPECT_EQ(front_end.lines[4], "Operator Abort in Plot Trail download");
  EXPECT_EQ(front_end.progress_range, 0);
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
    become_old(36, {0, 0, 0x00, 0x02, 0x10, 0x00, 0, 36});
    memory = {0x00, 0x5A, 0xE0, 0x68, 0x00, 0x0D, 0xB2, 0x4E, 0x00, 0x02, 0x10, 0x18,
              0x00, 0x02, 0x10, 0x14, 0x00, 0x03, 0x00, 0x30, 0x7F, 0x7F, 0x7F, 0x7F,
              0x00, 0x01, 0x00, 0x10, 0xFF, 0xFE, 0xFF, 0xE0, 0x7F, 0x7F, 0x7F, 0x7F};
  }
  void set_run(std::uint16_t start, std::uint16_t end) {
    memory[10] = static_cast<std::uint8_t>(start >> 8);
    memory[11] = static_cast<std::uint8_t>(start & 0xFF);
    memory[14] = static_cast<std::uint8_t>(end >> 8);
    memory[15] = static_cast<std::uint8_t>(end & 0xFF);
  }

  // From 0x21018 to the end of the ring, then from its beginning to 0x21014.
  const std::vector<GridPoint> wrapped{
      kBern, {kBern.y + 1, kBern.x + 16}, {kBern.y - 1, kBern.x - 16}, {kBern.y + 2, kBern.x + 32}};
};

TEST_F(TrailInMemory, AWrappedRingIsReadInOrder) {
  EXPECT_TRUE(download(1));
  EXPECT_EQ(stored(), wrapped);
  EXPECT_EQ(requests, (std::vector<Request>{{kGetPointer, {0}},
                                            {kReadMemory, {0x00, 0x10, 0x02, 0x00, 16, 0, 0}},
                                            {kReadMemory, {0x18, 0x10, 0x02, 0x00, 8, 0, 0}},
                                            {kReadMemory, {0x10, 0x10, 0x02, 0x00, 4, 0, 0}}}));
  EXPECT_EQ(front_end.times_written(4, "00008 Bytes of deltas Read"), 1);
}

TEST_F(TrailInMemory, ARunBetweenTwoAddressesIsReadInOneGo) {
  set_run(0x1018, 0x1020);
  EXPECT_TRUE(download(1));
  EXPECT_THAT(stored(), ElementsAre(wrapped[0], wrapped[1], wrapped[2]));
}

TEST_F(TrailInMemory, APointerThatIsPossibleOnlyInLittleEndianIsTakenSo) {
  const Bytes image = memory;
  become_old(36, {0, 0, 0x00, 0x10, 0x02, 0x00, 0x90, 0x00});  // 144 bytes
  memory = image;
  set_run(0x1018, 0x1020);
  EXPECT_TRUE(download(1));
  EXPECT_THAT(stored(), ElementsAre(wrapped[0], wrapped[1], wrapped[2]));
}

TEST_F(TrailInMemory, WithoutAPossibleAreaNothingIsRead) {
  for (const Bytes& pointer : {Bytes{0, 0, 0x00, 0x02, 0x10, 0x00, 0x80, 0x80}, Bytes{0, 0, 0, 2, 0x10, 0, 0, 0},
                               Bytes{0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0x7F}, Bytes{0, 0, 0, 2, 0x10, 0, 1}}) {
    become_old(0, pointer);
    remarks = {};
    EXPECT_FALSE(download(1));
    EXPECT_EQ(remarks.text(), "the unit does not tell where it keeps plot trail 1");
  }
  EXPECT_TRUE(requests_of(kReadMemory).empty());
}

TEST_F(TrailInMemory, AddressesThatJumpAreRefused) {
  struct Run {
    std::uint16_t start, end;
  };
  for (const Run run : {Run{0x100C, 0x1014}, Run{0x1010, 0x1024}, Run{0x1018, 0x100C}, Run{0x1024, 0x1010},
                        Run{0x1010, 0x1013}, Run{0x1019, 0x1014}, Run{0x1018, 0x1012}, Run{0xFFFF, 0xFFFE}}) {
    set_run(run.start, run.end);
    remarks = {};
    EXPECT_FALSE(download(1)) << run.start;
    EXPECT_EQ(remarks.text(), "plot trail 1: the unit's memory makes no sense");
  }
  EXPECT_EQ(items.track_point_count(), 0);
}

TEST_F(TrailInMemory, AnEmptyRingIsNoTrail) {
  set_run(0x1018, 0x1018);
  EXPECT_TRUE(download(1));
  EXPECT_EQ(front_end.lines[4], "No Tracks to send");
  std::fill(memory.begin() + 12, memory.begin() + 16, std::uint8_t{0});
  EXPECT_TRUE(download(1));
  EXPECT_EQ(remarks.text(), "");
}

TEST_F(TrailInMemory, WhatLiesBehindARunThatDoesNotComeIsNotKept) {
  is_lost = [](const Request& request) { return request.code == kReadMemory && request.data[4] == 8; };
  EXPECT_FALSE(download(1));
  EXPECT_EQ(remarks.text(), "plot trail 1 broke off after 1 of 4 points");
}

class TrailUploads : public PlotTrails {
 protected:
  TrailUploads() {
    answer = [](const Request&) { return Bytes{0}; };
  }
};

TEST_F(TrailUploads, FortyOnePointsAreAnOriginAndOneBlock) {
  add_track(41);
  EXPECT_TRUE(upload(3, 1));
  Bytes block{2, 40, 0};
  for (int i = 0; i < 40; ++i) block.insert(block.end(), {7, 0, 0xFD, 0xFF});
  EXPECT_EQ(requests, (std::vector<Request>{{kSetOrigin, {2, 0x68, 0xE0, 0x5A, 0x00, 0x4E, 0xB2, 0x0D, 0x00, 40, 0}},
                                            {kSetDeltas, block}}));
  EXPECT_EQ(front_end.lines[4], "T00041 Sent");
  add_point({kBern.y + 7 * 41, kBern.x - 3 * 41});
  requests.clear();
  EXPECT_TRUE(upload(3, 1));
  EXPECT_EQ(requests.back(), (Request{kSetDeltas, {2, 1, 0, 7, 0, 0xFD, 0xFF}}));
}

TEST_F(TrailUploads, TracksAreCountedByWhatIsSelectedOfThem) {
  for (int i = 0; i < 3; ++i) add_track(3);
  for (int i = 1; i <= 4; ++i) items.select('T', i, false);
  EXPECT_EQ(TrailUpload(connection(), items, remarks).selected_tracks(), 2);
  EXPECT_TRUE(upload(1, 1));
  // The second track, without its first point.
  EXPECT_EQ(requests_of(kSetOrigin).front(), (Bytes{0, 0x6F, 0xE0, 0x5A, 0x00, 0x4B, 0xB2, 0x0D, 0x00, 1, 0}));
  requests.clear();
  EXPECT_TRUE(upload(3, 3));
  EXPECT_EQ(front_end.lines[8], "Active track 3 does not exist!");
  for (int i : {5, 7, 8}) items.select('T', i, false);
  EXPECT_FALSE(upload(1, 1));
  EXPECT_EQ(remarks.text(), "plot trail 1 has fewer than 2 points and was not sent");
  EXPECT_TRUE(requests.empty());
}

TEST_F(TrailUploads, ATrackEndsBeforeAStepThatTheUnitCannotTake) {
  add_track(3);
  add_point({kBern.y + 14 + 32768, kBern.x});
  add_point({kBern.y + 14 + 32768, kBern.x});
  EXPECT_FALSE(upload(1, 1));
  EXPECT_EQ(requests_of(kSetOrigin).front().at(9), 2);
  EXPECT_EQ(requests_of(kSetDeltas).size(), 1u);
  EXPECT_EQ(remarks.text(), "plot trail 1 ends after 3 of 5 points, as the next is too far away");
}

// The unit takes the deltas of a repeated message twice, so the trail is sent from its first point again.
TEST_F(TrailUploads, ALostAnswerDoublesNothing) {
  add_track(161);
  int blocks = 0;
  is_lost = [&](const Request& request) { return request.code == kSetDeltas && ++blocks == 3; };
  EXPECT_TRUE(upload(1, 1));
  EXPECT_EQ(requests_of(kSetOrigin).size(), 2u);
  const std::vector<Bytes> sent = requests_of(kSetDeltas);
  ASSERT_EQ(sent.size(), 8u);  // three and a repetition, then all four
  EXPECT_EQ(sent[4], sent[0]);
}

TEST_F(TrailUploads, MessagesWithoutAnAnswerAreCounted) {
  add_track(161);
  int blocks = 0;
  is_lost = [&](const Request& request) { return request.code == kSetDeltas && ++blocks > 3; };
  EXPECT_FALSE(upload(1, 1));
  EXPECT_EQ(requests_of(kSetOrigin).size(), 3u);
  EXPECT_EQ(
      remarks.text(),
      "plot trail 1 may be damaged: the unit was too slow to answer; 4 messages of plot trail 1 were not answered");
  is_lost = [](const Request&) { return true; };
  requests.clear();
  EXPECT_FALSE(upload(1, 1));
  EXPECT_TRUE(requests_of(kSetDeltas).empty());
}

TEST_F(TrailUploads, EscEndsAnUploadAndTheRestIsTold) {
  add_track(161);
  front_end.esc = [this] { return requests_of(kSetDeltas).size() == 2; };
  EXPECT_FALSE(upload(1, 1));
  EXPECT_EQ(requests_of(kSetDeltas).size(), 2u);
  EXPECT_EQ(front_end.lines[4], "Operator Abort in Plot Trail upload");
  EXPECT_EQ(remarks.text(), "plot trail 1 was broken off before its end");
}

TEST_F(TrailUploads, AnImageIsReadBackEqualAndTheRestOfItsAreaIsCleared) {
  become_old(420, {0, 0, 0x00, 0x02, 0x10, 0x00, 0x01, 0xA4});  // room for 100 deltas
  memory.assign(420, 0x55);
  add_track(46);
  const std::vector<GridPoint> sent = stored();
  EXPECT_TRUE(upload(1, 1));
  EXPECT_EQ(Bytes(memory.begin(), memory.begin() + 20),
            (Bytes{0x00, 0x5A, 0xE0, 0x68, 0x00, 0x0D, 0xB2, 0x4E, 0x00, 0x02,
                   0x10, 0x10, 0x00, 0x02, 0x10, 0xC4, 0x00, 0x07, 0xFF, 0xFD}));
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
  become_old(36, {0, 0, 0x00, 0x02, 0x10, 0x00, 0, 36});
  add_track(6);
  EXPECT_FALSE(upload(1, 1));
  EXPECT_EQ(front_end.lines[1], "Too many plot points. Sending the first 5 points.");
  EXPECT_EQ(remarks.text(), "the unit has room for the first 5 of 6 points of plot trail 1");
  EXPECT_EQ(front_end.times_written(3, "Clearing buffer"), 0);
  items.clear_tracks();
  EXPECT_TRUE(download(1));
  EXPECT_EQ(items.track_point_count(), 5);

  become_old(20, {0, 0, 0x00, 0x02, 0x10, 0x00, 0, 20});  // no room for a delta
  requests.clear();
  items.select_all('T', true);
  EXPECT_FALSE(upload(1, 1));
  EXPECT_TRUE(requests_of(kWriteMemory).empty());
}

}  // namespace
}  // namespace lowrance
