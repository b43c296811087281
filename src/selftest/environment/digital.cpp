// The dry contacts. Outputs are relays with something of the operator's behind them: each is switched over for the time
// of one read and put back at once. The modes are left at the last one set.
#include "selftest/environment/digital.h"

#include "drv_basic/chips/drv_digital.h"
#include "selftest/entry_walk.h"
#include "selftest/test_value.h"

namespace {

constexpr uint32_t first_input = 1;
constexpr uint32_t first_output = 100;

// Channels of one kind; none where the driver does not tell their number.
struct channels {
    uint32_t first;
    uint32_t count;
};

bool is_described(uint32_t inst_id, const char *node) {
    return has_entries(open_entry_walk(inst_id, "digital_mng", node));
}

int check_input(uint32_t inst_id, uint32_t channel, report_sink sink) {
    uint32_t status = 0;
    const uint32_t ret = drv_digital_get_status(inst_id, channel, &status);
    if (ret != 0) {
        report_append(sink, "Error: digital %u get sts fail 0x%x.\r\n", channel, ret);
        return -1;
    }
    report_append(sink, "Success: digital %u get sts %u pass\r\n", channel, status);
    return 0;
}

int check_inputs(uint32_t inst_id, channels *inputs, report_sink sink) {
    uint32_t num = 0;
    const uint32_t ret = drv_digital_get_in_num(inst_id, &num);
    if (ret != 0) {
        report_append(sink, "Error: get digital in num fail 0x%x.\r\n", ret);
        return -1;
    }
    report_append(sink, "Success: digital in num is %u.\r\n", num);
    inputs->count = num;
    int result = 0;
    for (uint32_t i = 0; i < num; ++i) {
        result |= check_input(inst_id, first_input + i, sink);
    }
    return result;
}

// What was read back counts only once the relay is back where it was.
int switch_over(uint32_t inst_id, uint32_t channel, uint32_t original, report_sink sink) {
    const uint32_t test_status = original == 0 ? 1 : 0;
    uint32_t ret = drv_digital_set_status(inst_id, channel, test_status);
    if (ret != 0) {
        report_append(sink, "Error: digital %u set sts %u fail 0x%x.\r\n", channel, test_status, ret);
        return -1;
    }
    uint32_t status = 0;
    const uint32_t read_ret = drv_digital_get_status(inst_id, channel, &status);
    ret = drv_digital_set_status(inst_id, channel, original);
    if (ret != 0) {
        report_append(sink, "Error: digital %u set ori sts %u fail 0x%x.\r\n", channel, original, ret);
        return -1;
    }
    if (read_ret != 0 || status != test_status) {
        report_append(sink, "Error: digital %u set sts %u and get sts %u fail 0x%x.\r\n", channel, test_status, status,
                      read_ret);
        return -1;
    }
    report_append(sink, "Success: digital %u set and get test pass. original_status %u \r\n", channel, original);
    return 0;
}

int check_output(uint32_t inst_id, uint32_t channel, report_sink sink) {
    uint32_t original = 0;
    const uint32_t ret = drv_digital_get_status(inst_id, channel, &original);
    if (ret != 0) {
        report_append(sink, "Error: digital %u get sts fail 0x%x.\r\n", channel, ret);
        return -1;
    }
    begin_test_value();
    const int result = switch_over(inst_id, channel, original, sink);
    end_test_value();
    return result;
}

int check_outputs(uint32_t inst_id, channels *outputs, report_sink sink) {
    uint32_t num = 0;
    const uint32_t ret = drv_digital_get_out_num(inst_id, &num);
    if (ret != 0) {
        report_append(sink, "Error: get digital out num fail 0x%x.\r\n", ret);
        return -1;
    }
    report_append(sink, "Success: digital out num is %u.\r\n", num);
    outputs->count = num;
    int result = 0;
    for (uint32_t i = 0; i < num; ++i) {
        result |= check_output(inst_id, first_output + i, sink);
    }
    return result;
}

// Both modes are set, whatever the first one says: the lines tell which of them the contact does not take.
int check_mode(uint32_t inst_id, uint32_t channel, report_sink sink) {
    int result = 0;
    for (uint32_t mode = 1; mode <= 2; ++mode) {
        const uint32_t ret = drv_digital_set_mode(inst_id, channel, mode);
        if (ret != 0) {
            report_append(sink, "Error: digital %u set mode %u fail 0x%x.\r\n", channel, mode, ret);
            result = -1;
        }
    }
    if (result == 0) {
        report_append(sink, "Success: digital %u set mode pass.\r\n", channel);
    }
    return result;
}

int check_modes(uint32_t inst_id, channels of, report_sink sink) {
    int result = 0;
    for (uint32_t i = 0; i < of.count; ++i) {
        result |= check_mode(inst_id, of.first + i, sink);
    }
    return result;
}

} // namespace

// A board without inputs has no contacts at all; one without outputs may still have modes.
int digital_section(uint32_t inst_id, report_sink sink) {
    channels inputs = {first_input, 0};
    channels outputs = {first_output, 0};
    if (!is_described(inst_id, "digital_in_num")) {
        report_append(sink, "Info: digital in num is not support.\r\n");
        return 0;
    }
    int result = check_inputs(inst_id, &inputs, sink);
    if (is_described(inst_id, "digital_out_num")) {
        result |= check_outputs(inst_id, &outputs, sink);
    } else {
        report_append(sink, "Info: digital out num is not support.\r\n");
    }
    if (is_described(inst_id, "digital_set_mode")) {
        result |= check_modes(inst_id, inputs, sink);
        result |= check_modes(inst_id, outputs, sink);
    } else {
        report_append(sink, "Info: digital set mode is not support.\r\n");
    }
    return result;
}
