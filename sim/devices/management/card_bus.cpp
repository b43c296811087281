// Isolators follow the mastership by themselves.
#include "sim/devices/management/card_bus.h"

#include "sim/core/catalogue.h"
#include "sim/core/instance.h"

namespace kestro_sim {

bool card_bus::is_open(board &b, uint32_t slot_of_board, uint32_t slot_of_card) {
    return slot_of_board == b.master_slot() ||
           b.get(board::at<family>(slot_place(slot_of_board), slot_of_card), stuck) != 0;
}

device_list devices_of_card_bus() {
    static constexpr const device_family *families[]{&card_bus::family};
    return {families, {}};
}

} // namespace kestro_sim
