// Recognises the text sentences of NMEA 0183 in a stream of received bytes: a receiver that sends them is set
// to the wrong interface for transfers. One sentence's address ("$GPRMC,", "$PGRME,") is proof enough;
// checksums and line ends are not looked at.
#pragma once

#include <cstdint>

namespace serial {

class NmeaDetector {
 public:
  void feed(std::uint8_t byte) {
    if (byte == '$') {
      address_length_ = 0;
    } else if (address_length_ == kOutside) {
      return;
    } else if (is_capital(byte) || (address_length_ >= kTalkerLength && byte >= '0' && byte <= '9')) {
      if (++address_length_ > kLongestAddress) address_length_ = kOutside;
    } else {
      found_ = found_ || (byte == ',' && address_length_ >= kShortestAddress);
      address_length_ = kOutside;
    }
  }
  // Whether a sentence has come.
  [[nodiscard]] bool found() const { return found_; }

 private:
  static constexpr int kOutside = -1;         // between sentences, or after the address
  static constexpr int kTalkerLength = 2;     // letters only: GP, GN, GL, P and a maker
  static constexpr int kShortestAddress = 5;  // talker and three of the sentence
  static constexpr int kLongestAddress = 8;   // some makers' own sentences

  static bool is_capital(std::uint8_t byte) { return byte >= 'A' && byte <= 'Z'; }

  int address_length_ = kOutside;
  bool found_ = false;
};

}  // namespace serial
