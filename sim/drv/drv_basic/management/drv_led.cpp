// Panel lamps and their test.
#include "drv_basic/management/drv_led.h"

#include "sim/devices/management/lamp.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

using test_register = word_of<lamp_test::family>;
using test_switch = written_of<lamp_test::family>;

device_of<lamp_test::family> working_test(board &b, uint32_t inst_id) {
    auto test = b.find<lamp_test::family>(inst_id);
    lamp_test::require_support(b, test);
    return test;
}

uint32_t read_lamptest(uint32_t inst_id, test_register name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(working_test(b, inst_id), name);
    });
}

uint32_t switch_lamptest(uint32_t inst_id, test_switch name, uint32_t enable) {
    return operate([&](board &b) { b.put(working_test(b, inst_id), name, enable); });
}

// The panel's answer is its own name, and behind it what it was asked.
uint32_t ask_patch(uint32_t inst_id, uint32_t id, char *buffer, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const std::string name = b.text(b.find<panel_patch::family>(inst_id, id), panel_patch::answer);
        refuse_if(size == 0, error::too_small);
        const size_t length = strnlen(buffer, size);
        refuse_if(length == size, error::bad_value);
        const std::string question(buffer, length);
        write_text(buffer, size, question.empty() ? name : name + ": " + question);
    });
}

} // namespace

uint32_t drv_led_patch_func1(uint32_t inst_id, char *buffer, uint32_t size) {
    return ask_patch(inst_id, 1, buffer, size);
}

uint32_t drv_led_patch_func2(uint32_t inst_id, char *buffer, uint32_t size) {
    return ask_patch(inst_id, 2, buffer, size);
}

uint32_t drv_led_set_lamptest_enable(uint32_t inst_id, uint32_t enable) {
    return switch_lamptest(inst_id, lamp_test::enable, enable);
}

uint32_t drv_led_get_lamptest_enable(uint32_t inst_id, uint32_t *enable) {
    return read_lamptest(inst_id, lamp_test::enable, enable);
}

uint32_t drv_led_set_lamptest_ctrl_enable(uint32_t inst_id, uint32_t enable) {
    return switch_lamptest(inst_id, lamp_test::ctrl_enable, enable);
}

uint32_t drv_led_get_lamptest_ctrl_enable(uint32_t inst_id, uint32_t *enable) {
    return read_lamptest(inst_id, lamp_test::ctrl_enable, enable);
}

uint32_t drv_led_get_lamptest_support(uint32_t inst_id, uint32_t *support) {
    return operate([&](board &b) {
        refuse_null(support);
        *support = b.get(b.find<lamp_test::family>(inst_id), lamp_test::support);
    });
}

// The test runs as long as it is enabled.
uint32_t drv_led_get_lamptest_status(uint32_t inst_id, uint32_t *status) {
    return read_lamptest(inst_id, lamp_test::enable, status);
}

uint32_t drv_led_get_color(uint32_t inst_id, uint32_t led_type, uint32_t *color, uint32_t *freq) {
    return operate([&](board &b) {
        refuse_null(color, freq);
        const auto which = b.find<lamp::family>(inst_id, led_type);
        const uint32_t shown = b.get(which, lamp::color);
        *freq = b.get(which, lamp::freq);
        *color = shown;
    });
}

uint32_t drv_led_set_color(uint32_t inst_id, uint32_t led_type, uint32_t color, uint32_t freq) {
    return operate([&](board &b) { lamp::show(b, b.find<lamp::family>(inst_id, led_type), color, freq); });
}

uint32_t drv_led_get_mode(uint32_t inst_id, uint32_t led_type, uint32_t *mode) {
    return operate([&](board &b) {
        refuse_null(mode);
        *mode = b.get(b.find<lamp::family>(inst_id, led_type), lamp::mode);
    });
}
