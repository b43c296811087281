// The watch over the power lines. Each of its enables is inverted, read back and restored; the board is without its
// watch for that moment.
#include "selftest/environment/woffline.h"

#include "drv_basic/protection/drv_woffline.h"
#include "selftest/entry_walk.h"
#include "selftest/test_value.h"

namespace {

enum class enable { watch, interrupt, isolation };

uint32_t read_enable(uint32_t inst_id, enable which, uint32_t *value) {
    switch (which) {
    case enable::watch:
        return drv_woffline_get_en_state(inst_id, value);
    case enable::interrupt:
        return drv_woffline_get_irq_enable(inst_id, value);
    case enable::isolation:
        break;
    }
    return drv_woffline_get_sfu_isolate_en(inst_id, value);
}

uint32_t write_enable(uint32_t inst_id, enable which, uint32_t value) {
    switch (which) {
    case enable::watch:
        return drv_woffline_set_en_state(inst_id, value);
    case enable::interrupt:
        return drv_woffline_set_irq_enable(inst_id, value);
    case enable::isolation:
        break;
    }
    return drv_woffline_set_sfu_isolate_en(inst_id, value);
}

enum class outcome { uniform, not_read, not_set, not_uniform };

struct inversion {
    outcome how;
    uint32_t ret; // of the call that failed
    uint32_t original;
    uint32_t inverse;
    uint32_t read_back;
};

// An enable that could not be read is not touched: nothing is known that could be restored. Once the inverse was taken
// the original goes back, whatever the read-back answered.
inversion invert_and_restore(uint32_t inst_id, enable which) {
    inversion test = {};
    test.ret = read_enable(inst_id, which, &test.original);
    test.inverse = test.original == 0 ? 1 : 0;
    if (test.ret != 0) {
        test.how = outcome::not_read;
        return test;
    }
    begin_test_value();
    test.ret = write_enable(inst_id, which, test.inverse);
    if (test.ret != 0) {
        end_test_value();
        test.how = outcome::not_set;
        return test;
    }
    const uint32_t read_ret = read_enable(inst_id, which, &test.read_back);
    const uint32_t restore_ret = write_enable(inst_id, which, test.original);
    end_test_value();
    test.ret = read_ret != 0 ? read_ret : restore_ret;
    test.how = test.ret == 0 && test.read_back == test.inverse ? outcome::uniform : outcome::not_uniform;
    return test;
}

const char *side_name(uint32_t side) {
    constexpr const char *names[] = {"woffline down", "woffline up"};
    return side < sizeof(names) / sizeof(names[0]) ? names[side] : "unknown";
}

bool check_watch(uint32_t inst_id, uint32_t *set, report_sink sink) {
    const inversion test = invert_and_restore(inst_id, enable::watch);
    switch (test.how) {
    case outcome::not_read:
        report_append(sink, "Error: woffline get en fail 0x%x.\r\n", test.ret);
        return false;
    case outcome::not_set:
        report_append(sink, "Error: woffline set en %u fail 0x%x.\r\n", test.inverse, test.ret);
        return false;
    case outcome::not_uniform:
        report_append(sink, "Error: woffline original %u set %u get %u not uniform en fail 0x%x.\r\n", test.original,
                      test.inverse, test.read_back, test.ret);
        return false;
    case outcome::uniform:
        break;
    }
    *set = test.read_back;
    return true;
}

bool has_node(uint32_t inst_id, const char *node) {
    return has_entries(open_entry_walk(inst_id, "woffline_mng", node));
}

} // namespace

// The two sides share one enable; it is tested with each, as each has a line of its own to the watch. The name of a
// side begins with "woffline" itself, so the word stands twice in the lines of a pass.
int check_woffline_side(uint32_t inst_id, uint32_t side, report_sink sink) {
    const char *name = side_name(side);
    uint32_t state = 0;
    uint32_t set = 0;
    uint32_t peer_state = 0;
    uint32_t ret = drv_woffline_get_state(inst_id, side, &state);
    if (ret != 0) {
        report_append(sink, "Error: woffline get state %s fail 0x%x.\r\n", name, ret);
        return -1;
    }
    if (!check_watch(inst_id, &set, sink)) {
        return -1;
    }
    ret = drv_woffline_get_peer_state(inst_id, side, &peer_state);
    if (ret != 0) {
        report_append(sink, "Error: woffline get peer %s fail 0x%x.\r\n", name, ret);
        return -1;
    }
    report_append(sink, "Success: woffline %s get sts %u test pass.\r\n", name, state);
    report_append(sink, "Success: woffline %s get and set en %u test pass.\r\n", name, set);
    report_append(sink, "Success: woffline %s get peer sts %u pass.\r\n", name, peer_state);
    return 0;
}

int check_woffline_interrupt(uint32_t inst_id, report_sink sink) {
    const inversion test = invert_and_restore(inst_id, enable::interrupt);
    switch (test.how) {
    // An enable that cannot be set is told as one that cannot be read: one register, one line.
    case outcome::not_read:
    case outcome::not_set:
        report_append(sink, "Error: woffline get irq fail 0x%x.\r\n", test.ret);
        return -1;
    case outcome::not_uniform:
        report_append(sink, "Error: woffline irq original %u set %u get %u not uniform en fail 0x%x.\r\n",
                      test.original, test.inverse, test.read_back, test.ret);
        return -1;
    case outcome::uniform:
        break;
    }
    report_append(sink, "Success: woffline get irq test pass.\r\n");
    report_append(sink, "Success: woffline get and set irq en test pass.\r\n");
    return 0;
}

// Silent when all is well.
int check_woffline_isolation(uint32_t inst_id, report_sink sink) {
    const inversion test = invert_and_restore(inst_id, enable::isolation);
    switch (test.how) {
    case outcome::not_read:
    case outcome::not_set:
        report_append(sink, "Error: woffline get sfu fail 0x%x.\r\n", test.ret);
        return -1;
    case outcome::not_uniform:
        report_append(sink, "Error: woffline sfu original %u set %u get %u not uniform en fail 0x%x.\r\n",
                      test.original, test.inverse, test.read_back, test.ret);
        return -1;
    case outcome::uniform:
        break;
    }
    return 0;
}

// The lines tell what failed, the result never does: boards are tested with one feed only too. Interrupt and isolation
// belong to the watch, so a board without one is not asked for them.
int woffline_section(uint32_t inst_id, report_sink sink) {
    if (!has_node(inst_id, "woffline_get_state")) {
        report_append(sink, "Info: woffline xml get no entry num.\r\n");
        return 0;
    }
    check_woffline_side(inst_id, 0, sink);
    check_woffline_side(inst_id, 1, sink);
    if (!has_node(inst_id, "woffline_get_en_irq")) {
        report_append(sink, "Info: woffline xml get no irq entry num.\r\n");
        return 0;
    }
    check_woffline_interrupt(inst_id, sink);
    if (!has_node(inst_id, "woffline_get_sfu_isolate_enable")) {
        report_append(sink, "Info: woffline xml get no SFU_ISOLATE entry num.\r\n");
        return 0;
    }
    check_woffline_isolation(inst_id, sink);
    return 0;
}
