// The images that a fan tray keeps: its label, its ability file and its expanded label, each behind its CRC-16.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "bounds/bounds.h"
#include "drv_basic/environment/drv_fan.h"
#include "onekey/fan/fan_onekey.h"
#include "onekey/fan/fan_report.h"
#include "selftest/test_value.h"
#include "shell/console.h"

namespace {

constexpr uint32_t image_size = DRV_FAN_IMAGE_SIZE;
constexpr uint32_t crc_size = 2;

enum image_type : uint32_t { label = 2, ability_file = 3, expanded_label = 6 };

// Zeroed, with one byte more than the driver is told of. The caller frees it.
uint8_t *new_image() {
    return static_cast<uint8_t *>(calloc(image_size + 1, 1));
}

struct image_names {
    image_type type;
    const char *heading; // in front of length and CRC; labels have two blanks there
    const char *name;
    const char *of_failure;
};

constexpr image_names label_names = {label, "Elabel: ", "Elabel", "elabel"};
constexpr image_names ability_names = {ability_file, "AbilityFile:", "AbilityFile", "ability"};
constexpr image_names expanded_names = {expanded_label, "Expand Elabel: ", "Expand Elabel", "expand elabel"};

void show_text(const uint8_t *image, uint32_t /*len*/, report_sink sink) {
    report_append(sink, "%s\r\n", reinterpret_cast<const char *>(image + crc_size));
}

// Lines end behind the bytes whose place in the image, CRC included, is a multiple of 16: the first line has 15.
void show_bytes(const uint8_t *image, uint32_t len, report_sink sink) {
    for (uint32_t i = crc_size; i < std::min(len, image_size); ++i) {
        report_append(sink, "%02x%s", image[i], i % 16 == 0 ? "\r\n" : " ");
    }
    report_append(sink, "\r\n");
}

void show_image(uint32_t slot_id, const image_names &names, uint8_t *image,
                void (*show_content)(const uint8_t *, uint32_t, report_sink), report_sink sink) {
    memset(image, 0, image_size + 1);
    uint32_t len = image_size;
    const uint32_t ret = drv_fan_get_board_property(slot_id, names.type, image, &len);
    if (ret != 0) {
        report_append(sink, "%s: %s\r\n", names.name, fan_no_value(ret));
        if (fan_failure(ret) != 0) {
            report_append(sink, "Error: get fan%d %s fail\r\n", static_cast<int>(slot_id), names.of_failure);
        }
        return;
    }
    report_append(sink, "%s length: %d, CRC: %x %x\r\n", names.heading, static_cast<int>(len), image[0], image[1]);
    show_content(image, len, sink);
}

} // namespace

uint32_t fan_get_elabel_info(report_sink sink) {
    drv_slot_list list{};
    const uint32_t ret = list_fan_slots(&list, sink);
    if (ret != 0) {
        return ret;
    }
    uint8_t *image = new_image();
    if (image == nullptr) {
        report_append(sink, "Error: malloc buffer fail\r\n");
        return fan_memory_error;
    }
    report_rule(sink);
    const timeval start = fan_time();
    for (uint32_t i = 0; i < list.num; ++i) {
        const uint32_t slot_id = list.slot_id[i];
        report_append(sink, "[FAN%u]\r\n", slot_id);
        show_image(slot_id, label_names, image, show_text, sink);
        show_image(slot_id, ability_names, image, show_bytes, sink);
        show_image(slot_id, expanded_names, image, show_text, sink);
    }
    report_fan_time(fan_time_style::labels, start, sink);
    free(image);
    return 0;
}

namespace {

round_outcome write_and_read(uint32_t slot_id, uint32_t round, const uint8_t *written, uint8_t *read,
                             report_sink sink) {
    uint32_t ret = drv_fan_set_board_property(slot_id, label, written, image_size);
    if (ret != 0) {
        report_append(sink, "Error: [%d times]set elabel fail in first step\r\n", static_cast<int>(round));
        return {false, ret};
    }
    memset(read, 0, image_size);
    uint32_t len = image_size;
    ret = drv_fan_get_board_property(slot_id, label, read, &len);
    if (ret != 0) {
        report_append(sink, "Error: [%d times]get elabel fail in second step\r\n", static_cast<int>(round));
        return {false, ret};
    }
    if (memcmp(written, read, image_size) != 0) {
        report_append(sink, "Error: [%d times]elabel comparison fail in third step\r\n", static_cast<int>(round));
        return {false, fan_label_error};
    }
    return {true, 0};
}

// The label itself is what is written, but a write that is broken off leaves half of it: an operator waits for the end.
uint32_t run_label_rounds(uint32_t slot_id, uint32_t times, const timeval &start, const uint8_t *original,
                          const uint8_t *written, uint8_t *read, report_sink sink) {
    round_sum sum{};
    begin_test_value();
    for (uint32_t round = 0; round < times; ++round) {
        count_round(&sum, write_and_read(slot_id, round + 1, written, read, sink));
    }
    report_rounds(sum, times, sink);
    report_fan_time(fan_time_style::labels, start, sink);
    const uint32_t ret = drv_fan_set_board_property(slot_id, label, original, image_size);
    end_test_value();
    if (ret != 0) {
        report_append(sink, "Error: set fan%d elabel back to original fail.[ret:0x%x]\r\n", static_cast<int>(slot_id),
                      ret);
    }
    return sum.result + ret;
}

uint32_t test_label_copy(uint32_t slot_id, uint32_t times, const timeval &start, const uint8_t *original, uint8_t *copy,
                         report_sink sink) {
    if (memcpy_s(copy, image_size, original, image_size) != 0) {
        report_append(sink, "Error: memcpy buffer fail\r\n");
        return fan_label_error;
    }
    report_append(sink, "[FAN%d] Elabel Test Result: \r\n", static_cast<int>(slot_id));
    uint8_t *read = new_image();
    if (read == nullptr) {
        report_append(sink, "Error: malloc read buffer fail\r\n");
        return fan_memory_error;
    }
    const uint32_t result = run_label_rounds(slot_id, times, start, original, copy, read, sink);
    free(read);
    return result;
}

uint32_t test_label(uint32_t slot_id, uint32_t times, uint8_t *original, report_sink sink) {
    report_rule(sink);
    uint32_t len = image_size;
    const uint32_t ret = drv_fan_get_board_property(slot_id, label, original, &len);
    if (ret != 0) {
        if (fan_failure(ret) != 0) {
            report_append(sink, "Error: get fan%d elabel fail\r\n", static_cast<int>(slot_id));
        }
        report_append(sink, "[FAN%u] Elabel Test: %s\r\n", slot_id, fan_no_value(ret));
        return fan_failure(ret);
    }
    const timeval start = fan_time();
    uint8_t *copy = new_image();
    if (copy == nullptr) {
        report_append(sink, "Error: malloc write buffer fail\r\n");
        return fan_memory_error;
    }
    const uint32_t result = test_label_copy(slot_id, times, start, original, copy, sink);
    free(copy);
    return result;
}

} // namespace

uint32_t fan_elabel_test(uint32_t slot_id, uint32_t times, report_sink sink) {
    uint8_t *original = new_image();
    if (original == nullptr) {
        report_append(sink, "Error: malloc buffer fail\r\n");
        return fan_memory_error;
    }
    const uint32_t result = test_label(slot_id, times, original, sink);
    free(original);
    return result;
}
