// Who is called in this process for packets that a management port receives.
//
// It stands here, not in the driver library: that one may be closed while the delivering thread is at work.
#pragma once

#include "sim/core/events.h"
#include "sim/devices/network/management_port.h"

namespace kestro_sim::packet_receiver {

// Gives how many bytes it took.
using function = uint32_t (*)(uint32_t port, void *data, void *reserved, uint32_t length);

// Within an operation. Packets are written to the area, cut to its size; without an area they stay in the driver's own.
// Who was called before is called no more. Gives that one's ears, for stop_listening() behind the operation; 0 for
// none.
listener_id call(board &b, const management_port::one &port, function callee, void *area, uint32_t size);
listener_id call_nobody(const management_port::one &port);

} // namespace kestro_sim::packet_receiver
