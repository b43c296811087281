// MAC addresses: records of type, count and base address in the identity EEPROM, kept twice.
#include "drv_basic/identity/drv_mac.h"

#include "sim/devices/identity/mac_store.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { mac_store(b, b.instance(inst_id)); });
}

} // namespace

uint32_t drv_mac_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_mac_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_mac_set_addr(uint32_t inst_id, uint32_t type_id, const uint8_t *addr) {
    return operate([&](board &b) {
        refuse_null(addr);
        mac_store macs_of_board(b, b.instance(inst_id));
        set_base(macs_of_board.of_type(type_id), addr);
        macs_of_board.save();
    });
}

uint32_t drv_mac_get_addr(uint32_t inst_id, uint32_t type_id, uint8_t *addr) {
    return operate([&](board &b) {
        refuse_null(addr);
        const mac_address base = mac_store(b, b.instance(inst_id)).of_type(type_id).base;
        std::copy(base.begin(), base.end(), addr);
    });
}

uint32_t drv_mac_set_num(uint32_t inst_id, uint32_t type_id, uint32_t num, uint32_t reserved) {
    return operate([&](board &b) {
        refuse_if(reserved != 0, error::bad_value);
        mac_store macs_of_board(b, b.instance(inst_id));
        set_count(macs_of_board.of_type(type_id), num);
        macs_of_board.save();
    });
}

uint32_t drv_mac_get_num(uint32_t inst_id, uint32_t type_id, uint32_t *num, uint32_t reserved) {
    return operate([&](board &b) {
        refuse_null(num);
        refuse_if(reserved != 0, error::bad_value);
        *num = mac_store(b, b.instance(inst_id)).of_type(type_id).count;
    });
}

uint32_t drv_mac_set_addr_num(uint32_t inst_id, uint32_t type_id, uint32_t num, const uint8_t *addr) {
    return operate([&](board &b) {
        refuse_null(addr);
        mac_store macs_of_board(b, b.instance(inst_id));
        mac_record &record = macs_of_board.of_type(type_id);
        set_count(record, num);
        set_base(record, addr);
        macs_of_board.save();
    });
}

uint32_t drv_mac_get_addr_num(uint32_t inst_id, uint32_t type_id, uint32_t num, uint8_t *buffer, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const mac_record record = mac_store(b, b.instance(inst_id)).of_type(type_id);
        refuse_if(num > record.count, error::out_of_range);
        refuse_if(num > size / DRV_MAC_SIZE, error::too_small);
        const uint64_t base = number_from_address(record.base);
        for (uint32_t i = 0; i < num; ++i) {
            const mac_address address = address_from_number(base + i);
            std::copy(address.begin(), address.end(), buffer + size_t{i} * DRV_MAC_SIZE);
        }
    });
}
