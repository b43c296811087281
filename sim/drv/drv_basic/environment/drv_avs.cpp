// Adaptive voltage scaling: controllers that trim a core rail to what the processor asks for.
#include "drv_basic/environment/drv_avs.h"

#include "sim/drv/driver.h"

#include <cstdio>

using namespace kestro_sim;

namespace {

constexpr device_kind controllers{"sim_avs", "controller"};
constexpr device_kind rails{"sim_voltage", "rail"};

// The regulator behind a controller is the rail's own: what was set there is what is measured here.
std::string registers_of(board &b, const device &controller) {
    const uint32_t rail = b.get(controller, "rail");
    const uint32_t millivolts = b.get(b.find_at(controller.instance, rails, rail), "millivolts");
    char line[128];
    const int length =
        snprintf(line, sizeof line, "avs %u: rail %u, target %u mV, measured %u mV, status 0x%02x\r\n", controller.id,
                 rail, b.get(controller, "target"), millivolts, b.get(controller, "status"));
    return {line, static_cast<size_t>(length)};
}

} // namespace

// Half a dump would pass for a board with fewer controllers: what does not fit is refused.
uint32_t drv_avs_dump_dfx_info(uint32_t inst_id, char *buffer, uint32_t len) {
    return operate([&](board &b) {
        const std::string instance = b.instance(inst_id);
        const std::vector<uint32_t> ids = b.ids(instance, controllers);
        refuse_if(ids.empty(), error::not_supported);
        std::string dump;
        for (const uint32_t id : ids) {
            dump += registers_of(b, b.find_at(instance, controllers, id));
        }
        write_text(buffer, len, dump);
    });
}
