// OziExplorer's text files on their way in, line by line, and what their readers and writers must agree upon.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/reading_progress.h"
#include "base/remarks.h"
#include "base/text.h"
#include "base/text_input.h"
#include "geodesy/distance.h"
#include "store/file_context.h"

namespace formats {

inline constexpr char kOziComma = '\xD1';           // stands for a comma in a text, which has none itself
inline constexpr double kOziGarminEpoch = 32873.0;  // 1989-12-31 in OziExplorer's days since 1899-12-30
inline constexpr std::string_view kOziUnnamedTrack = "Sun Dec 31 00:00:00 1989";  // where a track file has its name

// One of the four types of files.
struct OziKind {
  std::string_view banner;  // in the first line
  std::string_view name;    // of a file
  std::string_view items;   // of its lines
  std::size_t fewest_fields;
  std::size_t first_coordinate = 0;  // field of the latitude
};
inline constexpr OziKind kOziWaypoints{"OziExplorer Waypoint", "waypoint", "waypoints", 4, 2};
inline constexpr OziKind kOziRoutes{"OziExplorer Route", "route", "parts of a route", 2};
inline constexpr OziKind kOziTrack{"OziExplorer Track", "track", "track points", 3};
inline constexpr OziKind kOziEvents{"OziExplorer Event", "event", "events", 4, 1};

// The fields of a line between its commas, without the blanks around them.
class OziFields {
 public:
  void split(std::string_view line) {
    count_ = 0;
    for (bool more = true; more && count_ < fields_.size();) {
      const std::size_t comma = line.find(',');
      fields_[count_++] = base::trim_blanks(line.substr(0, comma));
      more = comma != std::string_view::npos;
      if (more) line.remove_prefix(comma + 1);
    }
  }
  [[nodiscard]] std::size_t size() const { return count_; }
  // Empty where the line has no such field; it counts from 0.
  std::string_view operator[](std::size_t index) const { return index < count_ ? fields_[index] : std::string_view(); }

 private:
  static constexpr std::size_t kMost = 27;  // of a route's line with all that a waypoint's has
  std::array<std::string_view, kMost> fields_;
  std::size_t count_ = 0;
};

// The time of an OziExplorer date, to the second. No time for what is none.
[[nodiscard]] store::GarminTime ozi_time(std::string_view field);
// Metres of an altitude; not known for -777 and for what is none.
[[nodiscard]] float ozi_altitude(std::string_view field, double metres_per_unit);

// A file on its way in: its header, then its lines as fields, and what went wrong with them.
class OziFile {
 public:
  OziFile(const store::FileContext& context, base::TextInput& input, const OziKind& kind)
      : context_(context), input_(input), progress_(context.front_end, input), kind_(kind) {
    context.store.set_input_time_offset(0);
    context.store.clear_route_overflow();
    context.store.forget_pending_track();
  }

  // Takes the first line and the datum. False, and a message box, when this is another file.
  [[nodiscard]] bool open(const std::string& file_name);
  // Takes lines up to the next item; false at the end, and when the user has asked to stop. A header in the middle,
  // where two files were put together, is taken too.
  [[nodiscard]] bool next();
  // Of a track file: the line below the header with the track's properties, which next() has just given; false when it
  // was not there.
  [[nodiscard]] bool is_properties() const { return is_properties_; }
  [[nodiscard]] std::string_view field(std::size_t index) const { return fields_[index]; }
  [[nodiscard]] double metres_per_altitude_unit() const { return metres_per_altitude_unit_; }

  // The texts of the line in a record, with their commas.
  template <std::size_t N>
  void set_text(base::FixedText<N>& text, std::size_t index) {
    const std::string_view value = fields_[index];
    if (value.size() > N) ++cut_texts_;
    text = base::trim_trailing_blanks(value.substr(0, N));
    text.replace(kOziComma, ',');
  }
  // The position that begins in this field, in WGS-84. False when there is none: the line is passed over.
  [[nodiscard]] bool set_position(store::ItemRecord& item, std::size_t index);
  // The same of a record that becomes the waypoint whose fields begin at `first`.
  [[nodiscard]] bool set_waypoint(store::ItemRecord& item, std::size_t first);
  // Counts the line as a bad one.
  void pass_over();
  // To be called at the end: says what was passed over and cut.
  void close();

 private:
  bool refuse(const std::string& file_name, std::string_view line);
  void begin_header();
  [[nodiscard]] bool take_header_line();
  [[nodiscard]] bool looks_like_item() const;
  void set_datum(std::string_view name);

  const store::FileContext& context_;
  base::TextInput& input_;
  base::ReadingProgress progress_;
  const OziKind& kind_;
  OziFields fields_;
  double metres_per_altitude_unit_ = geodesy::kMetresPerFoot;
  int header_lines_left_ = 0;  // below the banner
  bool datum_expected_ = false;
  bool properties_expected_ = false;
  bool count_expected_ = false;  // of track points: not to be relied on
  bool is_properties_ = false;
  int line_number_ = 0;
  base::BadLines bad_lines_;
  int cut_texts_ = 0;
};

}  // namespace formats
