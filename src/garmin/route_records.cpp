#include "garmin/route_records.h"

#include <array>

namespace garmin {
namespace {

using base::ByteReader;

bool decode_d200(ByteReader& in, RouteHeader& header) {
  header.number = in.u8();
  return true;
}

bool decode_d201(ByteReader& in, RouteHeader& header) {
  header.number = in.u8();
  header.name = in.text(20);
  return true;
}

bool decode_d202(ByteReader& in, RouteHeader& header) {
  header.name = in.string();
  return true;
}

bool decode_d210(ByteReader& in, store::ItemRecord& item) {
  item.has_route_link = 1;
  item.link_class = in.u16();
  std::ranges::copy(in.bytes(item.link_subclass.size()), item.link_subclass.begin());
  item.route_link_ident = in.string();
  return true;
}

constexpr std::array kHeaders{
    RouteHeaderFormat{200, 1, 1, decode_d200},
    RouteHeaderFormat{201, 21, 21, decode_d201},
    RouteHeaderFormat{202, 1, kLongestRecord, decode_d202},
};
constexpr std::array kLinks{
    RecordFormat{210, 21, kLongestRecord, decode_d210},
};

}  // namespace

constinit const std::span<const RouteHeaderFormat> kRouteHeaderFormats = kHeaders;
constinit const std::span<const RecordFormat> kRouteLinkFormats = kLinks;

}  // namespace garmin
