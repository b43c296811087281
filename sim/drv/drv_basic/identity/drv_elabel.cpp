// Electronic labels: kept twice in the identity EEPROM, master and backup copy.
#include "drv_basic/identity/drv_elabel.h"

#include "sim/drv/drv_basic/identity/identity.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

constexpr device_kind elabels{"sim_identity", "elabel"};

void check_label(board &b, uint32_t inst_id, uint32_t elabel_id) {
    b.find(inst_id, elabels, elabel_id);
}

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { check_label(b, inst_id, 0); });
}

// Old cards keep 1024 bytes: a label that needs more is refused, the zeros that fill up a shorter one are not.
void write_copy(const identity &eeprom, change &writes, const eeprom_section &section, std::span<const uint8_t> label) {
    const auto kept = label.first(std::min<size_t>(label.size(), section.size));
    const auto beyond = label.subspan(kept.size());
    refuse_if(std::any_of(beyond.begin(), beyond.end(), [](uint8_t byte) { return byte != 0; }), error::out_of_range);
    eeprom.write(writes, section, 0, kept);
}

} // namespace

uint32_t drv_elabel_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_elabel_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_elabel_read(uint32_t inst_id, uint32_t elabel_id, uint8_t *area, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(area);
        check_label(b, inst_id, elabel_id);
        refuse_if(len == 0 || len > DRV_ELABEL_SIZE, error::out_of_range);
        const identity eeprom(b, inst_id);
        const eeprom_section section = eeprom.require(elabel_section, error::not_supported);
        const auto label = eeprom.read(section, 0, std::min(len, section.size));
        std::fill(std::copy(label.begin(), label.end(), area), area + len, uint8_t{0});
    });
}

uint32_t drv_elabel_write(uint32_t inst_id, uint32_t elabel_id, const uint8_t *area, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(area);
        check_label(b, inst_id, elabel_id);
        refuse_if(len == 0 || len > DRV_ELABEL_SIZE, error::out_of_range);
        const identity eeprom(b, inst_id);
        change writes;
        write_copy(eeprom, writes, eeprom.require(elabel_section, error::not_supported), {area, len});
        if (const auto backup = eeprom.find(elabel_backup_section)) {
            write_copy(eeprom, writes, *backup, {area, len});
        }
        b.commit(writes);
    });
}
