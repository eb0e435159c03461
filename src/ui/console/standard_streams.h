// Standard output and error, as every part of this program writes to them: UTF-8, lines ended by LF.
#pragma once

#include <memory>

namespace ui::console {

// Linux takes that as it is, but all three streams must be there: a file that is opened while one is missing would get
// its number, and our messages. On Windows a console shows every character, whatever its code page; another program
// at the end of a pipe gets the console's code page, a file UTF-8; lines end with CR LF.
class StandardStreams {
 public:
  StandardStreams();
  ~StandardStreams();
  StandardStreams(const StandardStreams&) = delete;
  StandardStreams& operator=(const StandardStreams&) = delete;

 private:
  struct Replacements;
  std::unique_ptr<Replacements> replacements_;
};

}  // namespace ui::console
