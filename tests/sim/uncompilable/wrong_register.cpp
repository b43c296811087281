// Each of these must not compile; which one is tried is said on the compiler's command line.
#include "sim/devices/environment/rail.h"
#include "sim/devices/management/lamp.h"

using namespace kestro_sim;

uint32_t try_it(board &b, const device_of<rail::family> &which) {
#if defined(OTHER_FAMILY)
    return b.get(which, lamp::color);
#elif defined(TEXT_AS_NUMBER)
    return b.get(which, rail::desc);
#elif defined(READ_ONLY)
    b.put(which, rail::set_low, 1);
#endif
    return b.get(which, rail::millivolts);
}
