// led_test: the lamps of the front panel: colour and blinking of each lamp type, who drives it, and the lamp test that
// lights them all. Two patch functions pass a text to whatever a board keeps behind them. No banners here.
#include <array>
#include <cstdint>
#include <cstdio>

#include "bounds/bounds.h"
#include "drv_basic/management/drv_led.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

constexpr uint32_t patch_size = 125;

// What a patch function reads and answers, and a terminator behind it. A longer text is cut.
struct patch_text {
    char area[patch_size + 1];
};

patch_text patch_text_of(const char *word) {
    patch_text text{};
    snprintf_s(text.area, patch_size, patch_size - 1, "%s", word);
    return text;
}

// The message carries another module's name; what reads the console looks for it as it is.
int refuse_few_words() {
    puts("[mdio] too few args!");
    return -1;
}

// The length word is wanted but says nothing: the area has a fixed size.
int led_func1(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        return refuse_few_words();
    }
    patch_text text = patch_text_of(inputs[0]);
    const uint32_t ret = drv_led_patch_func1(inst_id, text.area, patch_size);
    if (ret == 0) {
        printf("drv led patch func1:%s\r\n", text.area);
    } else {
        printf("drv led patch func1 fail, ret:%d\r\n", static_cast<int>(ret));
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int led_func2(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        return refuse_few_words();
    }
    patch_text text = patch_text_of(inputs[0]);
    const uint32_t ret = drv_led_patch_func2(inst_id, text.area, patch_size);
    if (ret == 0) {
        printf("drv led patch func2:%s\r\n", text.area);
    } else {
        printf("drv led patch func2 fail, ret:%d\r\n", static_cast<int>(ret));
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

// The lamp test itself and its control print the same lines, with the control's name.
int led_set_lamptest_enable(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return refuse_few_words();
    }
    const uint32_t enable = word_to_u32(inputs[0]);
    const uint32_t ret = drv_led_set_lamptest_enable(inst_id, enable);
    if (ret == 0) {
        printf("[ledtest] drv_led_set_lamptest_ctrl_enable success, inst_id = 0x%x.\r\n", inst_id);
    } else {
        printf("[ledtest] drv_led_set_lamptest_ctrl_enable fail, inst_id = 0x%x.\r\n", inst_id);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int led_get_lamptest_enable(int count, char **args) {
    const uint32_t inst_id = inst_or_self(count, args);
    uint32_t enable = 0;
    const uint32_t ret = drv_led_get_lamptest_enable(inst_id, &enable);
    if (ret == 0) {
        printf("[ledtest] drv_led_get_lamptest_ctrl_enable success, inst_id = 0x%x, enable=0x%x\r\n", inst_id, enable);
    } else {
        printf("[ledtest] drv_led_get_lamptest_ctrl_enable fail, inst_id = 0x%x.\r\n", inst_id);
    }
    print_result("%x %x", ret, enable);
    return static_cast<int>(ret);
}

int led_set_lamptest_ctrl_enable(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return refuse_few_words();
    }
    const uint32_t enable = word_to_u32(inputs[0]);
    const uint32_t ret = drv_led_set_lamptest_ctrl_enable(inst_id, enable);
    if (ret == 0) {
        printf("[ledtest] drv_led_set_lamptest_ctrl_enable success, inst_id = 0x%x.\r\n", inst_id);
    } else {
        printf("[ledtest] drv_led_set_lamptest_ctrl_enable fail, inst_id = 0x%x.\r\n", inst_id);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int led_get_lamptest_ctrl_enable(int count, char **args) {
    const uint32_t inst_id = inst_or_self(count, args);
    uint32_t enable = 0;
    const uint32_t ret = drv_led_get_lamptest_ctrl_enable(inst_id, &enable);
    if (ret == 0) {
        printf("[ledtest] drv_led_get_lamptest_ctrl_enable success, inst_id = 0x%x, enable=0x%x\r\n", inst_id, enable);
    } else {
        printf("[ledtest] drv_led_get_lamptest_ctrl_enable fail, inst_id = 0x%x.\r\n", inst_id);
    }
    print_result("%x %x", ret, enable);
    return static_cast<int>(ret);
}

int led_get_color(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t color = 0;
    uint32_t freq = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return refuse_few_words();
    }
    const uint32_t led_type = word_to_u32(inputs[0]);
    const uint32_t ret = drv_led_get_color(inst_id, led_type, &color, &freq);
    if (ret == 0) {
        printf("[ledtest] drv_led_get_color inst_id=0x%x, led_type=0x%x, color=0x%x, freq=0x%x\r\n", inst_id, led_type,
               color, freq);
    } else {
        printf("[ledtest] drv_led_get_color fail, ret = 0x%x!\r\n", ret);
    }
    print_result("%x %x %x", ret, color, freq);
    return static_cast<int>(ret);
}

int led_set_color(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        return refuse_few_words();
    }
    const uint32_t led_type = word_to_u32(inputs[0]);
    const uint32_t color = word_to_u32(inputs[1]);
    const uint32_t freq = word_to_u32(inputs[2]);
    const uint32_t ret = drv_led_set_color(inst_id, led_type, color, freq);
    if (ret == 0) {
        printf("[ledtest] drv_led_set_color inst_id=0x%x, led_type=0x%x, color=0x%x, freq=0x%x\r\n", inst_id, led_type,
               color, freq);
    } else {
        printf("[ledtest] drv_led_set_color fail, ret = 0x%x!\r\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int led_get_mode(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t mode = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return refuse_few_words();
    }
    const uint32_t led_type = word_to_u32(inputs[0]);
    const uint32_t ret = drv_led_get_mode(inst_id, led_type, &mode);
    if (ret == 0) {
        printf("[ledtest] drv_led_get_mode inst_id=0x%x, led_type=0x%x, mode=0x%x\r\n", inst_id, led_type, mode);
    } else {
        printf("[ledtest] drv_led_get_mode fail, ret = 0x%x!\r\n", ret);
    }
    print_result("%x %x", ret, mode);
    return static_cast<int>(ret);
}

int led_get_lamptest_support(int count, char **args) {
    const uint32_t inst_id = inst_or_self(count, args);
    uint32_t support = 0;
    const uint32_t ret = drv_led_get_lamptest_support(inst_id, &support);
    if (ret == 0) {
        printf("[ledtest] led_get_lamptest_support inst_id=0x%x, support=0x%x\r\n", inst_id, support);
    } else {
        printf("[ledtest] led_get_lamptest_support fail, ret = 0x%x!\r\n", ret);
    }
    print_result("%x %x", ret, support);
    return static_cast<int>(ret);
}

int led_get_lamptest_status(int count, char **args) {
    const uint32_t inst_id = inst_or_self(count, args);
    uint32_t status = 0;
    const uint32_t ret = drv_led_get_lamptest_status(inst_id, &status);
    if (ret == 0) {
        printf("[ledtest] led_get_lamptest_status inst_id=0x%x, status=0x%x\r\n", inst_id, status);
    } else {
        printf("[ledtest] led_get_lamptest_status fail, ret = 0x%x!\r\n", ret);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"led_func1", led_func1, "led_func1 inst_id buff_len len"},
    command_row{"led_func2", led_func2, "led_func2 inst_id buff_len len"},
    command_row{"led_set_lamptest_enable", led_set_lamptest_enable, "led_set_lamptest_enable inst_id enable"},
    command_row{"led_get_lamptest_enable", led_get_lamptest_enable, "led_get_lamptest_enable inst_id"},
    command_row{"led_set_lamptest_ctrl_enable", led_set_lamptest_ctrl_enable,
                "led_set_lamptest_ctrl_enable inst_id enable"},
    command_row{"led_get_lamptest_ctrl_enable", led_get_lamptest_ctrl_enable, "led_get_lamptest_ctrl_enable inst_id"},
    command_row{"led_get_color", led_get_color, "led_get_color inst_id led_type"},
    command_row{"led_set_color", led_set_color, "led_set_color inst_id led_type color freq"},
    command_row{"led_get_mode", led_get_mode, "led_get_mode inst_id led_type"},
    command_row{"led_get_lamptest_support", led_get_lamptest_support, "drv_led_get_lamptest_support inst_id"},
    command_row{"led_get_lamptest_status", led_get_lamptest_status, "drv_led_get_lamptest_status inst_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int led_test(int count, char **args) {
    return run_module(rows, count, args);
}
