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
  EXPECT_EQ(header_of(200, data_of("\0")).number, 0);  // a number too
  EXPECT_EQ(header_of(202, data_of("\0")).name, "");
}

template <typename Record>
base::Bytes encoded(std::span<const FormatOf<Record>> formats, std::uint16_t number, const Record& record) {
  return encode_record(formats, number, record, store::Settings{}).value();
}

TEST(RouteRecords, AHeaderGoesOutAsItCame) {
  for (const auto& [number, data] : {std::pair(std::uint16_t{200}, data_of("\x13")),
                                     std::pair(std::uint16_t{201}, data_of("\x13HOME TO LAKE        ")),
                                     std::pair(std::uint16_t{202}, data_of("LAKE TO HOME\0"))})
    EXPECT_EQ(encoded(kRouteHeaderFormats, number, header_of(number, data)), data);
  EXPECT_EQ(encoded(kRouteHeaderFormats, 200, RouteHeader{}), data_of("\0"));
  EXPECT_EQ(encoded(kRouteHeaderFormats, 200, RouteHeader{-1, ""}), data_of("\0"));
  EXPECT_EQ(encoded(kRouteHeaderFormats, 201, RouteHeader{300, "TWENTY LETTERS AND MORE"}),
            data_of("\xFFTWENTY LETTERS AND M"));
  EXPECT_EQ(encoded(kRouteHeaderFormats, 202, RouteHeader{7, std::string(99, 'A')}).size(), 51U);
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

TEST(RouteRecords, ALinkGoesOutAsItCameAndWithoutOneAPlainOne) {
  store::ItemRecord point = store::blank_item();
  const base::Bytes plain = data_of("\0\0\0\0\0\0\0\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\0");
  EXPECT_EQ(encoded(kRouteLinkFormats, 210, point), plain);
  ASSERT_TRUE(decode_record(kRouteLinkFormats, 210, "Pid_Rte_Link_Data", data_of(kLink), point));
  EXPECT_EQ(encoded(kRouteLinkFormats, 210, point), data_of(kLink));
  // All zeros are a subclass of their own for a line of a map (0), and none for a direct link (3) or a snapped one.
  point.link_subclass = {};
  point.route_link_ident = std::string(51, '\xE9');
  const auto subclass_of = [&](std::uint16_t link_class) {
    point.link_class = link_class;
    const base::Bytes data = encoded(kRouteLinkFormats, 210, point);
    EXPECT_EQ(data.size(), 20U + 51 + 1);
    EXPECT_EQ(data[70], 'e');
    return base::Bytes(data.begin() + 2, data.begin() + 20);
  };
  EXPECT_EQ(subclass_of(0), base::Bytes(18, 0));
  EXPECT_EQ(subclass_of(3), base::Bytes(plain.begin() + 2, plain.begin() + 20));
  EXPECT_EQ(subclass_of(0xFF), base::Bytes(plain.begin() + 2, plain.begin() + 20));
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
