// The boot step. The peer watches it to tell when this board may take over, so it is written back before anything is
// reported, whatever was read in between.
#include "selftest/management/boot_step.h"

#include "drv_basic/management/drv_board.h"
#include "selftest/test_value.h"

namespace {

constexpr uint32_t test_step = 10;
constexpr uint32_t last_step = 255;

// The code that keeps the steps is older than the numbering of drivers: it answers a board without steps with the bare
// byte. With a driver's number in front the same byte is a failure here.
constexpr uint32_t no_boot_steps = 0xA4;

struct round_trip {
    uint32_t set_ret;
    uint32_t get_ret;
    uint32_t restore_ret;
    uint32_t read_back;
};

round_trip write_and_restore(uint32_t inst_id, uint32_t saved) {
    round_trip trip{};
    begin_test_value();
    trip.set_ret = drv_board_set_self_bootstep(inst_id, test_step);
    trip.get_ret = drv_board_get_self_bootstep(inst_id, &trip.read_back);
    trip.restore_ret = drv_board_set_self_bootstep(inst_id, saved);
    end_test_value();
    return trip;
}

int report_round_trip(const round_trip &trip, report_sink sink) {
    int result = 0;
    if (trip.set_ret != 0) {
        report_append(sink, "Error  : board set self bootstep fail. ret 0x%x set_bootstep 0x%x\r\n", trip.set_ret,
                      test_step);
        result = -1;
    }
    if (trip.get_ret != 0 || trip.restore_ret != 0 || trip.read_back != test_step) {
        report_append(sink,
                      "Error  : board set and get self bootstep fail. ret 0x%x get_bootstep 0x%x set_bootstep 0x%x\r\n",
                      trip.get_ret != 0 ? trip.get_ret : trip.restore_ret, trip.read_back, test_step);
        result = -1;
    }
    return result;
}

void report_unread_peer(uint32_t inst_id, report_sink sink) {
    uint32_t step = 0;
    const uint32_t ret = drv_board_get_peer_bootstep(inst_id, &step);
    if (ret != 0) {
        report_append(sink, "Info   : board get peer bootstep fail. ret 0x%x peer_bootstep 0x%x\r\n", ret, step);
    }
}

} // namespace

int check_boot_step(uint32_t inst_id, report_sink sink) {
    uint32_t saved = 0;
    const uint32_t ret = drv_board_get_self_bootstep(inst_id, &saved);
    if (ret == no_boot_steps) {
        report_append(sink, "Info   : board bootstep is not support\r\n");
        return 0;
    }
    int result = 0;
    if (ret != 0 || saved > last_step) {
        report_append(sink, "Error  : board get self bootstep fail. ret 0x%x bootstep 0x%x\r\n", ret, saved);
        result = -1;
    }
    // Without a saved step it is 0 that is written back, a start that has only begun: a peer that waits for this board
    // must not take the step of the test for one that was reached.
    const round_trip trip = write_and_restore(inst_id, saved);
    result |= report_round_trip(trip, sink);
    if (result == 0) {
        // The code of the last call, as it has always been: scripts of the production line look for the 0.
        report_append(sink, "Success: board set and get self bootstep pass. bootstep 0x%x\r\n", trip.restore_ret);
    }
    report_unread_peer(inst_id, sink);
    return result;
}
