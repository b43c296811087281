// A stick answers some time after it got power: worked out from board time when somebody asks.
#include "sim/devices/storage/usb_port.h"

#include "sim/core/catalogue.h"
#include "sim/devices/environment/rail.h"

namespace kestro_sim {

namespace {

constexpr uint32_t too_low = 1;

bool gives_power(board &b, const usb_port::port &which) {
    return b.get(which, usb_port::on) != 0 && b.get(which, usb_port::fault) == 0;
}

} // namespace

bool usb_port::is_on_line(board &b, const port &which) {
    const auto switched_on = static_cast<int64_t>(b.get_wide(which, since));
    return b.get(which, present) != 0 && gives_power(b, which) &&
           b.now() - switched_on >= b.get(which, start_up) * nanoseconds_per_millisecond;
}

void usb_port::switch_to(board &b, const port &which, uint32_t to) {
    change writes;
    if (to != 0 && b.get(which, on) == 0) {
        b.put(writes, which, since, static_cast<uint64_t>(b.now()));
    }
    b.put(writes, which, on, to);
    b.commit(writes);
}

bool usb_port::recover(board &b, const port &which) {
    if (b.get(which, fault) == 0) {
        return true;
    }
    if (b.get(which, fault_stays) != 0) {
        return false;
    }
    b.put_all(which, {{fault, 0}, {since, static_cast<uint64_t>(b.now())}});
    return true;
}

uint32_t usb_port::judge_voltage(board &b, const port &which) {
    const auto source = b.find_at<rail::family>(which.instance, b.get(which, rail_number));
    return gives_power(b, which) ? rail::judge(b, source, rail::limits::warning).status : too_low;
}

device_list devices_of_usb_port() {
    static constexpr const device_family *families[]{&usb_port::family};
    return {families, {}};
}

} // namespace kestro_sim
