// From the words of a call to the port, its module and what its memory map says.
#pragma once

#include "optical_lib/drv_opt.h"

#include "sim/devices/optics/module_memory.h"
#include "sim/drv/driver.h"

namespace kestro_sim::optical_port {

// Refuses a port that the board lacks, and one of another package.
inline cage::one find(board &b, uint32_t inst_id, const drv_opt_port_para *port_para) {
    refuse_null(port_para);
    auto port = b.find<cage::family>(inst_id, port_para->port);
    refuse_if(port_para->package_type != b.get(port, cage::package), error::bad_value);
    return port;
}

struct answer {
    optical_module::fitted which;
    optics::memory map;
};

// Of a module that answers on its bus.
inline answer read(board &b, uint32_t inst_id, const drv_opt_port_para *port_para) {
    const auto which = optical_module::answering(b, find(b, inst_id, port_para));
    return {which, optics::memory_of(b, which)};
}

// Which of so many lanes are meant; callers that do not know how many there are set all bits.
inline uint32_t meant_lanes(const drv_opt_port_para *port_para, uint32_t lanes) {
    const uint32_t meant = port_para->lanebitmap & ((1U << lanes) - 1);
    refuse_if(meant == 0, error::bad_value);
    return meant;
}

} // namespace kestro_sim::optical_port
