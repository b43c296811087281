// Sticks that come and go, told in the driver log.
#pragma once

#include "sim/devices/storage/usb_port.h"

namespace kestro_sim {

// Within an operation. Once is enough.
void begin_to_watch_usb(board &b, const usb_port::port &which);

// Not within an operation: a line that is being written is waited for.
void end_watching_usb();

} // namespace kestro_sim
