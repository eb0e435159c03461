#include "textfile/detail_lines.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "base/text.h"
#include "textfile/text_layout.h"

namespace textfile {
namespace {

using store::ItemRecord;

constexpr std::uint16_t kFullIdentType = 105;
constexpr std::uint16_t kLinkIdentType = 106;
constexpr std::uint16_t kDetailType = 108;
constexpr std::uint16_t kLastDetailType = 110;
constexpr std::size_t kOldSubclassSize = 13;  // of type 106
constexpr std::size_t kLongestOldIdent = 40;  // that a c1 or c2 line can give
constexpr std::size_t kLongestEmptyLink = 4;

template <typename Number>
std::optional<Number> read_hex(std::string_view digits) {
  Number value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (digits.size() != 2 * sizeof(Number) || error != std::errc() || end != digits.data() + digits.size())
    return std::nullopt;
  return value;
}

// Two-digit hexadecimal numbers between blanks; nothing when there is something else or more than `most`.
std::optional<std::vector<std::uint8_t>> read_hex_bytes(std::string_view text, std::size_t most) {
  std::vector<std::uint8_t> bytes;
  for (const std::string_view word : base::split_words(text)) {
    const std::optional<std::uint8_t> byte = read_hex<std::uint8_t>(word);
    if (!byte || bytes.size() == most) return std::nullopt;
    bytes.push_back(*byte);
  }
  return bytes;
}

// A class and its subclass bytes; missing ones are 0.
bool read_class(std::string_view text, ItemRecord& item) {
  constexpr std::size_t kMostWords = 20;
  const std::optional<std::vector<std::uint8_t>> bytes = read_hex_bytes(text, kMostWords);
  if (!bytes || bytes->empty()) return false;
  item.waypoint_class = bytes->front();
  const std::size_t count = std::min(bytes->size() - 1, item.subclass.size());
  std::copy_n(bytes->begin() + 1, count, item.subclass.begin());
  return true;
}

// Exactly `count` fields, each ended by ';'. Where there are more, the first one holds semicolons.
std::vector<std::string_view> split_fields(std::string_view text, std::size_t count) {
  if (text.ends_with(';')) text.remove_suffix(1);
  std::vector<std::string_view> fields;
  for (std::size_t at = text.rfind(';'); at != std::string_view::npos && fields.size() + 1 < count;
       at = text.rfind(';')) {
    fields.push_back(text.substr(at + 1));
    text = text.substr(0, at);
  }
  fields.push_back(text);
  std::reverse(fields.begin(), fields.end());
  fields.resize(count);
  return fields;
}

template <typename Number>
void read_field(std::string_view text, Number& number) {
  const std::optional<long long> value = base::parse_integer(base::trim_blanks(text));
  if (value && *value >= 0 && *value <= std::numeric_limits<Number>::max()) number = static_cast<Number>(*value);
}

// Deliberate : user waypoints keep the fields and yet are marked as having none, as receivers send them. So
// are waypoints that c6 gives no type: heights or long texts alone do not make a type 108 of them.
void set_full_details(ItemRecord& item) {
  const bool is_marked = item.waypoint_class != 0 && item.record_type != 0;
  item.detail_kind = is_marked ? store::kFullDetails : store::kNoDetails;
}

// Each takes the text after "cN " and gives the error to report, or an empty one.

std::string_view read_full_ident(std::string_view text, ItemRecord& item) {
  item.detail_kind = store::kLongIdentDetails;
  item.record_type = kFullIdentType;
  // A longer one came whole with the c6 line above.
  text = text.substr(0, kLongestOldIdent);
  if (text.size() < kLongestOldIdent || !item.ident.view().starts_with(text)) item.ident = text;
  return {};
}

std::string_view read_link_ident(std::string_view text, ItemRecord& item) {
  item.detail_kind = store::kLongIdentDetails;
  item.record_type = kLinkIdentType;
  // Deliberate : so short a text is what older files hold in the place of no link. A link as short as that
  // has blanks behind it.
  item.link_ident = text.size() <= kLongestEmptyLink ? std::string_view() : base::trim_trailing_blanks(text);
  return {};
}

std::string_view read_old_class(std::string_view text, ItemRecord& item) {
  if (!read_class(text, item)) return "c3 line error";
  item.detail_kind = store::kLongIdentDetails;
  item.record_type = kLinkIdentType;
  return {};
}

std::string_view read_place(std::string_view text, ItemRecord& item) {
  const std::vector<std::string_view> fields = split_fields(text, 6);
  item.name = fields[0];
  item.city = fields[1];
  item.state = fields[2];
  item.country = fields[3];
  read_field(fields[4], item.waypoint_class);
  read_field(fields[5], item.record_type);
  return {};
}

std::string_view read_heights(std::string_view text, ItemRecord& item) {
  constexpr std::string_view kError = "c5 line error";
  const std::vector<std::string_view> fields = base::split(text, ',');
  float altitude = 0, depth = 0;
  if (fields.size() != 3 || !read_metres(fields[0], altitude) || !read_metres(fields[1], depth)) return kError;
  if (!read_class(fields[2], item)) return kError;
  item.altitude = altitude;
  item.depth = depth;
  item.record_type = kDetailType;
  set_full_details(item);
  return {};
}

std::string_view read_address(std::string_view text, ItemRecord& item) {
  const std::vector<std::string_view> fields = split_fields(text, 6);
  item.ident = fields[0];
  item.facility = fields[1];
  item.city = fields[2];
  item.address = fields[3];
  item.cross_road = fields[4];
  read_field(fields[5], item.record_type);
  set_full_details(item);
  return {};
}

std::string_view read_route_link(std::string_view text, ItemRecord& item) {
  const std::size_t comma = text.rfind(',');
  if (comma == std::string_view::npos) return "c7 line error";
  const std::string_view ident = text.substr(0, comma);
  if (ident.size() > item.route_link_ident.longest()) return "c7 line error Ident";
  const std::string_view numbers = base::trim_blanks(text.substr(comma + 1));
  const std::optional<std::uint16_t> link_class = read_hex<std::uint16_t>(numbers.substr(0, 4));
  if (!link_class) return "c7 line error Class";
  const std::optional<std::vector<std::uint8_t>> bytes = read_hex_bytes(numbers.substr(4), item.link_subclass.size());
  // Deliberate : the text names c5, as users of these files know it.
  if (!bytes) return "c5 line error SubClass";
  item.has_route_link = 1;
  item.route_link_ident = ident;
  item.link_class = *link_class;
  item.link_subclass = {};
  std::copy(bytes->begin(), bytes->end(), item.link_subclass.begin());
  if (item.detail_kind == store::kNoDetails) item.detail_kind = store::kRouteLinkDetails;
  return {};
}

struct DetailLine {
  char digit;
  std::string_view (*read)(std::string_view text, ItemRecord& item);
};
constexpr std::array kDetailLines{DetailLine{'1', read_full_ident}, DetailLine{'2', read_link_ident},
                                  DetailLine{'3', read_old_class},  DetailLine{'4', read_place},
                                  DetailLine{'5', read_heights},    DetailLine{'6', read_address},
                                  DetailLine{'7', read_route_link}};

bool has_class(const ItemRecord& item) {
  return item.waypoint_class != 0 && item.waypoint_class != store::kClassNotSet;
}

bool is_place_type(std::uint16_t type) { return type == 151 || type == 152 || type == 154 || type == 155; }

bool any_set(std::span<const std::uint8_t> bytes) {
  return std::any_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte != 0; });
}

bool is_given(float metres) { return store::is_known(metres) && std::isfinite(metres); }

// The detail lines that a record needs, so that a reader ends with the same record.
struct NeededLines {
  bool ident = false;         // c1: sets type 105
  bool link = false;          // c2: sets type 106
  bool old_class = false;     // c3: sets type 106
  bool full = false;          // c5 and c6
  std::uint16_t of_type = 0;  // what c6 says, by which a reader tells kind 2 from none
  bool place_before = false;  // c4 ...
  bool place_after = false;   // ... behind the others when they would set another type
};

NeededLines needed_lines(const ItemRecord& item) {
  const std::uint16_t type = item.record_type;
  const bool has_old_kind = item.detail_kind == store::kLongIdentDetails;
  const bool has_full_kind = item.detail_kind == store::kFullDetails && item.waypoint_class != 0;
  const bool has_link = !item.link_ident.empty();
  NeededLines needed;
  needed.ident = has_old_kind;
  needed.old_class = has_old_kind && (type != kFullIdentType || has_link || has_class(item));
  needed.link = needed.old_class || has_link;

  const bool c1_says_all = needed.ident && !needed.old_class;
  const auto unsaid_subclass = std::span(item.subclass).subspan(needed.old_class ? kOldSubclassSize : 0);
  needed.full = has_full_kind || (type >= kDetailType && type <= kLastDetailType) || is_given(item.altitude) ||
                is_given(item.depth) || item.ident.size() > (c1_says_all ? kLongestOldIdent : kLongIdent) ||
                !item.facility.empty() || !item.city.empty() || !item.address.empty() || !item.cross_road.empty() ||
                has_class(item) || any_set(unsaid_subclass) || (has_link && !has_old_kind);
  needed.of_type = type;  // unless a reader would find another kind; c4 then puts the type right
  if (has_full_kind && type == 0) needed.of_type = kDetailType;
  if (!has_full_kind && !has_old_kind && item.waypoint_class != 0) needed.of_type = 0;

  std::uint16_t type_read = needed.full ? needed.of_type : 0;
  if (needed.ident) type_read = needed.old_class ? kLinkIdentType : kFullIdentType;
  needed.place_after = (needed.full || needed.ident) && type_read != type;
  needed.place_before = !needed.place_after && (type_read != type || is_place_type(type) || !item.name.empty() ||
                                                !item.state.empty() || !item.country.empty());
  return needed;
}

void append_text_line(std::string& out, std::string_view head, std::string_view text) {
  out += head;
  out += text;
  out += '\n';
}

std::string metres_text(float metres) {
  return is_given(metres) ? base::format_text("%8.1f", static_cast<double>(metres)) : "1e24";
}

constexpr std::string_view kCapitalDigits = "0123456789ABCDEF";
constexpr std::string_view kSmallDigits = "0123456789abcdef";

void append_hex(std::string& out, std::uint8_t byte, std::string_view digits) {
  out += digits[byte >> 4];
  out += digits[byte & 15];
}

// The class and the subclass bytes behind it.
void append_class(std::string& out, const ItemRecord& item, std::size_t subclass_size) {
  append_hex(out, item.waypoint_class, kCapitalDigits);
  for (const std::uint8_t byte : std::span(item.subclass).first(subclass_size)) {
    out += ' ';
    append_hex(out, byte, kCapitalDigits);
  }
}

void append_fields(std::string& out, std::string_view head, std::initializer_list<std::string_view> fields) {
  out += head;
  for (const std::string_view field : fields) {
    out += field;
    out += ';';
  }
}

void append_place(std::string& out, const ItemRecord& item) {
  append_fields(out, "c4 ", {item.name, item.city, item.state, item.country});
  out += std::to_string(item.waypoint_class) + ";" + std::to_string(item.record_type) + ";\n";
}

void append_full_lines(std::string& out, const ItemRecord& item, std::uint16_t type) {
  out += "c5 " + metres_text(item.altitude) + ", " + metres_text(item.depth) + ", ";
  append_class(out, item, item.subclass.size());
  append_fields(out, "\nc6 ", {item.ident, item.facility, item.city, item.address, item.cross_road});
  out += std::to_string(type) + ";\n";
}

// With blanks behind a link so short that it would be read as none.
void append_link(std::string& out, std::string_view link) {
  std::string text(link);
  if (!link.empty() && link.size() <= kLongestEmptyLink) text.resize(kLongestEmptyLink + 1, ' ');
  append_text_line(out, "c2 ", text);
}

void append_old_class(std::string& out, const ItemRecord& item) {
  out += "c3 ";
  append_class(out, item, kOldSubclassSize);
  out += '\n';
}

void append_route_link(std::string& out, const ItemRecord& item) {
  out += "c7 ";
  out += item.route_link_ident;
  out += base::format_text(", %04x ", static_cast<unsigned>(item.link_class));
  for (const std::uint8_t byte : item.link_subclass) {
    append_hex(out, byte, kSmallDigits);
    out += ' ';
  }
  out += '\n';
}

}  // namespace

bool read_metres(std::string_view text, float& metres) {
  text = base::trim_blanks(text);
  metres = store::kNotKnown;
  if (text.empty()) return true;
  const std::optional<double> value = base::parse_number(text);
  if (value && std::abs(*value) < 1e24) metres = static_cast<float>(*value);
  return value.has_value();
}

void read_detail_line(std::string_view line, ItemRecord& item, base::FrontEnd& front_end) {
  if (line.size() < 2 || (line.size() > 2 && line[2] != ' ')) return;
  const auto row = std::find_if(kDetailLines.begin(), kDetailLines.end(),
                                [&](const DetailLine& known) { return known.digit == line[1]; });
  if (row == kDetailLines.end()) return;
  const std::string_view error = row->read(line.size() > 3 ? line.substr(3) : std::string_view(), item);
  if (!error.empty()) front_end.write_line(1, std::string(error) + ": '" + std::string(line) + "'");
}

// The last of c1 to c6, c4 excepted, decides the detail kind that a reader finds: c5 and c6 stand behind a lone
// c2 and before c1.
void append_detail_lines(std::string& out, const ItemRecord& item) {
  const NeededLines needed = needed_lines(item);
  if (needed.place_before) append_place(out, item);
  if (needed.link && !needed.ident) append_link(out, item.link_ident);
  if (needed.full) append_full_lines(out, item, needed.of_type);
  if (needed.ident) append_text_line(out, "c1 ", item.ident);
  if (needed.link && needed.ident) append_link(out, item.link_ident);
  if (needed.old_class) append_old_class(out, item);
  if (needed.place_after) append_place(out, item);
  if (item.has_route_link != 0) append_route_link(out, item);
}

}  // namespace textfile
