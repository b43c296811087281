// The order of the board management checks: first what the board is and where, then its cards and its power, which are
// switched, then what wears it and what it is equipped with.
#include "selftest/management/board_mng.h"

#include "selftest/management/bios.h"
#include "selftest/management/board_cards.h"
#include "selftest/management/board_health.h"
#include "selftest/management/board_identity.h"
#include "selftest/management/board_presence.h"
#include "selftest/management/boot_step.h"
#include "selftest/management/control_logic.h"
#include "selftest/management/power_cycle.h"
#include "selftest/management/storage_sizes.h"

namespace {

using board_check = int (*)(uint32_t inst_id, report_sink sink);

// The counters of the management bus are not among them (see smb_counters.h).
constexpr board_check checks[] = {
    check_hardware_identity,
    check_pcb_version,
    check_self_online,
    check_peer_online,
    check_fullin,
    check_slot_id,
    check_cards,
    check_epld_power,
    check_tpm,
    check_boot_step,
    check_weld,
    check_corrosion,
    check_low_voltage,
    check_bios,
    check_mpu_status,
    check_control_logic,
    check_capability,
    check_storage_sizes,
};

} // namespace

int board_mng_test(uint32_t inst_id, report_sink sink) {
    int result = 0;
    for (const board_check check : checks) {
        result |= check(inst_id, sink);
    }
    return result;
}
