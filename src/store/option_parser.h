// Options of a command line as getopt takes them: letters behind '-', alone or several in a word, an argument
// in the rest of the word or in the next one, "--" where the options end. Other words are passed over.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace store {

class OptionParser {
 public:
  static constexpr int kEnd = -1;

  // `show_error` is told which letter is no option or lacks its argument, with the program's name before it. The
  // words outlive the parser.
  OptionParser(std::string_view program, std::span<const std::string> words,
               std::function<void(const std::string&)> show_error)
      : program_(program), words_(words), show_error_(std::move(show_error)) {}

  // The letter of the next option, a small one in any case; kEnd behind the last. After an error it goes on with
  // the next word.
  int next();
  // Of the option that next() has returned; empty when it takes none.
  [[nodiscard]] std::string_view argument() const { return argument_; }

 private:
  bool take_letters();
  void report(std::string_view problem, char letter) { show_error_(program_ + std::string(problem) + letter); }

  std::string program_;
  std::span<const std::string> words_;  // those not taken yet
  std::function<void(const std::string&)> show_error_;
  std::string_view letters_;  // of the word that is being read
  std::string_view argument_;
};

}  // namespace store
