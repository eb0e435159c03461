// A simulated receiver for other programs: on a pseudo-terminal of this machine, where it is found like a serial port.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "session/session.h"

namespace session {

// How the simulated receiver is wanted, as texts of a command line. Empty and missing values are the usual ones.
struct SimulatorWishes {
  int baud = 0;                     // pace of the wire in bits per second; 0 takes no time
  std::vector<std::string> faults;  // such as "drop-ack@7"
  // Of Garmin receivers only.
  std::optional<int> product;  // id
  std::string software;        // version, such as 2.50
  std::string protocols;       // capability array such as "L001 A010 A100 D108", or "none"
  // Of Lowrance/Eagle units only.
  std::string unit;    // name
  bool echo = false;   // what it hears comes back
  bool noise = false;  // before its answers
};

// All of these are about the session's simulated receiver of the family, which is Garmin or Lowrance/Eagle.

// Takes the wishes over. Empty on success, else what is wrong with them.
[[nodiscard]] std::string wish_for(Session& session, store::Family family, const SimulatorWishes& wishes);

// Gives the receiver what the stores hold. What it has no room for, such as "50 waypoints"; empty for nothing.
[[nodiscard]] std::string load_simulated(Session& session, store::Family family);

// Serves the receiver on a new pseudo-terminal, also found as the symbolic link `link` unless that is empty, until
// stop() is true or the receiver is unplugged; what it holds then stays the session's. started() is told the path; when
// it returns false the receiver is not served. Empty on success, else what went wrong.
[[nodiscard]] std::string serve_simulated(Session& session, store::Family family, const std::string& link,
                                          const std::function<bool(const std::string& path)>& started,
                                          const std::function<bool()>& stop);

struct TakenContents {
  bool complete = false;              // false: not everything that was asked for came
  std::vector<std::string> left_out;  // kinds that the receiver holds but the program cannot download from it
  bool almanac_is_new = false;        // not the one that every simulated receiver starts with
};

// Puts what the receiver holds in the place of what the stores hold, as far as it came. The receiver's faults and pace,
// the abort key and the settings for duplicates, order, ranges and dates play no part.
TakenContents take_simulated_contents(Session& session, store::Family family);

}  // namespace session
