// The screen of a simulated Garmin receiver, as the packets in which receivers give it away. The maker's document does
// not have them; the layout is that of public captures.
#pragma once

#include <cstdint>
#include <vector>

#include "simulators/garmin_framing.h"
#include "simulators/garmin_options.h"

namespace simulators {

// The shape that the options force, if it is a possible one, else what the product has: 72 by 100 pixels in black and
// white for early products, 160 by 240 in four greys for the others.
[[nodiscard]] ScreenShape screen_shape(const GarminOptions& options);

// How dark the picture on the screen is at a pixel, counted from the top left corner: 0 white, 1 light, 2 dark grey, 3
// black. It shows a north arrow in a ring, a bar in four steps below and a block in the top left corner: turned or
// mirrored it looks different.
[[nodiscard]] int screen_tone(const ScreenShape& shape, int x, int y);

// A header, then the lines from the top, at most 128 bytes of them to a packet; the leftmost pixel of a byte is in its
// least significant bits.
[[nodiscard]] std::vector<Packet> screen_packets(const GarminOptions& options);

}  // namespace simulators
