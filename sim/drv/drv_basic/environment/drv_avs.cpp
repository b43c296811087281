// Adaptive voltage scaling.
#include "drv_basic/environment/drv_avs.h"

#include "sim/devices/environment/avs.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

// Half a dump would pass for a board with fewer controllers: what does not fit is refused.
uint32_t drv_avs_dump_dfx_info(uint32_t inst_id, char *buffer, uint32_t len) {
    return operate([&](board &b) {
        const auto controllers = b.all_at<avs::family>(b.instance(inst_id));
        refuse_if(controllers.empty(), error::not_supported);
        std::string dump;
        for (const auto &controller : controllers) {
            dump += avs::dump_line(b, controller);
        }
        write_text(buffer, len, dump);
    });
}
