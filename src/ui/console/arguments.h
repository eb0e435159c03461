// The command line of the console program, taken apart.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace ui::console {

// Slots of a Lowrance/Eagle unit, from 1.
struct SlotRange {
  static constexpr int kToTheEnd = -1;
  int low = 1;
  int high = kToTheEnd;
};

// What stands on the command line; nothing of it has been acted on. Options that were not given are empty.
struct Arguments {
  std::string command;

  std::string config = "pelorix.ini";
  std::vector<std::string> set;  // "KEY=VALUE"
  std::string family, port, debug_log, debug_format;
  std::optional<int> speed;
  bool trace = false;
  bool quiet = false;

  std::vector<std::string> words;    // kinds, files, coordinates: what the command takes without a name
  std::vector<std::string> outputs;  // -o

  std::string datum, from_datum, to_datum, notation;
  std::optional<int> txt_version;
  std::optional<double> time_offset;
  std::vector<std::string> kinds;
  bool distances = false, no_comments = false, no_symbols = false;
  bool rotate_left = false;
  bool follow = false;  // position-velocity-time data
  bool yes = false;     // questions need not be asked

  std::optional<SlotRange> range;         // of Lowrance/Eagle units: what is downloaded, ...
  std::optional<int> start, route_start;  // ... the first slots that uploads go to, ...
  bool inactives = false;                 // ... and whether the slots behind them are emptied

  std::vector<std::string> load, save_to;  // of the simulated receiver
  std::string save, protocols, software, unit, link;
  int baud = 0;
  std::optional<int> product;
  std::vector<std::string> faults;
  bool echo = false, noise = false;
};

// Whether the word names a kind of items: all, waypoints, trail1, ...
[[nodiscard]] bool is_kind(const std::string& word);

// The program ends at once: with 0 after help or version, with 2 after wrong usage.
struct EndNow {
  int exit_status;
  std::string output;  // for standard output
  std::string error;   // for standard error
};

// The program's own name stands first.
[[nodiscard]] std::variant<Arguments, EndNow> parse_arguments(std::vector<std::string> words);

}  // namespace ui::console
