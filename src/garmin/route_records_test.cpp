// The records are byte literals written by hand from the published layouts.
#include "garmin/route_records.h"

#include <gtest/gtest.h>

namespace garmin {
namespace {

template <std::size_t N>
base::Bytes data_of(const char (&literal)[N]) {
  return {literal, literal + N - 1};
}

RouteHeader header_of(std::uint16_t number, const base::Bytes& data) {
  RouteHeader header;
  const DecodeResult result = decode_record(kRouteHeaderFormats, number, "Pid_Rte_Hdr", data, header);
  EXPECT_TRUE(result) << result.refusal;
  return header;
}

TEST(RouteRecords, AHeaderHasANumberOrANameOrBoth) {
  const RouteHeader d200 = header_of(200, data_of("\x13"));
  EXPECT_EQ(d200.number, 19);
  EXPECT_EQ(d200.name, "");
  const RouteHeader d201 = header_of(201, data_of("\x13HOME TO LAKE        "));
  EXPECT_EQ(d201.number, 19);
  EXPECT_EQ(d201.name, "HOME TO LAKE");
  const RouteHeader d202 = header_of(202, data_of("LAKE TO HOME\0"));
  EXPECT_EQ(d202.number, std::nullopt);
  EXPECT_EQ(d202.name, "LAKE TO HOME");
}

TEST(RouteRecords, RouteZeroIsANumberAndAnEmptyNameIsAName) {
  EXPECT_EQ(header_of(200, data_of("\0")).number, 0);
  EXPECT_EQ(header_of(202, data_of("\0")).name, "");
}

constexpr char kLink[] =
    "\x03\x01\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11\x12"
    "Route 66\0";

TEST(RouteRecords, ALinkIsKeptWithThePointThatItLeaves) {
  store::ItemRecord point = store::blank_item();
  point.ident = "START";
  point.detail_kind = store::kFullDetails;
  ASSERT_TRUE(decode_record(kRouteLinkFormats, 210, "Pid_Rte_Link_Data", data_of(kLink), point));
  EXPECT_EQ(point.ident, "START");
  EXPECT_EQ(point.has_route_link, 1);
  EXPECT_EQ(point.link_class, 0x0103);
  EXPECT_EQ(point.link_subclass,
            (std::array<std::uint8_t, 18>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
  EXPECT_EQ(point.route_link_ident, "Route 66");
  EXPECT_EQ(point.detail_kind, store::kFullDetails);
}

TEST(RouteRecords, ACutLinkLeavesThePointWithoutOne) {
  store::ItemRecord point = store::blank_item();
  base::Bytes data = data_of(kLink);
  while (!data.empty()) {
    data.pop_back();
    EXPECT_EQ(decode_record(kRouteLinkFormats, 210, "Pid_Rte_Link_Data", data, point).outcome, Decoded::WrongLength);
    EXPECT_EQ(point.has_route_link, 0);
  }
}

}  // namespace
}  // namespace garmin
