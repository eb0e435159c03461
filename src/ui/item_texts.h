// Positions, times, heights and distances as the user wants to see them, and back from what is typed. Lists, dialogs
// and the map show the same texts through this.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/quiet_front_end.h"
#include "session/session.h"

namespace ui {

class ItemTexts {
 public:
  // Looks at the session's settings once: whoever keeps one makes another when they change.
  explicit ItemTexts(const session::Session& session);
  ItemTexts(const ItemTexts&) = delete;  // the shift is bound to the front end beside it
  ItemTexts& operator=(const ItemTexts&) = delete;

  // Of a WGS-84 position, in the chosen datum and notation.
  [[nodiscard]] geodesy::PositionTexts position(const geodesy::Position& position) const;
  // A WGS-84 position from a text in any notation, in the chosen datum. The problem is a sentence without full stop.
  [[nodiscard]] geodesy::ParsedPosition parse_position(std::string_view text) const;

  // "Sun Dec 31 00:00:00 1989" in the chosen zone, of events (kind 'I') as they are kept; empty for no time.
  [[nodiscard]] std::string time(store::GarminTime time, char kind) const;
  // The reverse; an empty text is no time. Nothing when it is no date, or beyond what times can be.
  [[nodiscard]] std::optional<store::GarminTime> parse_time(std::string_view text, char kind) const;

  // A height or depth in metres, as a number in the unit of heights; empty when it is not known.
  [[nodiscard]] std::string height(float metres) const;
  [[nodiscard]] std::string_view height_unit() const;
  // The reverse; an empty text is not known. Nothing when it is no number.
  [[nodiscard]] std::optional<float> parse_height(std::string_view text) const;

  // A distance in metres, as a number in the unit of distances with its name: "12.345 km".
  [[nodiscard]] std::string distance(double metres) const;
  [[nodiscard]] std::string_view distance_unit() const;
  // Metres of a number in that unit; nothing when it is no number, or negative.
  [[nodiscard]] std::optional<double> parse_distance(std::string_view text) const;

  [[nodiscard]] const std::string& datum() const { return datum_; }

 private:
  [[nodiscard]] std::int64_t offset_of(char kind) const { return kind == 'I' ? 0 : offset_seconds_; }

  std::string datum_;
  geodesy::Notation notation_;
  store::VerticalUnit heights_;
  geodesy::DistanceUnit distances_;
  std::int64_t offset_seconds_;
  // An unknown datum has been told of where it was chosen; here WGS-84 takes its place without a word.
  base::QuietFrontEnd quiet_;
  geodesy::DatumShift out_;
  geodesy::DatumShift in_;
};

// What people call a symbol: "Residence", "Symbol 20".
[[nodiscard]] std::string symbol_name(int code);

// The position that distances and bearings are taken from; nothing when none is set.
[[nodiscard]] std::optional<geodesy::Position> reference_position(const store::Settings& settings);
// The initial course of the great circle, in degrees from true north, 0 to 360 (the end not included).
[[nodiscard]] double initial_bearing(const geodesy::Position& from, const geodesy::Position& to);

}  // namespace ui
