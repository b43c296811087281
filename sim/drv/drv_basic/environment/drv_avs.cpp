// Adaptive voltage scaling: the dump of all controllers, and checks and items of one.
#include "drv_basic/environment/drv_avs.h"

#include "sim/devices/environment/avs.h"
#include "sim/drv/drv_basic/management/board/unit.h"

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

namespace {

// Who wants no text has no area.
void tell_finding(const finding &found, uint32_t *result, char *buffer, uint32_t len) {
    if (buffer != nullptr || len != 0) {
        tell(found, result, buffer, len);
        return;
    }
    refuse_null(result);
    *result = found.status;
}

avs::item item_of(uint32_t number) {
    refuse_if(number >= avs::item_count, error::bad_value);
    return static_cast<avs::item>(number);
}

} // namespace

uint32_t drv_avs_check_phase_fault(uint32_t inst_id, uint32_t chip_id, uint32_t *result, char *buffer, uint32_t len) {
    return operate([&](board &b) {
        tell_finding(avs::check_phases(b, b.find<avs::family>(inst_id, chip_id)), result, buffer, len);
    });
}

uint32_t drv_avs_check_chip(uint32_t inst_id, uint32_t chip_id, uint32_t *result, char *buffer, uint32_t len) {
    return operate([&](board &b) {
        tell_finding(avs::check_status_byte(b, b.find<avs::family>(inst_id, chip_id)), result, buffer, len);
    });
}

uint32_t drv_avs_check_word_fault(uint32_t inst_id, uint32_t chip_id, uint32_t *result, char *buffer, uint32_t len) {
    return operate([&](board &b) {
        tell_finding(avs::check_status_word(b, b.find<avs::family>(inst_id, chip_id)), result, buffer, len);
    });
}

uint32_t drv_avs_get_item_value(uint32_t inst_id, uint32_t chip_id, uint32_t item, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = avs::item_value(b, b.find<avs::family>(inst_id, chip_id), item_of(item));
    });
}

uint32_t drv_avs_get_item_string(uint32_t inst_id, uint32_t chip_id, uint32_t item, char *buffer, uint32_t len) {
    return operate([&](board &b) {
        write_text(buffer, len, avs::item_text(b, b.find<avs::family>(inst_id, chip_id), item_of(item)));
    });
}
