// Isolation from the switch fabrics, the black box, and the SMI buses with their main and backup source.
#include "drv_basic/management/drv_board.h"

#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

constexpr device_kind fabrics{"sim_board", "sfu"};
constexpr device_kind black_boxes{"sim_board", "bbox"};
constexpr device_kind smi{"sim_board", "smi"};
constexpr device_kind smi_buses{"sim_board", "smi_bus"};

uint32_t set_switch(uint32_t inst_id, const device_kind &kind, uint32_t id, const char *name, uint32_t value) {
    return operate([&](board &b) {
        const device which = b.find(inst_id, kind, id);
        refuse_if(value > 1, error::bad_value);
        b.get(which, name);
        b.put(which, name, value);
    });
}

uint32_t get_switch(uint32_t inst_id, const device_kind &kind, uint32_t id, const char *name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(b.find(inst_id, kind, id), name);
    });
}

void add_bus_fault(board &b, const device &bus, const char *name, const std::string &what, finding &found) {
    if (b.get(bus, name) != 0) {
        add_fault(found, "bus " + std::to_string(bus.id) + ": " + what);
    }
}

} // namespace

uint32_t drv_board_set_sfu_isolate(uint32_t inst_id, uint32_t id, uint32_t enable) {
    return set_switch(inst_id, fabrics, id, "isolate", enable);
}

uint32_t drv_board_get_sfu_isolate(uint32_t inst_id, uint32_t id, uint32_t *value) {
    return get_switch(inst_id, fabrics, id, "isolate", value);
}

uint32_t drv_board_set_sfu_fullin_isolate_en(uint32_t inst_id, uint32_t id, uint32_t enable) {
    return set_switch(inst_id, fabrics, id, "fullin_isolate_en", enable);
}

uint32_t drv_board_get_sfu_fullin_isolate_en(uint32_t inst_id, uint32_t id, uint32_t *value) {
    return get_switch(inst_id, fabrics, id, "fullin_isolate_en", value);
}

uint32_t drv_board_set_bbox_enable(uint32_t inst_id, uint32_t enable) {
    return set_switch(inst_id, black_boxes, 0, "enable", enable);
}

uint32_t drv_board_set_bbox_time(uint32_t inst_id, uint32_t time_value) {
    return operate([&](board &b) { b.put(b.find(inst_id, black_boxes, 0), "seconds", time_value); });
}

uint32_t drv_board_check_smi(uint32_t inst_id, uint32_t bus_id, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const device bus = b.find(inst_id, smi_buses, bus_id);
        finding found;
        add_bus_fault(b, bus, "crc_errors", "checksum errors", found);
        add_bus_fault(b, bus, "los", "no signal", found);
        tell(found, result, dfx, size);
    });
}

uint32_t drv_board_check_smi_crc(uint32_t inst_id, uint32_t bus_id, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        finding found;
        add_bus_fault(b, b.find(inst_id, smi_buses, bus_id), "crc_errors", "checksum errors", found);
        tell(found, result, dfx, size);
    });
}

uint32_t drv_board_check_smi_los(uint32_t inst_id, uint32_t bus_id, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        finding found;
        add_bus_fault(b, b.find(inst_id, smi_buses, bus_id), "los", "no signal", found);
        tell(found, result, dfx, size);
    });
}

uint32_t drv_board_set_backup_smi_en(uint32_t inst_id, uint32_t en_flag) {
    return set_switch(inst_id, smi, 0, "backup_enable", en_flag);
}

uint32_t drv_board_set_smi_source(uint32_t inst_id, uint32_t source) {
    return set_switch(inst_id, smi, 0, "source", source);
}

uint32_t drv_board_get_smi_source(uint32_t inst_id, uint32_t *source) {
    return get_switch(inst_id, smi, 0, "source", source);
}
