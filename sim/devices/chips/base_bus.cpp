// From an address on the base board to the chip.
#include "sim/devices/chips/base_bus.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

namespace {

bool is_beyond(uint32_t number, uint32_t width) {
    return width < 32 && number >> width != 0;
}

void check_widths(const base_bus::request &wanted) {
    refuse_if(wanted.slave_addr_width != 7 && wanted.slave_addr_width != 10, error::bad_value);
    refuse_if(is_beyond(wanted.slave_addr, wanted.slave_addr_width), error::bad_value);
}

} // namespace

// Buses and channels without any chip are those that the board does not have. An address of 10 bits is another than the
// same number in 7.
i2c_chip::one base_bus::find(board &b, const std::string &place, const request &wanted) {
    const auto chips = b.all_at<family>(place);
    refuse_if(chips.empty(), error::not_supported);
    bool is_channel = false;
    for (const auto &each : chips) {
        if (b.get(each, bus) != wanted.bus || b.get(each, channel) != wanted.channel) {
            continue;
        }
        is_channel = true;
        check_widths(wanted);
        if (b.get(each, slave_addr) == wanted.slave_addr && b.get(each, slave_addr_width) == wanted.slave_addr_width) {
            refuse_if(b.get(each, reg_addr_width) != wanted.reg_addr_width, error::bad_value);
            refuse_if(is_beyond(wanted.offset, wanted.reg_addr_width), error::out_of_range);
            return b.find_at<i2c_chip::family>(place, b.get(each, chip));
        }
    }
    refuse(is_channel ? error::not_ready : error::no_such_device);
}

device_list devices_of_base_bus() {
    static constexpr const device_family *families[]{&base_bus::family};
    return {families, {}};
}

} // namespace kestro_sim
