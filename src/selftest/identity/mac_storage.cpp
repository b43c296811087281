// MAC address storage. The board keeps its addresses: they are written back before anything is compared.
#include "selftest/identity/mac_storage.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "drv_basic/identity/drv_mac.h"
#include "drv_basic/management/drv_msc.h"
#include "selftest/entry_walk.h"
#include "selftest/test_value.h"

namespace {

constexpr uint8_t test_address[DRV_MAC_SIZE] = {0x20, 0x02, 0x03, 0x04, 0x05, 0x06};

// The addresses of one type, in a heap area of at least one address.
struct mac_set {
    uint32_t num;
    uint8_t *addresses;
};

const char *type_name(uint32_t type_id) {
    constexpr const char *names[] = {"meth-mac", "system-mac", "card-mac", "corvex-mac", "board-sys-mac", "eth-ex-mac"};
    if (type_id < sizeof(names) / sizeof(names[0])) {
        return names[type_id];
    }
    return type_id >= 64 && type_id <= 79 ? "bkp-flexe-mac" : "other";
}

// No board stores more addresses of a type; a count beyond it comes from a broken storage and gets no area.
constexpr uint32_t max_addresses = 0x10000;

uint8_t *new_address_area(uint32_t num) {
    return num > max_addresses ? nullptr : static_cast<uint8_t *>(calloc(std::max(num, 1U), DRV_MAC_SIZE));
}

// Fills the set, whose area the caller frees, whatever the result.
uint32_t read_macs(uint32_t inst_id, uint32_t type_id, mac_set *macs, report_sink sink) {
    uint32_t ret = drv_mac_get_num(inst_id, type_id, &macs->num, 0);
    if (ret != 0) {
        report_append(sink, "Error: mac num read fail, inst_id=0x%x, mac_type=0x%x %s, ret=%#x.\r\n", inst_id, type_id,
                      type_name(type_id), ret);
        return ret;
    }
    const uint32_t size = macs->num * DRV_MAC_SIZE;
    macs->addresses = new_address_area(macs->num);
    if (macs->addresses == nullptr) {
        report_append(sink, "Error: mac num read fail, len = %u.\r\n", size);
        return UINT32_MAX;
    }
    ret = drv_mac_get_addr_num(inst_id, type_id, macs->num, macs->addresses, size);
    if (ret != 0) {
        report_append(sink, "Error: mac addr read fail, inst_id=0x%x, mac_type=0x%x %s, mac_num=0x%x ret=%#x.\r\n",
                      inst_id, type_id, type_name(type_id), macs->num, ret);
    }
    return ret;
}

uint32_t write_macs(uint32_t inst_id, uint32_t type_id, uint32_t num, const uint8_t *address, report_sink sink) {
    uint32_t ret = drv_mac_set_num(inst_id, type_id, num, 0);
    if (ret != 0) {
        report_append(sink, "Error: mac num write fail, inst_id=0x%x, mac_type=0x%x %s, ret=%#x.\r\n", inst_id, type_id,
                      type_name(type_id), ret);
        return ret;
    }
    ret = drv_mac_set_addr_num(inst_id, type_id, num, address);
    if (ret != 0) {
        report_append(sink, "Error: mac addr write fail, inst_id=0x%x, mac_type=0x%x %s, mac_num=0x%x ret=%#x.\r\n",
                      inst_id, type_id, type_name(type_id), num, ret);
    }
    return ret;
}

void report_macs(const char *step, uint32_t num, const uint8_t *address, report_sink sink) {
    report_append(sink, "Success: %s num %u mac:0x%x-0x%x-0x%x-0x%x-0x%x-0x%x\r\n", step, num, address[0], address[1],
                  address[2], address[3], address[4], address[5]);
}

int compare_macs(uint32_t written_num, const mac_set &read_back, report_sink sink) {
    if (written_num != read_back.num) {
        report_append(sink, "Error: mac read and write num match test fail. write_num %u read_num %u\r\n", written_num,
                      read_back.num);
        return -1;
    }
    if (memcmp(test_address, read_back.addresses, DRV_MAC_SIZE) != 0) {
        report_append(sink, "Error: mac read and write value match test fail\r\n");
        return -1;
    }
    report_append(sink, "Success: mac read and write num and value match test pass.\r\n");
    return 0;
}

// Test address out and back in, then the saved addresses out again.
bool write_round_trip(uint32_t inst_id, uint32_t type_id, uint32_t num, const mac_set &saved, mac_set *read_back,
                      report_sink sink) {
    if (write_macs(inst_id, type_id, num, test_address, sink) != 0) {
        report_append(sink, "Error: write mac fail.\r\n");
        return false;
    }
    report_macs("write mac", num, test_address, sink);
    if (read_macs(inst_id, type_id, read_back, sink) != 0) {
        report_append(sink, "Error: read mac after write fail.\r\n");
        return false;
    }
    report_macs("read mac", read_back->num, read_back->addresses, sink);
    if (write_macs(inst_id, type_id, saved.num, saved.addresses, sink) != 0) {
        report_append(sink, "Error: final write original mac fail.\r\n");
        return false;
    }
    return true;
}

// One address fewer than stored, so that a count which is not written shows.
int write_and_compare(uint32_t inst_id, uint32_t type_id, const mac_set &saved, mac_set *read_back, report_sink sink) {
    const uint32_t num = saved.num >= 2 ? saved.num - 1 : saved.num;
    begin_test_value();
    const bool restored = write_round_trip(inst_id, type_id, num, saved, read_back, sink);
    end_test_value();
    return restored ? compare_macs(num, *read_back, sink) : -1;
}

} // namespace

int mac_write_test(uint32_t inst_id, uint32_t type_id, report_sink sink) {
    mac_set saved{};
    mac_set read_back{};
    int result = -1;
    const uint32_t ret = read_macs(inst_id, type_id, &saved, sink);
    if (ret != 0 || saved.num == 0) {
        report_append(sink, "Error: orignal mac read fail.ret =0x%x original_mac_num = %u\r\n", ret, saved.num);
    } else {
        report_macs("orignal mac read", saved.num, saved.addresses, sink);
        result = write_and_compare(inst_id, type_id, saved, &read_back, sink);
    }
    free(saved.addresses);
    free(read_back.addresses);
    return result;
}

namespace {

bool board_is_master() {
    uint32_t state = 1;
    return drv_msc_get_state(DRV_INST_SELF, 0, &state) == 0 && state == 0;
}

bool is_tested_here(uint32_t type_id) {
    if (type_id == 4 || type_id == 72 || type_id == 73) {
        return false;
    }
    const bool chassis_wide = type_id == 1 || type_id == 2 || (type_id >= 64 && type_id <= 79);
    return !chassis_wide || board_is_master();
}

int test_described_type(const entry_walk &walk, uint32_t type_id, report_sink sink) {
    if (mac_write_test(walk.inst_id, type_id, sink) != 0) {
        return -1;
    }
    report_append(sink, "Success: mac type %d %s test pass.\r\n", static_cast<int>(type_id), type_name(type_id));
    uint32_t spare_id = 0;
    if (read_element_of_node(walk, "mac_storage_spare", "id", &spare_id) != 0) {
        report_append(sink, "Error: mac %d has no spare.\r\n", static_cast<int>(type_id));
        return -1;
    }
    return 0;
}

} // namespace

int mac_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "mac_mng", "mac_storage_main");
    if (!has_entries(walk)) {
        report_append(sink, "Error: mac xml get entry num fail.\r\n");
        return -1;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t type_id = 0;
        if (read_element(walk, "id", &type_id) == 0 && is_tested_here(type_id)) {
            result |= test_described_type(walk, type_id, sink);
        }
    }
    return result;
}
