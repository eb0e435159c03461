// The records are byte literals written by hand from the published layouts.
#include "garmin/track_records.h"

#include <gtest/gtest.h>

#include <limits>

namespace garmin {
namespace {

using store::ItemRecord;

template <std::size_t N>
base::Bytes data_of(const char (&literal)[N]) {
  return {literal, literal + N - 1};
}

ItemRecord decoded(std::span<const RecordFormat> formats, std::uint16_t number, const base::Bytes& data) {
  ItemRecord item = store::blank_item();
  const DecodeResult result = decode_record(formats, number, "Pid_Trk", data, item);
  EXPECT_TRUE(result) << result.refusal;
  return item;
}
ItemRecord point(std::uint16_t number, const base::Bytes& data) { return decoded(kTrackPointFormats, number, data); }
ItemRecord header(std::uint16_t number, const base::Bytes& data) { return decoded(kTrackHeaderFormats, number, data); }

// 22.5 N, 90 W, second 0x01020304.
#define PLACE_AND_TIME "\x00\x00\x00\x10\x00\x00\x00\xC0\x04\x03\x02\x01"
#define ALTITUDE_DEPTH "\x00\x50\x9A\x44\x00\x00\x20\xC0"  // 1234.5 m, -2.5 m

TEST(TrackRecords, EveryFormatKeepsPositionTimeAndSegmentStart) {
  for (const ItemRecord& item :
       {point(300, data_of(PLACE_AND_TIME "\x01")), point(301, data_of(PLACE_AND_TIME ALTITUDE_DEPTH "\x01")),
        point(302, data_of(PLACE_AND_TIME ALTITUDE_DEPTH "\x00\x00\xA8\x41\x01"))}) {
    EXPECT_EQ(item.position, (geodesy::Position{22.5, -90}));
    EXPECT_EQ(item.time.seconds, 0x01020304U);
    EXPECT_EQ(item.segment_flag, store::kStartsSegment);
  }
}

base::Bytes encoded(std::uint16_t number, const ItemRecord& item) {
  const bool is_point = find_format(kTrackPointFormats, number) != nullptr;
  return encode_record(is_point ? kTrackPointFormats : kTrackHeaderFormats, number, item, {}).value_or(base::Bytes());
}

#define NOT_KNOWN "\x51\x59\x04\x69"

TEST(TrackRecords, EveryFormatGivesBackTheBytesThatItCameIn) {
  for (const auto& [number, data] :
       {std::pair(std::uint16_t{300}, data_of(PLACE_AND_TIME "\x01")),
        std::pair(std::uint16_t{300}, data_of("\0\0\0\x10\0\0\0\xC0\0\0\0\0\0")),
        std::pair(std::uint16_t{301}, data_of(PLACE_AND_TIME ALTITUDE_DEPTH "\x01")),
        std::pair(std::uint16_t{301}, data_of(PLACE_AND_TIME NOT_KNOWN NOT_KNOWN "\0")),
        std::pair(std::uint16_t{302}, data_of(PLACE_AND_TIME ALTITUDE_DEPTH NOT_KNOWN "\0"))})
    EXPECT_EQ(encoded(number, point(number, data)), data) << number;
  for (const auto& [number, data] :
       {std::pair(std::uint16_t{310}, data_of("\x01\x0CMORNING RIDE\0")),
        std::pair(std::uint16_t{310}, data_of("\x01\x00\0")), std::pair(std::uint16_t{311}, data_of("\x02\x01")),
        std::pair(std::uint16_t{312}, data_of("\x01\xFFMORNING RIDE\0"))})
    EXPECT_EQ(encoded(number, header(number, data)), data) << number;
}

TEST(TrackRecords, ALogWithANameOfItsOwnGoesOutWithItsNumber) {
  ItemRecord item = store::blank_item();
  item.number = 3;
  for (const std::string_view name : {"Out and back", "Track", "Track ", "Track -1", "Track 65536", "Track 7 b"}) {
    item.ident = name;
    EXPECT_EQ(encoded(311, item), data_of("\x03\0")) << name;
  }
}

TEST(TrackRecords, WhatNoReceiverCanHaveGoesOutAsNone) {
  ItemRecord item = store::blank_item();
  item.segment_flag = 77;
  item.colour = 77;
  item.altitude = -std::numeric_limits<float>::infinity();
  item.depth = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(encoded(301, item), data_of("\0\0\0\0\0\0\0\0\0\0\0\0" NOT_KNOWN NOT_KNOWN "\x01"));
  EXPECT_EQ(encoded(310, item), data_of("\x01\xFF\0"));
  item.position.latitude = 91;
  EXPECT_TRUE(encoded(300, item).empty());
}

TEST(TrackRecords, AltitudeAndDepthAreKeptAndUnknownWithoutThem) {
  const ItemRecord d302 = point(302, data_of(PLACE_AND_TIME ALTITUDE_DEPTH "\x00\x00\xA8\x41\x00"));
  EXPECT_EQ(d302.altitude, 1234.5F);
  EXPECT_EQ(d302.depth, -2.5F);
  EXPECT_EQ(d302.segment_flag, store::kContinues);
  EXPECT_FALSE(store::is_known(point(300, data_of(PLACE_AND_TIME "\0")).altitude));
  const ItemRecord d301 = point(301, data_of(PLACE_AND_TIME "\x51\x59\x04\x69\0\0\x80\x7F\x02"));
  EXPECT_FALSE(store::is_known(d301.altitude));
  EXPECT_EQ(d301.depth, store::kNotKnown);  // received as infinite
  EXPECT_EQ(d301.segment_flag, store::kStartsSegment);
}

TEST(TrackRecords, AllThreeWaysToSayNoTimeAreNoTime) {
  EXPECT_EQ(point(300, data_of("\0\0\0\x10\0\0\0\xC0\0\0\0\0\0")).time.seconds, 0U);
  EXPECT_EQ(point(300, data_of("\0\0\0\x10\0\0\0\xC0\xFF\xFF\xFF\x7F\0")).time.seconds, 0U);
  EXPECT_EQ(point(300, data_of("\0\0\0\x10\0\0\0\xC0\xFF\xFF\xFF\xFF\0")).time.seconds, 0U);
}

TEST(TrackRecords, APointWithoutAPositionIsRefusedNotPutAtZero) {
  ItemRecord item = store::blank_item();
  const DecodeResult result = decode_record(kTrackPointFormats, 300, "Pid_Trk_Data",
                                            data_of("\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x7F\x04\x03\x02\x01\x01"), item);
  EXPECT_EQ(result.refusal, "Pid_Trk_Data D300 has no position: record refused");
  EXPECT_EQ(item.time.seconds, 0U);
}

TEST(TrackRecords, AHeaderNamesAndColoursItsTrack) {
  for (const std::uint16_t number : {std::uint16_t{310}, std::uint16_t{312}}) {
    const ItemRecord item = header(number, data_of("\x01\x0CMORNING RIDE\0"));
    EXPECT_EQ(item.ident, "MORNING RIDE");
    EXPECT_EQ(store::kColourNames.at(item.colour), "Blue");
    EXPECT_EQ(item.segment_flag, store::kStartsNamedTrack);
  }
  EXPECT_EQ(header(311, data_of("\x02\x01")).ident, "Track 258");
  EXPECT_EQ(header(311, data_of("\x02\x01")).colour, store::kDefaultColour);
}

TEST(TrackRecords, ColoursWithoutANameAreTheDefaultColour) {
  EXPECT_EQ(header(310, data_of("\x01\x0F\0")).colour, 15);
  EXPECT_EQ(header(312, data_of("\x01\x10\0")).colour, store::kDefaultColour);
  EXPECT_EQ(header(310, data_of("\x01\xFF\0")).colour, store::kDefaultColour);
  EXPECT_EQ(header(310, data_of("\x01\x63\0")).colour, store::kDefaultColour);
}

TEST(TrackRecords, AHeaderWithoutTheEndOfItsNameIsRefused) {
  ItemRecord item = store::blank_item();
  EXPECT_EQ(decode_record(kTrackHeaderFormats, 310, "Pid_Trk_Hdr", data_of("\x01\x0CRIDE"), item).refusal,
            "Pid_Trk_Hdr D310: 6 bytes, needs at least 7: record refused");
  EXPECT_TRUE(item.ident.empty());
}

}  // namespace
}  // namespace garmin
