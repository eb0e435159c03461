// Our texts in the letters that receivers have: which of them each kind of field takes, and what becomes of the others.
#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>

namespace garmin {

// Old receivers have capitals alone, and few signs; those whose records end in texts of any length take printable
// ASCII.
enum class Letters { Capitals, Ascii };

struct NameRule {
  std::size_t longest = 0;  // letters; 0: the format has no name
  Letters letters = Letters::Capitals;
  bool identifies = true;  // false: something else tells the items apart, so names may be alike

  friend auto operator<=>(const NameRule&, const NameRule&) = default;
};

// A name (ident of a waypoint, name of a route or track) in the receiver's letters, cut to the rule's length and
// without blanks at its end, which receivers do not tell from none. Letters of Latin-1 become their plain letters
// ("\xE9" e, "\xDF" ss); with Capitals only "-ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 +" is left, with Ascii the bytes
// 0x20 to 0x7E; all else becomes '-'.
[[nodiscard]] std::string receiver_name(std::string_view latin1, const NameRule& rule);

// A comment or another text that names nothing, not cut: with Capitals the letters of names and also
// ; ? : / . , ( ) ' & # ! * "
[[nodiscard]] std::string receiver_comment(std::string_view latin1, Letters letters);

}  // namespace garmin
