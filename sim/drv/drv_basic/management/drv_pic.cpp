// Plug-in cards: a card's part of the board description is taken in when the card comes and dropped when it goes.
#include "drv_basic/management/drv_pic.h"

#include "sim/devices/chassis/slots.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

void require_card(board &b, uint32_t inst_id) {
    refuse_if(!is_card(b, b.instance(inst_id)), error::not_supported);
}

} // namespace

uint32_t drv_pic_xml_load(uint32_t inst_id) {
    return operate([&](board &b) { require_card(b, inst_id); });
}

// The card's part stands in the description of the board, which is read again when it is next asked.
uint32_t drv_pic_xml_unload(uint32_t inst_id) {
    return operate([&](board &b) {
        require_card(b, inst_id);
        b.forget_description();
    });
}
