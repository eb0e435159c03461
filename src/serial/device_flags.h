// What the layers under a transfer tell each other about the device. One instance, owned by the session.
#pragma once

namespace serial {

struct DeviceFlags {
  bool PortOpen = false;            // OpenGpsPort succeeded and AsyncStop has not run since
  bool ComTimedOut = false;         // the last receive gave up waiting
  bool UserAbort = false;           // the running transfer is to stop
  bool GpsIdentified = false;       // a Garmin receiver is known: the next open needs no probe
  bool LowranceIdentified = false;  // the same of a Lowrance/Eagle receiver
};

}  // namespace serial
