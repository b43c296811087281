// avs_test: the adaptive voltage scaling controllers, which trim the core rails: what their phases, status byte and
// status word tell, and single items as number or text.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/environment/drv_avs.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

// Without a length there is no text area, and the driver gets none. False when memory is out.
bool get_text_area(uint32_t len, char **area) {
    *area = len != 0 ? new_text_area(len) : nullptr;
    return len == 0 || *area != nullptr;
}

// A text that is not there is printed as the C library marks it: no room for a finding is not the same as no finding.
const char *text_or_null_mark(const char *text) {
    return text != nullptr ? text : "(null)";
}

int avs_check_phase_fault(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t result = 0;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        puts("kestro_test avs_test avs_check_phase_fault inst_id chip_id len");
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t len = word_to_u32(inputs[1]);
    char *buffer = nullptr;
    if (!get_text_area(len, &buffer)) {
        return 0;
    }
    const uint32_t ret = drv_avs_check_phase_fault(inst_id, chip_id, &result, buffer, len);
    printf("drv_avs_check_phase_fault:[ret]:%d\r\nresult:%d,len:%d\r\n%s\r\n", static_cast<int>(ret),
           static_cast<int>(result), static_cast<int>(len), text_or_null_mark(buffer));
    free(buffer);
    return static_cast<int>(ret);
}

int avs_check_chip_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t result = 0;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        puts("kestro_test avs_test avs_check_chip_status inst_id chip_id len");
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t len = word_to_u32(inputs[1]);
    char *buffer = nullptr;
    if (!get_text_area(len, &buffer)) {
        return 0;
    }
    const uint32_t ret = drv_avs_check_chip(inst_id, chip_id, &result, buffer, len);
    printf("drv_avs_check_chip_status:[ret]:%d\r\nresult:%d,len:%d\r\n%s\r\n", static_cast<int>(ret),
           static_cast<int>(result), static_cast<int>(len), text_or_null_mark(buffer));
    free(buffer);
    return static_cast<int>(ret);
}

int avs_check_word_fault_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t result = 0;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        puts("kestro_test avs_test word_fault_status inst_id chip_id len");
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t len = word_to_u32(inputs[1]);
    char *buffer = nullptr;
    if (!get_text_area(len, &buffer)) {
        return 0;
    }
    const uint32_t ret = drv_avs_check_word_fault(inst_id, chip_id, &result, buffer, len);
    printf("drv_avs_check_word_fault_status:[ret]:%d\r\nresult:%d,len:%d\r\n%s\r\n", static_cast<int>(ret),
           static_cast<int>(result), static_cast<int>(len), text_or_null_mark(buffer));
    free(buffer);
    return static_cast<int>(ret);
}

// The usage calls the item a length.
int avs_get_item_value(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t value = 0;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        puts("kestro_test avs_get_in_volt inst_id chip_id len");
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t item = word_to_u32(inputs[1]);
    const uint32_t ret = drv_avs_get_item_value(inst_id, chip_id, item, &value);
    printf("drv_avs_get_item_value:[ret]:%d\r\n value:%d\r\n", static_cast<int>(ret), static_cast<int>(value));
    return static_cast<int>(ret);
}

int avs_get_item_string(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        puts("kestro_test avs_get_item_string inst_id chip_id len");
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t item = word_to_u32(inputs[1]);
    const uint32_t len = word_to_u32(inputs[2]);
    char *buffer = nullptr;
    if (!get_text_area(len, &buffer)) {
        return 0;
    }
    const uint32_t ret = drv_avs_get_item_string(inst_id, chip_id, item, buffer, len);
    printf("drv_avs_get_item_string:[ret]:%d\r\n buf:%s, len:%d\r\n", static_cast<int>(ret), text_or_null_mark(buffer),
           static_cast<int>(len));
    free(buffer);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"avs_check_phase_fault", avs_check_phase_fault, "avs_check_phase_fault"},
    command_row{"avs_check_chip_status", avs_check_chip_status, "avs_check_chip_status"},
    command_row{"avs_check_word_fault_status", avs_check_word_fault_status, "avs_check_word_fault_status"},
    command_row{"avs_get_item_value", avs_get_item_value, "avs_get_item_value"},
    command_row{"avs_get_item_string", avs_get_item_string, "avs_get_item_string"},
};

static_assert(rows_are_sound(rows));

} // namespace

int avs_test(int count, char **args) {
    return run_module(rows, count, args);
}
