// Reads the program's own text files into the store: header lines (version, datum, notation, time offset),
// one line an item, detail lines below waypoints. docs/formats/native-text.md has the layout.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/front_end.h"
#include "base/text_input.h"
#include "geodesy/datum_shift.h"
#include "geodesy/datum_table.h"
#include "geodesy/notation.h"
#include "store/item_store.h"
#include "store/settings.h"

namespace textfile {

class TextReader {
 public:
  // All must outlive the reader. `command_options` is given every line that begins with '!'; it may be empty.
  TextReader(store::ItemStore& store, geodesy::DatumShift& shift, const geodesy::DatumTable& datums,
             const store::Settings& settings, base::FrontEnd& front_end,
             std::function<void(std::string_view)> command_options);

  // Reads a whole file. The result is the number of data lines accepted; lines that are none, or that hold no
  // position, are passed over. Times without a 'Z' line are UTC, positions without a 'D' line WGS-84. An
  // abort by the user leaves what was read, and says so on output line 2.
  int read(base::TextInput& input, const std::string& file_name);

 private:
  struct State {
    std::string_view file_name;
    int version = 1;
    geodesy::Notation notation = geodesy::Notation::Dmm;
    bool notation_given = false;
    bool route_open = false;
    int accepted = 0;
  };
  // Where the position of an item line begins, and what it is.
  struct Columns {
    std::size_t position = 0;
    geodesy::Position wgs84;
  };

  void set_file_datum(std::string_view name);
  bool read_line(base::TextInput& lines);
  bool read_setting_line(std::string_view line);
  void read_data_line(std::string_view line);
  void read_datum(std::string_view line);
  void read_track_start(std::string_view line);
  void read_route_header(std::string_view line);
  void read_item(std::string_view line);
  [[nodiscard]] std::optional<Columns> find_position(std::string_view line, geodesy::Notation notation) const;
  [[nodiscard]] store::GarminTime read_time(std::string_view line, std::size_t column) const;
  void read_waypoint_fields(std::string_view line, const Columns& columns);
  void read_symbol_fields(std::string_view fields);
  void read_track_fields(std::string_view rest);
  [[nodiscard]] int push_item(char kind);

  store::ItemStore& store_;
  geodesy::DatumShift& shift_;
  const geodesy::DatumTable& datums_;
  const store::Settings& settings_;
  base::FrontEnd& front_end_;
  std::function<void(std::string_view)> command_options_;
  State state_;
};

}  // namespace textfile
