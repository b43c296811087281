// Health of the board: solder joints, corrosion, the main processing unit, interrupts, and the trusted platform module.
#include "drv_basic/management/drv_board.h"

#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

constexpr device_kind corners{"sim_board", "corner"};
constexpr device_kind corrosion{"sim_board", "corrosion"};
constexpr device_kind interrupts{"sim_board", "interrupt"};
constexpr device_kind tpms{"sim_board", "tpm"};
constexpr uint32_t small_slot = 0;
constexpr uint32_t big_slot = 1;

uint32_t read_tpm(uint32_t inst_id, const char *name, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = b.get(b.find(inst_id, tpms, 0), name);
    });
}

// A main processing unit knows which of the two slots it is in; other boards say which of the two they listen to.
bool is_mpu_as_wired(board &b, const device &self, uint32_t status) {
    if (!b.has(self, "peer_slot")) {
        return true;
    }
    return status == (own_slot(b) < b.get(self, "peer_slot") ? small_slot : big_slot);
}

} // namespace

uint32_t drv_board_get_four_corner_status(uint32_t inst_id, uint32_t chip_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = b.get(b.find(inst_id, corners, chip_id), "status");
    });
}

uint32_t drv_board_check_four_corner_status(uint32_t inst_id, uint32_t chip_id, uint32_t *status, char *dfx,
                                            uint32_t size) {
    return operate([&](board &b) {
        finding found;
        if (b.get(b.find(inst_id, corners, chip_id), "status") != 0) {
            add_fault(found, "a corner joint of chip " + std::to_string(chip_id) + " is open");
        }
        tell(found, status, dfx, size);
    });
}

// The sensors are read together.
uint32_t drv_board_check_corrosion_status(uint32_t inst_id, uint32_t *status, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const std::string instance = b.instance(inst_id);
        const std::vector<uint32_t> sensors = b.ids(instance, corrosion);
        refuse_if(sensors.empty(), error::not_supported);
        finding found;
        for (const uint32_t sensor : sensors) {
            if (b.get(b.find_at(instance, corrosion, sensor), "status") != 0) {
                add_fault(found, "corrosion at sensor " + std::to_string(sensor));
            }
        }
        tell(found, status, dfx, size);
    });
}

uint32_t drv_board_get_mpu_status(uint32_t inst_id, uint32_t *status, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const uint32_t mpu = b.get(unit(b, inst_id), "mpu");
        tell({mpu, mpu > big_slot ? "neither slot of the two is selected" : ""}, status, dfx, size);
    });
}

uint32_t drv_board_check_mpu_status(uint32_t inst_id, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const device self = unit(b, inst_id);
        const uint32_t mpu = b.get(self, "mpu");
        finding found;
        if (mpu > big_slot || !is_mpu_as_wired(b, self, mpu)) {
            add_fault(found, "slot " + std::to_string(own_slot(b)) + " reads MPU status " + std::to_string(mpu));
        }
        tell(found, result, dfx, size);
    });
}

uint32_t drv_board_check_int_status(uint32_t index_id, uint32_t type, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const device line = b.find(DRV_INST_SELF, interrupts, index_id);
        refuse_if(b.get(line, "type") != type, error::no_such_device);
        finding found;
        if (b.get(line, "fault") != 0) {
            add_fault(found, "interrupt " + std::to_string(index_id) + " is stuck");
        }
        tell(found, result, dfx, size);
    });
}

uint32_t drv_board_get_tpm_online_status(uint32_t inst_id, uint32_t *status) {
    return read_tpm(inst_id, "absent", status);
}

uint32_t drv_board_get_tpm_active_status(uint32_t inst_id, uint32_t *status) {
    return read_tpm(inst_id, "active", status);
}
