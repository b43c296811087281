// Switches of the buses, and checks of the SMI buses.
#include "drv_basic/management/drv_board.h"

#include "sim/devices/management/bus_links.h"
#include "sim/devices/protection/line_watch.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

template <const device_family &Family>
uint32_t set_switch(uint32_t inst_id, uint32_t id, written_of<Family> name, uint32_t value) {
    return operate([&](board &b) { b.put(b.find<Family>(inst_id, id), name, value); });
}

template <const device_family &Family>
uint32_t get_switch(uint32_t inst_id, uint32_t id, word_of<Family> name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(b.find<Family>(inst_id, id), name);
    });
}

using smi_bus_of = device_of<smi_bus::family>;

void add_bus_fault(board &b, const smi_bus_of &bus, word_of<smi_bus::family> name, const std::string &what,
                   finding &found) {
    if (b.get(bus, name) != 0) {
        add_fault(found, "bus " + std::to_string(bus.id) + ": " + what);
    }
}

} // namespace

uint32_t drv_board_set_sfu_isolate(uint32_t inst_id, uint32_t id, uint32_t enable) {
    return set_switch<fabric_link::family>(inst_id, id, fabric_link::isolate, enable);
}

// Software cuts the board off, or the watch over the power lines does.
uint32_t drv_board_get_sfu_isolate(uint32_t inst_id, uint32_t id, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto link = b.find<fabric_link::family>(inst_id, id);
        const bool is_isolated = b.get(link, fabric_link::isolate) != 0;
        *value = is_isolated || fabric_isolation::is_active(b, link.instance) ? 1 : 0;
    });
}

uint32_t drv_board_set_sfu_fullin_isolate_en(uint32_t inst_id, uint32_t id, uint32_t enable) {
    return set_switch<fabric_link::family>(inst_id, id, fabric_link::fullin_isolate_en, enable);
}

uint32_t drv_board_get_sfu_fullin_isolate_en(uint32_t inst_id, uint32_t id, uint32_t *value) {
    return get_switch<fabric_link::family>(inst_id, id, fabric_link::fullin_isolate_en, value);
}

uint32_t drv_board_set_bbox_enable(uint32_t inst_id, uint32_t enable) {
    return set_switch<black_box::family>(inst_id, 0, black_box::enable, enable);
}

uint32_t drv_board_set_bbox_time(uint32_t inst_id, uint32_t time_value) {
    return operate([&](board &b) { b.put(b.find<black_box::family>(inst_id), black_box::seconds, time_value); });
}

uint32_t drv_board_check_smi(uint32_t inst_id, uint32_t bus_id, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const smi_bus_of bus = b.find<smi_bus::family>(inst_id, bus_id);
        finding found;
        add_bus_fault(b, bus, smi_bus::crc_errors, "checksum errors", found);
        add_bus_fault(b, bus, smi_bus::los, "no signal", found);
        tell(found, result, dfx, size);
    });
}

uint32_t drv_board_check_smi_crc(uint32_t inst_id, uint32_t bus_id, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        finding found;
        add_bus_fault(b, b.find<smi_bus::family>(inst_id, bus_id), smi_bus::crc_errors, "checksum errors", found);
        tell(found, result, dfx, size);
    });
}

uint32_t drv_board_check_smi_los(uint32_t inst_id, uint32_t bus_id, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        finding found;
        add_bus_fault(b, b.find<smi_bus::family>(inst_id, bus_id), smi_bus::los, "no signal", found);
        tell(found, result, dfx, size);
    });
}

uint32_t drv_board_set_backup_smi_en(uint32_t inst_id, uint32_t en_flag) {
    return set_switch<smi_source::family>(inst_id, 0, smi_source::backup_enable, en_flag);
}

uint32_t drv_board_set_smi_source(uint32_t inst_id, uint32_t source) {
    return set_switch<smi_source::family>(inst_id, 0, smi_source::source, source);
}

uint32_t drv_board_get_smi_source(uint32_t inst_id, uint32_t *source) {
    return get_switch<smi_source::family>(inst_id, 0, smi_source::source, source);
}
