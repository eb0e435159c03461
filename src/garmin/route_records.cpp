#include "garmin/route_records.h"

#include <algorithm>
#include <array>

#include "garmin/record_fields.h"

namespace garmin {
namespace {

constexpr std::size_t kLongestNumbered = 20;
constexpr std::size_t kLongestName = 50;

class HeaderReading {
 public:
  HeaderReading(base::ByteReader& in, RouteHeader& header) : in_(in), header_(header) {}
  void number() { header_.number = in_.u8(); }
  void name(std::size_t size) { header_.name = in_.text(size); }
  void name() { header_.name = in_.string(); }

 private:
  base::ByteReader& in_;
  RouteHeader& header_;
};

class HeaderWriting {
 public:
  HeaderWriting(base::ByteWriter& out, const RouteHeader& header) : out_(out), header_(header) {}
  void number() { out_.u8(static_cast<std::uint8_t>(std::clamp(header_.number.value_or(0), 0, 255))); }
  void name(std::size_t size) { out_.text(header_.name, size); }
  void name() { out_.string(header_.name, kLongestName); }

 private:
  base::ByteWriter& out_;
  const RouteHeader& header_;
};

constexpr auto d200 = [](auto& fields) { fields.number(); };

constexpr auto d201 = [](auto& fields) {
  fields.number();
  fields.name(kLongestNumbered);
};

constexpr auto d202 = [](auto& fields) { fields.name(); };

class LinkReading : public ItemReading {
 public:
  using ItemReading::ItemReading;
  void link_class() {
    item_.has_route_link = 1;
    item_.link_class = in_.u16();
  }
  void link_subclass() { std::ranges::copy(in_.bytes(item_.link_subclass.size()), item_.link_subclass.begin()); }
};

class LinkWriting : public ItemWriting {
 public:
  using ItemWriting::ItemWriting;
  void link_class() { out_.u16(item_.link_class); }
  void link_subclass() {
    constexpr std::uint16_t kDirect = 3;
    constexpr std::uint16_t kSnap = 0xFF;
    const bool is_of_map = item_.has_route_link != 0 && item_.link_class != kDirect && item_.link_class != kSnap;
    const bool is_blank = item_.link_subclass == decltype(item_.link_subclass){};
    out_.bytes(is_blank && !is_of_map ? kPlainSubclass : item_.link_subclass);
  }
};

constexpr auto d210 = [](auto& fields) {
  fields.link_class();
  fields.link_subclass();
  fields.texts(&store::ItemRecord::route_link_ident);
};

template <typename Layout>
constexpr RouteHeaderFormat header_row(std::uint16_t number, std::size_t shortest, std::size_t longest, NameRule name,
                                       Layout) {
  return {number,
          shortest,
          longest,
          name,
          [](base::ByteReader& in, RouteHeader& header) {
            HeaderReading fields(in, header);
            Layout{}(fields);
            return true;
          },
          [](base::ByteWriter& out, const RouteHeader& header, const store::Settings&) {
            HeaderWriting fields(out, header);
            Layout{}(fields);
            return true;
          }};
}

// Routes that have a number are told apart by it.
constexpr std::array kHeaders{
    header_row(200, 1, 1, {0, Letters::Capitals, false}, d200),
    header_row(201, 21, 21, {kLongestNumbered, Letters::Capitals, false}, d201),
    header_row(202, 1, kLongestRecord, {kLongestName, Letters::Ascii}, d202),
};
constexpr std::array kLinks{
    row_of<LinkReading, LinkWriting>(210, 21, kLongestRecord, {50, Letters::Ascii, false}, d210),
};

}  // namespace

constinit const std::span<const RouteHeaderFormat> kRouteHeaderFormats = kHeaders;
constinit const std::span<const RecordFormat> kRouteLinkFormats = kLinks;

}  // namespace garmin
