// msc_test: master/slave control of the two main processing units, for each of two switch modes and for both: who is
// the master, who may take over and why one did, the lines by which the two call themselves and each other good or bad.
// Each value is printed with its name behind it.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "drv_basic/management/drv_msc.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::narrow;

constexpr uint32_t dump_size = 256;

// Scripts look for these words as they are, the slip among them too.
constexpr const char *sw_modes[] = {"scc", "xsc", "all"};
constexpr const char *ctrls[] = {"auto", "force"};
constexpr const char *states[] = {"master", "slave", "abnoraml"};
constexpr const char *oks[] = {"not ok", "ok"};
constexpr const char *bads[] = {"clear bad sts", "force bad"};
constexpr const char *readies[] = {"not ready", "ready"};
constexpr const char *enables[] = {"disable", "enable"};
constexpr const char *bonds[] = {"bond", "spec"};

const char *name_among(std::span<const char *const> names, uint32_t value) {
    return value < names.size() ? names[value] : "unknown";
}

int test_msc_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_msc_init");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_msc_init(inst_id);
    printf("drv_msc_init::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_init");
    return static_cast<int>(ret);
}

int test_msc_deinit(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_msc_deinit");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_msc_deinit(inst_id);
    printf("drv_msc_deinit::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_deinit");
    return static_cast<int>(ret);
}

int test_msc_set_bond_mode(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t bond = 0;
    print_begin_banner(style, "test_msc_set_bond_mode");
    check_args(2, count, args, &inst_id, &bond, nullptr);
    const uint32_t ret = drv_msc_set_bond_mode(inst_id, bond);
    printf("drv_msc_set_bond_mode::inst_id:0x%x bond %d(%s) ret:0x%x\n", inst_id, static_cast<int>(bond),
           name_among(bonds, bond), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_bond_mode");
    return static_cast<int>(ret);
}

int test_msc_set_switch_en(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t enable = 0;
    print_begin_banner(style, "test_msc_set_switch_en");
    check_args(3, count, args, &inst_id, &sw_mode, &enable);
    const uint32_t ret = drv_msc_set_switch_en(inst_id, sw_mode, enable);
    printf("drv_msc_set_switch_en::inst_id:0x%x sw_mode %d(%s) sw_enable %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(enable),
           name_among(enables, enable), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_switch_en");
    return static_cast<int>(ret);
}

int test_msc_get_switch_en(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t enable = 0;
    print_begin_banner(style, "test_msc_get_switch_en");
    check_args(2, count, args, &inst_id, &sw_mode, nullptr);
    const uint32_t ret = drv_msc_get_switch_en(inst_id, sw_mode, &enable);
    printf("drv_msc_get_switch_en::inst_id:0x%x sw_mode %d(%s) enable %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(enable),
           name_among(enables, enable), ret);
    print_result("%x %x", ret, enable);
    print_end_banner(style, "test_msc_get_switch_en");
    return static_cast<int>(ret);
}

int test_msc_set_switch_ctrl(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t ctrl = 0;
    print_begin_banner(style, "test_msc_set_switch_ctrl");
    check_args(3, count, args, &inst_id, &sw_mode, &ctrl);
    const uint32_t ret = drv_msc_set_switch_ctrl(inst_id, sw_mode, ctrl);
    printf("drv_msc_set_switch_ctrl::inst_id:0x%x sw_mode %d(%s) sw_ctrl %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(ctrl), name_among(ctrls, ctrl),
           ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_switch_ctrl");
    return static_cast<int>(ret);
}

int test_msc_get_switch_ctrl(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t ctrl = 0;
    print_begin_banner(style, "test_msc_get_switch_ctrl");
    check_args(2, count, args, &inst_id, &sw_mode, nullptr);
    const uint32_t ret = drv_msc_get_switch_ctrl(inst_id, sw_mode, &ctrl);
    printf("drv_msc_get_switch_ctrl::inst_id:0x%x sw_mode %d(%s) sw_ctrl %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(ctrl), name_among(ctrls, ctrl),
           ret);
    print_result("%x %x", ret, ctrl);
    print_end_banner(style, "test_msc_get_switch_ctrl");
    return static_cast<int>(ret);
}

int test_msc_set_state(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t state = 0;
    print_begin_banner(style, "test_msc_set_state");
    check_args(3, count, args, &inst_id, &sw_mode, &state);
    const uint32_t ret = drv_msc_set_state(inst_id, sw_mode, state);
    printf("drv_msc_set_state::inst_id:0x%x sw_mode %d(%s) state %d(%s) ret:0x%x\n", inst_id, static_cast<int>(sw_mode),
           name_among(sw_modes, sw_mode), static_cast<int>(state), name_among(states, state), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_state");
    return static_cast<int>(ret);
}

int test_msc_get_state(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t state = 0;
    print_begin_banner(style, "test_msc_get_state");
    check_args(2, count, args, &inst_id, &sw_mode, nullptr);
    const uint32_t ret = drv_msc_get_state(inst_id, sw_mode, &state);
    printf("drv_msc_get_state::inst_id:0x%x sw_mode %d(%s) state %d(%s) ret:0x%x\n", inst_id, static_cast<int>(sw_mode),
           name_among(sw_modes, sw_mode), static_cast<int>(state), name_among(states, state), ret);
    print_result("%x %x", ret, state);
    print_end_banner(style, "test_msc_get_state");
    return static_cast<int>(ret);
}

int test_msc_set_npu_work_mode(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t work_mode = 0;
    print_begin_banner(style, "test_msc_set_npu_work_mode");
    check_args(2, count, args, &inst_id, &work_mode, nullptr);
    const uint32_t ret = drv_msc_set_npu_work_mode(inst_id, work_mode);
    printf("drv_msc_set_npu_work_mode::inst_id:0x%x work_mode %d ret:0x%x\n", inst_id, static_cast<int>(work_mode),
           ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_npu_work_mode");
    return static_cast<int>(ret);
}

// The second word is what stands there until the driver answers: a failed read shows it.
int test_msc_get_npu_work_mode(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t work_mode = 0;
    print_begin_banner(style, "test_msc_get_npu_work_mode");
    check_args(2, count, args, &inst_id, &work_mode, nullptr);
    const uint32_t ret = drv_msc_get_npu_work_mode(inst_id, &work_mode);
    printf("drv_msc_get_npu_work_mode::inst_id:0x%x work_mode %d ret:0x%x\n", inst_id, static_cast<int>(work_mode),
           ret);
    print_result("%x %x", ret, work_mode);
    print_end_banner(style, "test_msc_get_npu_work_mode");
    return static_cast<int>(ret);
}

int test_msc_get_peer_state(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t state = 0;
    print_begin_banner(style, "test_msc_get_peer_state");
    check_args(2, count, args, &inst_id, &sw_mode, nullptr);
    const uint32_t ret = drv_msc_get_peer_state(inst_id, sw_mode, &state);
    printf("drv_msc_get_peer_state::inst_id:0x%x sw_mode %d(%s) state %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(state), name_among(states, state),
           ret);
    print_result("%x %x", ret, state);
    print_end_banner(style, "test_msc_get_peer_state");
    return static_cast<int>(ret);
}

int test_msc_get_switch_reason(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t reason = 0;
    print_begin_banner(style, "test_msc_get_switch_reason");
    check_args(2, count, args, &inst_id, &sw_mode, nullptr);
    const uint32_t ret = drv_msc_get_switch_reason(inst_id, sw_mode, &reason);
    printf("drv_msc_get_switch_reason::inst_id:0x%x sw_mode %d(%s) reason %d ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(reason), ret);
    print_result("%x %x", ret, reason);
    print_end_banner(style, "test_msc_get_switch_reason");
    return static_cast<int>(ret);
}

int test_msc_set_int_en(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t enable = 0;
    print_begin_banner(style, "test_msc_set_int_en");
    check_args(3, count, args, &inst_id, &sw_mode, &enable);
    const uint32_t ret = drv_msc_set_int_en(inst_id, sw_mode, enable);
    printf("drv_msc_set_int_en::inst_id:0x%x sw_mode %d(%s) enable %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(enable),
           name_among(enables, enable), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_int_en");
    return static_cast<int>(ret);
}

int test_msc_get_int_state(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t state = 0;
    print_begin_banner(style, "test_msc_get_int_state");
    check_args(2, count, args, &inst_id, &sw_mode, nullptr);
    const uint32_t ret = drv_msc_get_int_state(inst_id, sw_mode, &state);
    printf("drv_msc_get_int_state::inst_id:0x%x sw_mode %d(%s) state %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(state),
           name_among(enables, state), ret);
    print_result("%x %x", ret, state);
    print_end_banner(style, "test_msc_get_int_state");
    return static_cast<int>(ret);
}

// The ok and bad lines are those of the own board and its peer: an instance is taken and shown, but no driver wants it.
int test_msc_get_self_ok(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t self_ok = 0;
    print_begin_banner(style, "test_msc_get_self_ok");
    check_args(2, count, args, &inst_id, &sw_mode, nullptr);
    const uint32_t ret = drv_msc_get_self_ok(sw_mode, &self_ok);
    printf("drv_msc_get_self_ok::inst_id:0x%x sw_mode %d(%s) self_ok %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(self_ok),
           name_among(oks, self_ok), ret);
    print_result("%x %x", ret, self_ok);
    print_end_banner(style, "test_msc_get_self_ok");
    return static_cast<int>(ret);
}

int test_msc_get_peer_ok(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t peer_ok = 0;
    print_begin_banner(style, "test_msc_get_peer_ok");
    check_args(2, count, args, &inst_id, &sw_mode, nullptr);
    const uint32_t ret = drv_msc_get_peer_ok(sw_mode, &peer_ok);
    printf("drv_msc_get_peer_ok::inst_id:0x%x sw_mode %d(%s) peer_ok %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(peer_ok),
           name_among(oks, peer_ok), ret);
    print_result("%x %x", ret, peer_ok);
    print_end_banner(style, "test_msc_get_peer_ok");
    return static_cast<int>(ret);
}

int test_msc_set_self_bad(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t status = 0;
    print_begin_banner(style, "test_msc_set_self_bad");
    check_args(3, count, args, &inst_id, &sw_mode, &status);
    const uint32_t ret = drv_msc_set_self_bad(sw_mode, status);
    printf("drv_msc_set_self_bad::inst_id:0x%x sw_mode %d(%s) bad %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(status), name_among(bads, status),
           ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_self_bad");
    return static_cast<int>(ret);
}

int test_msc_set_peer_bad(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t status = 0;
    print_begin_banner(style, "test_msc_set_peer_bad");
    check_args(3, count, args, &inst_id, &sw_mode, &status);
    const uint32_t ret = drv_msc_set_peer_bad(sw_mode, status);
    printf("drv_msc_set_peer_bad::inst_id:0x%x sw_mode %d(%s) bad %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(status), name_among(bads, status),
           ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_peer_bad");
    return static_cast<int>(ret);
}

int test_msc_set_peer_slave(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_msc_set_peer_slave");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_msc_set_peer_slave(inst_id);
    printf("drv_msc_set_peer_slave::inst_id:0x%x peer_slave ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_peer_slave");
    return static_cast<int>(ret);
}

int test_msc_set_peer_slave_cancel(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_msc_set_peer_slave_cancel");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_msc_set_peer_slave_cancel(inst_id);
    printf("drv_msc_set_peer_slave_cancel::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_peer_slave_cancel");
    return static_cast<int>(ret);
}

int test_msc_set_soft_ready(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sw_mode = 0;
    uint32_t soft_ready = 0;
    print_begin_banner(style, "test_msc_set_soft_ready");
    check_args(3, count, args, &inst_id, &sw_mode, &soft_ready);
    const uint32_t ret = drv_msc_set_soft_ready(inst_id, sw_mode, soft_ready);
    printf("drv_msc_set_soft_ready::inst_id:0x%x mode %d(%s) soft ready %d(%s) ret:0x%x\n", inst_id,
           static_cast<int>(sw_mode), name_among(sw_modes, sw_mode), static_cast<int>(soft_ready),
           name_among(readies, soft_ready), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_set_soft_ready");
    return static_cast<int>(ret);
}

int test_msc_force_master(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_msc_force_master");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_msc_force_master(inst_id);
    printf("drv_msc_force_master::inst_id:0x%x force master ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_force_master");
    return static_cast<int>(ret);
}

int test_msc_force_standby(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_msc_force_standby");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_msc_force_standby(inst_id);
    printf("drv_msc_force_standby::inst_id:0x%x force standby ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_msc_force_standby");
    return static_cast<int>(ret);
}

int test_msc_dump_info(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_msc_dump_info");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    char *buffer = new_text_area(dump_size);
    if (buffer == nullptr) {
        puts("drv_msc_dump_info::malloc fail");
        return 0;
    }
    const uint32_t ret = drv_msc_dump_info(inst_id, buffer, dump_size);
    printf("drv_msc_dump_info::inst_id:0x%x dump ret:0x%x\n", inst_id, ret);
    puts(buffer);
    print_result("%x", ret);
    free(buffer);
    print_end_banner(style, "test_msc_dump_info");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_msc_init", test_msc_init, "drv_msc_init   inst_id"},
    command_row{"drv_msc_deinit", test_msc_deinit, "drv_msc_deinit inst_id"},
    command_row{"drv_msc_set_bond_mode", test_msc_set_bond_mode, "drv_msc_set_bond_mode inst_id bond"},
    command_row{"drv_msc_set_switch_en", test_msc_set_switch_en, "drv_msc_set_switch_en inst_id sw_mode enable"},
    command_row{"drv_msc_get_switch_en", test_msc_get_switch_en, "drv_msc_get_switch_en inst_id sw_mode"},
    command_row{"drv_msc_set_switch_ctrl", test_msc_set_switch_ctrl, "drv_msc_set_switch_ctrl inst_id sw_mode ctrl"},
    command_row{"drv_msc_get_switch_ctrl", test_msc_get_switch_ctrl, "drv_msc_get_switch_ctrl inst_id sw_mode"},
    command_row{"drv_msc_set_state", test_msc_set_state, "drv_msc_set_state inst_id sw_mode ms_sate"},
    command_row{"drv_msc_get_state", test_msc_get_state, "drv_msc_get_state inst_id sw_mode"},
    command_row{"drv_msc_set_npu_work_mode", test_msc_set_npu_work_mode, "drv_msc_set_npu_work_mode inst_id work_mode"},
    command_row{"drv_msc_get_npu_work_mode", test_msc_get_npu_work_mode, "drv_msc_get_npu_work_mode inst_id work_mode"},
    command_row{"drv_msc_get_peer_state", test_msc_get_peer_state, "drv_msc_get_peer_state    inst_id sw_mode"},
    command_row{"drv_msc_get_switch_reason", test_msc_get_switch_reason, "drv_msc_get_switch_reason inst_id sw_mode"},
    command_row{"drv_msc_set_int_en", test_msc_set_int_en, "drv_msc_set_int_en    inst_id sw_mode enable"},
    command_row{"drv_msc_get_int_state", test_msc_get_int_state, "drv_msc_get_int_state inst_id sw_mode"},
    command_row{"drv_msc_get_self_ok", test_msc_get_self_ok, "drv_msc_get_self_ok  sw_mode"},
    command_row{"drv_msc_get_peer_ok", test_msc_get_peer_ok, "drv_msc_get_peer_ok  sw_mode"},
    command_row{"drv_msc_set_self_bad", test_msc_set_self_bad, "drv_msc_set_self_bad sw_mode status"},
    command_row{"drv_msc_set_peer_bad", test_msc_set_peer_bad, "drv_msc_set_peer_bad sw_mode status"},
    command_row{"drv_msc_set_peer_slave", test_msc_set_peer_slave, "drv_msc_set_peer_slave inst_id"},
    command_row{"drv_msc_set_peer_slave_cancel", test_msc_set_peer_slave_cancel,
                "drv_msc_set_peer_slave_cancel inst_id"},
    command_row{"drv_msc_set_soft_ready", test_msc_set_soft_ready, "drv_msc_set_soft_ready inst_id sw_mode soft_ready"},
    command_row{"drv_msc_force_master", test_msc_force_master, "drv_msc_force_master   inst_id"},
    command_row{"drv_msc_force_standby", test_msc_force_standby, "drv_msc_force_standby  inst_id"},
    command_row{"drv_msc_dump_info", test_msc_dump_info, "drv_msc_dump_info      inst_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int msc_test(int count, char **args) {
    return run_module(rows, count, args);
}
