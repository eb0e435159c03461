// Builds Street Atlas map files for tests, byte by byte from docs/formats/street-atlas.md.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace support {

// Coordinate codes as they stand in a file.
struct MapPlace {
  std::uint32_t latitude = 0x80000000U;
  std::uint32_t longitude = 0x80000000U;
};

// Degrees, north and east positive.
inline MapPlace map_place(double latitude, double longitude) {
  const auto code = [](double degrees) {
    return 0x80000000U - static_cast<std::uint32_t>(static_cast<std::int32_t>(degrees * 8388607.0));
  };
  return {code(latitude), code(-longitude)};
}

class StreetAtlasBuilder {
 public:
  // A symbol's body has 13 bytes, the fields known of it 12: either is built.
  enum class SymbolBody { Long, Short };
  explicit StreetAtlasBuilder(unsigned version = 256, SymbolBody symbol_body = SymbolBody::Long)
      : version_(version), symbol_body_(symbol_body) {}

  StreetAtlasBuilder& text(const MapPlace& at, std::string_view label, std::string_view text) {
    head(1, at, label);
    return fill(4).short_text(text);
  }
  StreetAtlasBuilder& symbol(const MapPlace& at, std::string_view label, std::string_view text) {
    head(2, at, label);
    return fill(symbol_body_ == SymbolBody::Long ? 12 : 11).short_text(text);
  }
  StreetAtlasBuilder& note(const MapPlace& at, std::string_view text) {
    head(3, at, "");
    return fill(4).short_text(text);
  }
  StreetAtlasBuilder& line(const std::vector<MapPlace>& points) { return shape(7, 6, points); }
  StreetAtlasBuilder& area(const std::vector<MapPlace>& points) { return shape(8, 14, points); }
  StreetAtlasBuilder& circle(const MapPlace& centre, const MapPlace& rim) {
    head(9, centre, "a circle");
    return fill(24).place(rim);
  }
  // Bytes that are counted as an item...
  StreetAtlasBuilder& raw_item(std::string_view bytes) {
    ++count_;
    items_ += bytes;
    return *this;
  }
  // ... and bytes that are not, such as those of a route section.
  StreetAtlasBuilder& raw(std::string_view bytes) {
    items_ += bytes;
    return *this;
  }

  StreetAtlasBuilder& routes(unsigned count) { return number(count, 2); }
  StreetAtlasBuilder& route(unsigned route_number, std::string_view name, unsigned points) {
    return number(route_number, 2).short_text(name).number(points, 2);
  }
  StreetAtlasBuilder& route_point(const MapPlace& at, unsigned kind, std::string_view name) {
    return place(at).number(kind, 1).short_text(name);
  }

  [[nodiscard]] std::string file() const {
    StreetAtlasBuilder header;
    header.number(version_, 2).fill(4).short_text("Sample map").place(map_place(44, -70));
    header.fill(2 + 134).fill(2 + 8).fill(2 + 20).number(count_, 2);
    return header.items_ + items_;
  }

 private:
  void head(unsigned type, const MapPlace& at, std::string_view label) {
    ++count_;
    number(type, 2).place(at).fill(4).short_text(label);
  }
  StreetAtlasBuilder& shape(unsigned type, std::size_t ahead, const std::vector<MapPlace>& points) {
    head(type, points.empty() ? MapPlace{} : points.front(), "");
    fill(ahead).number(static_cast<unsigned>(points.size()), 2);
    for (const MapPlace& point : points) place(point);
    return *this;
  }
  StreetAtlasBuilder& number(std::uint32_t value, int size) {
    for (; size > 0; --size, value >>= 8) items_ += static_cast<char>(value & 0xFF);
    return *this;
  }
  StreetAtlasBuilder& place(const MapPlace& at) { return number(at.latitude, 4).number(at.longitude, 4); }
  StreetAtlasBuilder& short_text(std::string_view text) {
    number(static_cast<unsigned>(text.size()), 1);
    items_ += text;
    return *this;
  }
  // What is not interpreted; not zeros, which a reader out of step would take for short texts.
  StreetAtlasBuilder& fill(std::size_t size) {
    items_.append(size, '\xA5');
    return *this;
  }

  unsigned version_;
  SymbolBody symbol_body_;
  unsigned count_ = 0;
  std::string items_;
};

}  // namespace support
