// Health of the board: solder joints, corrosion, the main processing unit, interrupts, and the trusted platform module.
#include "drv_basic/management/drv_board.h"

#include "sim/devices/chassis/slots.h"
#include "sim/devices/management/health.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

constexpr uint32_t small_slot = 0;
constexpr uint32_t big_slot = 1;

uint32_t read_tpm(uint32_t inst_id, word_of<trusted_module::family> name, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = b.get(b.find<trusted_module::family>(inst_id), name);
    });
}

// A main processing unit knows which of the two slots it is in; other boards say which of the two they listen to.
bool is_mpu_as_wired(board &b, const device_of<board_unit::family> &self, uint32_t status) {
    if (!b.has(self, board_unit::peer_slot)) {
        return true;
    }
    return status == (own_slot(b) < b.get(self, board_unit::peer_slot) ? small_slot : big_slot);
}

} // namespace

uint32_t drv_board_get_four_corner_status(uint32_t inst_id, uint32_t chip_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = b.get(b.find<corner_joint::family>(inst_id, chip_id), corner_joint::status);
    });
}

uint32_t drv_board_check_four_corner_status(uint32_t inst_id, uint32_t chip_id, uint32_t *status, char *dfx,
                                            uint32_t size) {
    return operate([&](board &b) {
        finding found;
        if (b.get(b.find<corner_joint::family>(inst_id, chip_id), corner_joint::status) != 0) {
            add_fault(found, "a corner joint of chip " + std::to_string(chip_id) + " is open");
        }
        tell(found, status, dfx, size);
    });
}

// The sensors are read together.
uint32_t drv_board_check_corrosion_status(uint32_t inst_id, uint32_t *status, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const auto sensors = b.all_at<corrosion_sensor::family>(b.instance(inst_id));
        refuse_if(sensors.empty(), error::not_supported);
        finding found;
        for (const auto &sensor : sensors) {
            if (b.get(sensor, corrosion_sensor::status) != 0) {
                add_fault(found, "corrosion at sensor " + std::to_string(sensor.id));
            }
        }
        tell(found, status, dfx, size);
    });
}

uint32_t drv_board_get_mpu_status(uint32_t inst_id, uint32_t *status, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const uint32_t mpu = b.get(unit(b, inst_id), board_unit::mpu);
        tell({mpu, mpu > big_slot ? "neither slot of the two is selected" : ""}, status, dfx, size);
    });
}

uint32_t drv_board_check_mpu_status(uint32_t inst_id, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const auto self = unit(b, inst_id);
        const uint32_t mpu = b.get(self, board_unit::mpu);
        finding found;
        if (mpu > big_slot || !is_mpu_as_wired(b, self, mpu)) {
            add_fault(found, "slot " + std::to_string(own_slot(b)) + " reads MPU status " + std::to_string(mpu));
        }
        tell(found, result, dfx, size);
    });
}

uint32_t drv_board_check_int_status(uint32_t index_id, uint32_t type, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const auto line = b.find<interrupt_line::family>(DRV_INST_SELF, index_id);
        refuse_if(b.get(line, interrupt_line::type) != type, error::no_such_device);
        finding found;
        if (b.get(line, interrupt_line::fault) != 0) {
            add_fault(found, "interrupt " + std::to_string(index_id) + " is stuck");
        }
        tell(found, result, dfx, size);
    });
}

uint32_t drv_board_get_tpm_online_status(uint32_t inst_id, uint32_t *status) {
    return read_tpm(inst_id, trusted_module::absent, status);
}

uint32_t drv_board_get_tpm_active_status(uint32_t inst_id, uint32_t *status) {
    return read_tpm(inst_id, trusted_module::active, status);
}
