// Puts a simulated receiver behind a new pseudo-terminal, where any program finds it like a serial port.
#pragma once

#include <functional>
#include <string>

#include "simulators/simulated_receiver.h"

namespace simulators {

class PtyHost {
 public:
  PtyHost() = default;
  PtyHost(const PtyHost&) = delete;
  PtyHost& operator=(const PtyHost&) = delete;
  // Closes the pseudo-terminal and removes the link.
  ~PtyHost() { close(); }

  // Makes the pseudo-terminal, raw and without echo, and a symbolic link to it where `link` names one; a
  // symbolic link that is already there is replaced. Empty on success, else the reason in words.
  [[nodiscard]] std::string open(const std::string& link = {});
  // The path that a host program opens.
  [[nodiscard]] const std::string& path() const { return path_; }

  // Lets host programs talk to the receiver, one after another, at the pace of its wire, until stop() is true
  // (asked after every signal and at least ten times a second) or the receiver is unplugged, which closes the
  // pseudo-terminal.
  void serve(SimulatedReceiver& receiver, const std::function<bool()>& stop);

 private:
  void close();
  void take_due_output(SimulatedReceiver& receiver);
  void write_pending();
  // Sleeps until there is something to do.
  void wait(SimulatedReceiver& receiver);
  void read_input(SimulatedReceiver& receiver);
  void tell_speed(SimulatedReceiver& receiver) const;

  int master_ = -1;
  int slave_ = -1;  // held open so that the pseudo-terminal outlives each host program
  std::string path_;
  std::string link_;
  std::string pending_;  // bytes that are through the wire but that the terminal has no room for yet
};

}  // namespace simulators
