// Plug-in cards: a card's part of the board description is taken in when the card comes and dropped when it goes. The
// CPLD of a card is loaded by way of its SPI bus.
#include "drv_basic/management/drv_pic.h"

#include "sim/devices/chassis/slots.h"
#include "sim/drv/drv_basic/chips/loading.h"

using namespace kestro_sim;

namespace {

void require_card(board &b, uint32_t inst_id) {
    refuse_if(!is_card(b, b.instance(inst_id)), error::not_supported);
}

// The bus of a card ends at its isolator.
pic_cpld::one logic_of_card(board &b, uint32_t inst_id, uint32_t chip_id) {
    const std::string place = b.instance(inst_id);
    if (!is_card(b, place)) {
        return pic_cpld::behind(b, b.find<spi_chip::family>(inst_id, chip_id));
    }
    refuse_if(chip_id != 0, error::no_such_device);
    refuse_if(!b.is_seen(place), error::not_ready);
    return pic_cpld::of_card(b, place);
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

uint32_t drv_logic_pic_load(uint32_t inst_id, uint32_t chip_id, const uint8_t *buffer, uint32_t length) {
    return load_in_steps(
        buffer, length,
        [&](board &b, image_bytes image) {
            return logic_load::begin_card(b, logic_of_card(b, inst_id, chip_id), image);
        },
        [&](board &b, const logic_load::begun &load) {
            logic_load::finish_card(b, logic_of_card(b, inst_id, chip_id), load);
        });
}
