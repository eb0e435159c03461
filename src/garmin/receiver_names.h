// Names that a receiver can tell apart. Receivers know waypoints, and the newer ones routes and tracks, by their names
// alone: a second one of the same name takes the place of the first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "garmin/receiver_text.h"
#include "store/item_record.h"

namespace garmin {

// The names of one upload. Which name a thing gets depends on those named before it, so uploads that are to agree name
// the same things in the same order: first all are reserved, then named.
class ReceiverNames {
 public:
  // Things without a name are called `nameless` and a number.
  explicit ReceiverNames(const NameRule& rule, std::string_view nameless = "WPT") : rule_(rule), nameless_(nameless) {}

  // Keeps its name for a thing whose name the receiver takes as it is, so that no name that has to be cut comes first.
  void reserve(std::string_view name, std::uint64_t thing);
  // The receiver's name of the thing that we call `name`; `thing` tells apart things that we call the same (see
  // place_of). The same name and thing give the same result again. Another thing whose name comes out alike, up to
  // blanks at its end, gets the first free number from 1 on in place of its last letters, or behind them where there
  // is room. A rule without room for a name gives an empty one.
  [[nodiscard]] std::string name_of(std::string_view name, std::uint64_t thing);

 private:
  bool take(std::string_view name);
  [[nodiscard]] std::string unique_name(const std::string& name);
  [[nodiscard]] std::string numbered(std::string_view stem);

  NameRule rule_;
  std::string nameless_;
  std::unordered_map<std::string, std::string> given_;  // by our name and the thing
  std::unordered_set<std::string> taken_;               // without blanks at the end
  // The next number to try behind some letters, by its digits and those letters.
  std::unordered_map<std::string, std::size_t> next_numbers_;
};

// The place of a waypoint to about a metre: what makes two waypoints of one ident two things. Two programs may have
// rounded one place differently.
[[nodiscard]] std::uint64_t place_of(const store::ItemRecord& item);

}  // namespace garmin
