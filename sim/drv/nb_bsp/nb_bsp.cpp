// Board support below the drivers: pins, reserved memory, plug-in cards.
#include "nb_bsp/nb_bsp.h"

#include "sim/core/eeprom.h"
#include "sim/core/instance.h"
#include "sim/devices/bsp/processor_pins.h"
#include "sim/devices/identity/eeprom_content.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

constexpr uint32_t card_number_max = 255;

} // namespace

uint32_t nb_gpio_read(uint32_t pin, uint32_t *level) {
    return operate([&](board &b) {
        refuse_null(level);
        *level = b.get(b.find<gpio_pin::family>(DRV_INST_SELF, pin), gpio_pin::level);
    });
}

uint32_t nb_gpio_write(uint32_t pin, uint32_t level) {
    return operate([&](board &b) { gpio_pin::drive(b, b.find<gpio_pin::family>(DRV_INST_SELF, pin), level); });
}

uint32_t nb_get_himem_info(uint64_t *start, uint64_t *length) {
    return operate([&](board &b) {
        refuse_null(start, length);
        const auto region = b.find<reserved_memory::family>(DRV_INST_SELF);
        const uint64_t first = b.get_wide(region, reserved_memory::start);
        *length = b.get_wide(region, reserved_memory::length);
        *start = first;
    });
}

// An empty place has its number too.
uint32_t get_card_id(uint32_t inst_id, uint32_t *card_id) {
    return operate([&](board &b) {
        refuse_null(card_id);
        b.place(inst_id);
        const auto decoded = decode_instance(inst_id);
        refuse_if(!decoded || decoded->kind == instance_id::kind::self || decoded->number > card_number_max,
                  error::no_such_instance);
        *card_id = decoded->number;
    });
}

uint32_t find_section_info_by_section(uint32_t inst_id, uint32_t section_id, uint32_t *device_id, uint32_t *offset,
                                      uint32_t *size) {
    return operate([&](board &b) {
        refuse_null(device_id, offset, size);
        const std::string instance = b.instance(inst_id);
        refuse_if(!b.is_seen(instance), error::no_such_instance);
        const auto section = find_section(b.described(), instance, section_id);
        refuse_if(!section, error::no_such_section);
        // The number is that on the management bus; a board reaches its own EEPROM without it.
        *device_id =
            instance == b.self() ? 0 : b.get(b.find_at<identity_eeprom::family>(instance), identity_eeprom::device_id);
        *offset = section->offset;
        *size = section->size;
    });
}
