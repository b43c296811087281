#include "tests/selftest/fake_storage.h"

#include <cstring>

#include "drv_basic/identity/drv_barcode.h"
#include "drv_basic/identity/drv_elabel.h"
#include "drv_basic/identity/drv_mac.h"
#include "drv_basic/management/drv_msc.h"

namespace kestro_tests {

fake_storage &storage() {
    static fake_storage kept;
    return kept;
}

} // namespace kestro_tests

using kestro_tests::storage;

namespace {

constexpr uint32_t broken = 0x22;
constexpr uint32_t no_type = 0x21;
constexpr uint32_t not_supported = 0x811101a4;

uint32_t read_text(const std::string &text, uint8_t *area, uint32_t len) {
    memcpy(area, text.data(), text.size() < len ? text.size() : len);
    return 0;
}

uint32_t write_text(std::string &text, const uint8_t *area, uint32_t len) {
    if (storage().refuses_writes) {
        return broken;
    }
    if (!storage().forgets_writes) {
        text.assign(reinterpret_cast<const char *>(area), len);
    }
    return 0;
}

uint32_t mac_fault(uint32_t type_id) {
    if (storage().broken) {
        return broken;
    }
    return storage().macs.count(type_id) != 0 ? 0 : no_type;
}

} // namespace

uint32_t drv_elabel_read(uint32_t, uint32_t, uint8_t *area, uint32_t len) {
    return storage().broken ? broken : read_text(storage().label, area, len);
}

uint32_t drv_elabel_write(uint32_t, uint32_t, const uint8_t *area, uint32_t len) {
    return storage().broken ? broken : write_text(storage().label, area, len);
}

uint32_t drv_barcode_read(uint32_t, uint32_t barcode_id, uint8_t *area, uint32_t len) {
    if (storage().broken) {
        return broken;
    }
    const auto found = storage().barcodes.find(barcode_id);
    return found == storage().barcodes.end() ? not_supported : read_text(found->second, area, len);
}

uint32_t drv_barcode_write(uint32_t, uint32_t barcode_id, const uint8_t *area, uint32_t len) {
    return storage().broken ? broken : write_text(storage().barcodes[barcode_id], area, len);
}

uint32_t drv_mac_get_num(uint32_t, uint32_t type_id, uint32_t *num, uint32_t) {
    const uint32_t fault = mac_fault(type_id);
    if (fault == 0) {
        *num = storage().macs[type_id].num;
    }
    return fault;
}

uint32_t drv_mac_set_num(uint32_t, uint32_t type_id, uint32_t num, uint32_t) {
    const uint32_t fault = mac_fault(type_id);
    if (fault == 0 && !storage().forgets_writes) {
        storage().macs[type_id].num = num;
    }
    return fault;
}

uint32_t drv_mac_get_addr_num(uint32_t, uint32_t type_id, uint32_t, uint8_t *buffer, uint32_t size) {
    const uint32_t fault = mac_fault(type_id);
    return fault == 0 ? read_text(storage().macs[type_id].first, buffer, size) : fault;
}

uint32_t drv_mac_set_addr_num(uint32_t, uint32_t type_id, uint32_t, const uint8_t *addr) {
    const uint32_t fault = mac_fault(type_id);
    return fault == 0 ? write_text(storage().macs[type_id].first, addr, DRV_MAC_SIZE) : fault;
}

uint32_t drv_msc_get_state(uint32_t, uint32_t, uint32_t *state) {
    *state = storage().msc_state;
    return 0;
}
