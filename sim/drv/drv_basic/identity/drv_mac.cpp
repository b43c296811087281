// MAC addresses: records of type, count and base address in the identity EEPROM, kept twice.
#include "drv_basic/identity/drv_mac.h"

#include "sim/core/mac_area.h"
#include "sim/drv/drv_basic/identity/identity.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

constexpr device_kind macs{"sim_identity", "mac"};

// The records of one instance, read from the master copy, or from the backup when the master makes no sense.
class mac_store {
  public:
    mac_store(board &b, uint32_t inst_id) : board_(b), eeprom_(b, inst_id) {
        refuse_if(b.ids(eeprom_.instance(), macs).empty(), error::not_supported);
        for (const uint32_t section : {mac_section, mac_backup_section}) {
            if (const auto found = eeprom_.find(section)) {
                copies_.push_back(*found);
            }
        }
        for (const eeprom_section &copy : copies_) {
            if (auto records = decode_mac_area(eeprom_.read(copy, 0, copy.size))) {
                records_ = *records;
                return;
            }
        }
        refuse(error::damaged);
    }

    mac_record &of_type(uint32_t type_id) {
        board_.find_at(eeprom_.instance(), macs, type_id);
        const auto found = std::find_if(records_.begin(), records_.end(),
                                        [&](const mac_record &record) { return record.type == type_id; });
        refuse_if(found == records_.end(), error::damaged);
        return *found;
    }

    void save() {
        change writes;
        for (const eeprom_section &copy : copies_) {
            eeprom_.write(writes, copy, 0, encode_mac_area(records_, copy.size));
        }
        board_.commit(writes);
    }

  private:
    board &board_;
    identity eeprom_;
    std::vector<eeprom_section> copies_;
    std::vector<mac_record> records_;
};

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { mac_store(b, inst_id); });
}

void set_base(mac_record &record, const uint8_t *addr) {
    std::copy_n(addr, record.base.size(), record.base.begin());
}

void set_count(mac_record &record, uint32_t num) {
    refuse_if(num > mac_count_max, error::bad_value);
    record.count = static_cast<uint16_t>(num);
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
        mac_store macs_of_board(b, inst_id);
        set_base(macs_of_board.of_type(type_id), addr);
        macs_of_board.save();
    });
}

uint32_t drv_mac_get_addr(uint32_t inst_id, uint32_t type_id, uint8_t *addr) {
    return operate([&](board &b) {
        refuse_null(addr);
        const mac_address base = mac_store(b, inst_id).of_type(type_id).base;
        std::copy(base.begin(), base.end(), addr);
    });
}

uint32_t drv_mac_set_num(uint32_t inst_id, uint32_t type_id, uint32_t num, uint32_t reserved) {
    return operate([&](board &b) {
        refuse_if(reserved != 0, error::bad_value);
        mac_store macs_of_board(b, inst_id);
        set_count(macs_of_board.of_type(type_id), num);
        macs_of_board.save();
    });
}

uint32_t drv_mac_get_num(uint32_t inst_id, uint32_t type_id, uint32_t *num, uint32_t reserved) {
    return operate([&](board &b) {
        refuse_null(num);
        refuse_if(reserved != 0, error::bad_value);
        *num = mac_store(b, inst_id).of_type(type_id).count;
    });
}

uint32_t drv_mac_set_addr_num(uint32_t inst_id, uint32_t type_id, uint32_t num, const uint8_t *addr) {
    return operate([&](board &b) {
        refuse_null(addr);
        mac_store macs_of_board(b, inst_id);
        mac_record &record = macs_of_board.of_type(type_id);
        set_count(record, num);
        set_base(record, addr);
        macs_of_board.save();
    });
}

uint32_t drv_mac_get_addr_num(uint32_t inst_id, uint32_t type_id, uint32_t num, uint8_t *buffer, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const mac_record record = mac_store(b, inst_id).of_type(type_id);
        refuse_if(num > record.count, error::out_of_range);
        refuse_if(num > size / DRV_MAC_SIZE, error::too_small);
        const uint64_t base = number_from_address(record.base);
        for (uint32_t i = 0; i < num; ++i) {
            const mac_address address = address_from_number(base + i);
            std::copy(address.begin(), address.end(), buffer + size_t{i} * DRV_MAC_SIZE);
        }
    });
}
