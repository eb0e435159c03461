// A receiver as the port layer sees it: something that can be asked whether it is there.
#pragma once

namespace serial {

inline constexpr int kGarminFamily = 2;
inline constexpr int kLowranceFamily = 15;

class Receiver {
 public:
  virtual ~Receiver() = default;

  // kGarminFamily or kLowranceFamily.
  [[nodiscard]] virtual int family() const = 0;
  // Asks the receiver on the open port who it is; leaves ComTimedOut set when nothing answers.
  virtual void probe() = 0;
};

}  // namespace serial
