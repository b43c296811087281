// How a simulated power failure reaches the cards.
#include "sim/devices/protection/dying_gasp.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

void gasp_simulation::simulate(board &b, const device_of<family> &simulation, uint32_t to) {
    change writes;
    b.put(writes, simulation, enable, to);
    const bool begins = to != 0 && b.get(simulation, enable) == 0;
    for (const auto &line : b.all_at<gasp_line::family>(simulation.instance)) {
        if (begins && b.get(line, gasp_line::enable) != 0) {
            b.put(writes, line, gasp_line::told, b.get(line, gasp_line::told) + 1U);
        }
    }
    b.commit(writes);
}

device_list devices_of_dying_gasp() {
    static constexpr const device_family *families[]{&gasp_line::family, &gasp_simulation::family};
    return {families, {}};
}

} // namespace kestro_sim
