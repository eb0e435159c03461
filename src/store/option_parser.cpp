#include "store/option_parser.h"

#include "base/text.h"

namespace store {
namespace {

// The options; those with a ':' behind them take an argument.
constexpr std::string_view kSpecification = "aAb:B:c:C:dDeEm:j:J:kKlLM:nNp:P:q:Q:r:R:t:T:w:W:";

}  // namespace

int OptionParser::next() {
  for (;;) {
    if (letters_.empty() && !take_letters()) return kEnd;
    const char letter = letters_.front();
    letters_.remove_prefix(1);
    argument_ = {};
    const std::size_t place = letter == ':' ? std::string_view::npos : kSpecification.find(letter);
    if (place == std::string_view::npos) {
      report(": illegal option -- ", letter);
      letters_ = {};
      continue;
    }
    if (place + 1 < kSpecification.size() && kSpecification[place + 1] == ':') {
      argument_ = letters_;
      letters_ = {};
      if (argument_.empty()) {
        if (words_.empty()) {
          report(": option requires an argument -- ", letter);
          return kEnd;
        }
        argument_ = words_.front();
        words_ = words_.subspan(1);
      }
    }
    return base::lower_case(std::string_view(&letter, 1))[0];
  }
}

// Goes to the next word of option letters; false when there is none.
bool OptionParser::take_letters() {
  while (!words_.empty()) {
    const std::string_view word = words_.front();
    words_ = words_.subspan(1);
    if (word == "--") {
      words_ = {};
    } else if (word.size() > 1 && word[0] == '-') {
      letters_ = word.substr(1);
      return true;
    }
  }
  return false;
}

}  // namespace store
