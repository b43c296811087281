// Panel lamps. A lamp has the colours that its diodes give, and is driven by software or by the hardware it shows;
// the lamp test lights them all.
#include "drv_basic/management/drv_led.h"

#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

constexpr device_kind lamps{"sim_led", "lamp"};
constexpr device_kind lamptests{"sim_led", "lamptest"};
constexpr device_kind patches{"sim_led", "patch"};
constexpr uint32_t color_max = 3;
constexpr uint32_t software_mode = 1;

device lamptest(board &b, uint32_t inst_id) {
    return b.find(inst_id, lamptests, 0);
}

// The panel may tell that it has no lamp test; then there is nothing to switch.
device working_lamptest(board &b, uint32_t inst_id) {
    const device test = lamptest(b, inst_id);
    refuse_if(b.get(test, "support") == 0, error::not_supported);
    return test;
}

uint32_t read_lamptest(uint32_t inst_id, const char *name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(working_lamptest(b, inst_id), name);
    });
}

uint32_t switch_lamptest(uint32_t inst_id, const char *name, uint32_t enable) {
    return operate([&](board &b) {
        const device test = working_lamptest(b, inst_id);
        b.get(test, name);
        refuse_if(enable > 1, error::bad_value);
        b.put(test, name, enable);
    });
}

// The panel's answer is its own name, and behind it what it was asked.
uint32_t ask_patch(uint32_t inst_id, uint32_t id, char *buffer, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const std::string name = b.text(b.find(inst_id, patches, id), "answer");
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
    return switch_lamptest(inst_id, "enable", enable);
}

uint32_t drv_led_get_lamptest_enable(uint32_t inst_id, uint32_t *enable) {
    return read_lamptest(inst_id, "enable", enable);
}

uint32_t drv_led_set_lamptest_ctrl_enable(uint32_t inst_id, uint32_t enable) {
    return switch_lamptest(inst_id, "ctrl_enable", enable);
}

uint32_t drv_led_get_lamptest_ctrl_enable(uint32_t inst_id, uint32_t *enable) {
    return read_lamptest(inst_id, "ctrl_enable", enable);
}

uint32_t drv_led_get_lamptest_support(uint32_t inst_id, uint32_t *support) {
    return operate([&](board &b) {
        refuse_null(support);
        *support = b.get(lamptest(b, inst_id), "support");
    });
}

// The test runs as long as it is enabled.
uint32_t drv_led_get_lamptest_status(uint32_t inst_id, uint32_t *status) {
    return read_lamptest(inst_id, "enable", status);
}

uint32_t drv_led_get_color(uint32_t inst_id, uint32_t led_type, uint32_t *color, uint32_t *freq) {
    return operate([&](board &b) {
        refuse_null(color, freq);
        const device lamp = b.find(inst_id, lamps, led_type);
        const uint32_t shown = b.get(lamp, "color");
        *freq = b.get(lamp, "freq");
        *color = shown;
    });
}

// "colors" has bit N for colour N. A lamp that shows the state of hardware cannot be set.
uint32_t drv_led_set_color(uint32_t inst_id, uint32_t led_type, uint32_t color, uint32_t freq) {
    return operate([&](board &b) {
        const device lamp = b.find(inst_id, lamps, led_type);
        refuse_if(b.get(lamp, "mode") != software_mode, error::not_supported);
        refuse_if(color > color_max || (b.get(lamp, "colors") >> color & 1U) == 0, error::bad_value);
        refuse_if(freq > b.get(lamp, "freq_max"), error::bad_value);
        b.put_all(lamp, {{"color", color}, {"freq", freq}});
    });
}

uint32_t drv_led_get_mode(uint32_t inst_id, uint32_t led_type, uint32_t *mode) {
    return operate([&](board &b) {
        refuse_null(mode);
        *mode = b.get(b.find(inst_id, lamps, led_type), "mode");
    });
}
