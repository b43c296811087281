// Plugging is the technician's: what it brings about begins with it, or when somebody first looks.
#include "sim/devices/optics/cage.h"

#include "sim/core/catalogue.h"
#include "sim/devices/optics/optical_module.h"

namespace kestro_sim {

namespace {

// Until the driver first looks, it takes for granted what the board was made with.
uint32_t last_noticed(board &b, const cage::one &port) {
    if (b.has(port, cage::noticed)) {
        return b.get(port, cage::noticed);
    }
    const auto described = element_number(b.described().element(port.instance, cage::family.module, cage::family.node,
                                                                std::to_string(port.id), cage::plugged.name));
    return static_cast<uint32_t>(described.value_or(0));
}

} // namespace

std::vector<cage::one> cage::all(board &b, uint32_t inst_id) {
    auto ports = b.all_at<family>(b.instance(inst_id));
    refuse_if(ports.empty(), error::not_supported);
    return ports;
}

bool cage::is_filled(board &b, const one &port) {
    return b.get(port, plugged) != 0;
}

void cage::notice(board &b, const one &port) {
    const uint32_t in_it = b.get(port, plugged);
    const uint32_t before = last_noticed(b, port);
    if (in_it == before) {
        return;
    }
    change writes;
    b.keep(writes, port, noticed, in_it);
    if (before != 0) {
        b.put(writes, port, pulled, 1);
    }
    if (in_it != 0) {
        b.put(writes, port, since, static_cast<uint64_t>(b.now()));
        optical_module::switch_on(b, writes, board::at<optical_module::family>(port.instance, in_it));
    }
    b.commit(writes);
}

bool cage::take_pull_history(board &b, const one &port) {
    notice(b, port);
    const bool was_pulled = b.get(port, pulled) != 0;
    if (was_pulled) {
        b.put(port, pulled, 0);
    }
    return was_pulled;
}

std::vector<cage::row> cage::port_map(board &b, uint32_t inst_id) {
    std::vector<row> rows;
    for (const one &port : all(b, inst_id)) {
        const uint32_t fits = b.get(port, package);
        if (!rows.empty() && rows.back().package == fits && rows.back().first + rows.back().number == port.id) {
            ++rows.back().number;
        } else {
            rows.push_back({fits, 1, port.id});
        }
    }
    return rows;
}

namespace {

void notice_all(board &b) {
    for (const pugi::xml_node place : b.described().chassis().children("place")) {
        for (const cage::one &port : b.all_at<cage::family>(place.attribute("name").value())) {
            cage::notice(b, port);
        }
    }
}

} // namespace

device_list devices_of_cage() {
    static constexpr const device_family *families[]{&cage::family};
    return {families, {}, {}, notice_all};
}

} // namespace kestro_sim
