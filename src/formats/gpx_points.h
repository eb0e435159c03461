// Points of a GPX document as records: what the reader needs for waypoints, route points and track points alike.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "base/encoding.h"
#include "base/fixed_text.h"
#include "base/front_end.h"
#include "base/text.h"
#include "formats/gpx_terms.h"
#include "formats/xml_document.h"
#include "formats/xml_elements.h"

namespace formats {

// The link of a route point to the next one.
struct GpxLink {
  std::uint16_t link_class = 0;
  std::array<std::uint8_t, 18> subclass{};
  base::FixedText<51> ident;
};

// A point with a name, as a document has it.
struct GpxPoint {
  store::ItemRecord item = default_gpx_item();
  std::string type;
  bool is_only_waypoint = false;  // so our own extension says
  bool has_symbol = false;        // from our own extension, which a name does not replace
  std::optional<float> alarm;     // metres
  std::optional<GpxLink> link;
};

// What was passed over or changed in a document.
struct GpxRemarks {
  int points = 0, first_point_line = 0;
  int times = 0;
  int metres = 0;
  int routes = 0;
  int cut_texts = 0;
  int substitutes = 0;
  int symbols = 0;
  std::string first_symbol;

  // On output line 2; nothing when there is nothing to say.
  void report(base::FrontEnd& front_end) const;
};

class GpxPointReader {
 public:
  // The document must outlive the reader.
  explicit GpxPointReader(const XmlDocument& document);

  // The local name of an element of GPX, empty for one of others.
  [[nodiscard]] std::string_view gpx_name(pugi::xml_node element);
  // The element is of the maker's extensions.
  [[nodiscard]] bool is_makers(pugi::xml_node element);
  // The element is our own of that name.
  [[nodiscard]] bool is_own(pugi::xml_node element, std::string_view name);
  // False, and counted, where the point has no valid position.
  bool read_position(pugi::xml_node point, store::ItemRecord& item);
  void read_named_point(pugi::xml_node element, GpxPoint& point);
  void read_track_point(pugi::xml_node element, store::ItemRecord& item);

  // Control characters become '-', as in files that are written.
  [[nodiscard]] std::string latin1(std::string_view utf8);
  template <std::size_t N>
  void take_text(std::string_view utf8, base::FixedText<N>& field) {
    const std::string text = latin1(utf8);
    if (text.size() > N) ++remarks_.cut_texts;
    constexpr bool is_code = N == 2;  // the first letters of a country's name are not its code
    field = is_code && text.size() > N ? std::string() : text;
  }

  // A route found no room.
  void leave_out_route() { ++remarks_.routes; }
  [[nodiscard]] const GpxRemarks& remarks() const { return remarks_; }

 private:
  void read_metres(pugi::xml_node element, float& metres);
  void read_time(pugi::xml_node element, store::GarminTime& time);
  void read_extensions(pugi::xml_node element, GpxPoint& point);
  void read_extension(pugi::xml_node extension, GpxPoint& point);
  void read_makers_field(pugi::xml_node field, GpxPoint& point);
  void read_own_item(pugi::xml_node element, GpxPoint& point);
  void take_symbol(const std::string& name, GpxPoint& point);

  const XmlDocument& document_;
  Namespaces namespaces_;
  std::string_view root_prefix_, root_namespace_;
  GpxRemarks remarks_;
};

// The text as a number, blanks around it aside; nothing changes where it is none or does not fit.
template <typename Number>
void read_whole_number(std::string_view text, Number& number) {
  using Limits = std::numeric_limits<Number>;
  const std::optional<long long> value = base::parse_integer(base::trim_blanks(text));
  if (value && *value >= Limits::min() && *value <= Limits::max()) number = static_cast<Number>(*value);
}

}  // namespace formats
