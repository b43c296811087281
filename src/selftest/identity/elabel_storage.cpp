// Electronic label storage. The board keeps its label: it is written back before anything is compared.
#include "selftest/identity/elabel_storage.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

#include "bounds/bounds.h"
#include "drv_basic/identity/drv_elabel.h"
#include "selftest/files.h"
#include "selftest/test_value.h"

static_assert(elabel_size == DRV_ELABEL_SIZE, "one label, one size");

namespace {

constexpr const char *label_file = "/opt/hostx/home/elabel.txt";
constexpr const char *built_in_label = "elable test test test test ...";

uint8_t *bytes(char *area) {
    return reinterpret_cast<uint8_t *>(area);
}

// Takes the image of the opened file into the target.
int copy_label_image(int file, off_t length, char *target, report_sink sink) {
    const size_t size = static_cast<size_t>(length);
    // One byte more, so that an empty file has an image too.
    char *image = static_cast<char *>(calloc(size + 1, 1));
    if (image == nullptr) {
        report_append(sink, "set pic elabel malloc image buffer failed\r\n");
        return -1;
    }
    lseek(file, 0, SEEK_SET);
    const ssize_t got = read(file, image, size);
    if (got != static_cast<ssize_t>(size)) {
        report_append(sink, "read file[%s]file_len:%d read_len:%d failure:%s\r\n", label_file, static_cast<int>(size),
                      static_cast<int>(got), strerror(errno));
        free(image);
        return -1;
    }
    report_append(sink, "Now read elabel load info from file\xEF\xBC\x9A%s\r\n", label_file);
    memcpy_s(target, sizeof(elabel_area), image, size + 1);
    free(image);
    return 0;
}

int load_label_file(char *target, uint32_t *length, report_sink sink) {
    if (target == nullptr) {
        report_append(sink, "image_buffer is NULL\r\n");
        return -1;
    }
    const int file = open_regular_file(label_file);
    if (file < 0) {
        report_append(sink, "open file[%s] fail\r\n", label_file);
        return -1;
    }
    const off_t end = lseek(file, 0, SEEK_END);
    *length = static_cast<uint32_t>(end);
    int result = -1;
    if (end < 0 || end > static_cast<off_t>(elabel_size)) {
        report_append(sink, "set elabel file length %u is too large. only %u is valid\r\n", *length, elabel_size);
    } else {
        result = copy_label_image(file, end, target, sink);
    }
    close(file);
    return result;
}

void report_mismatch(const char *written, const char *read_back, const char *original, report_sink sink) {
    report_append(sink, "Error: elabel read and write match test fail.\r\n");
    report_append(sink, "write info : \r\n%s\r\n", written);
    report_append(sink, "read info : \r\n%s\r\n", read_back);
    report_append(sink, "original info : \r\n%s\r\n", original);
}

} // namespace

int get_test_label(char *target, uint32_t *length, report_sink sink) {
    if (load_label_file(target, length, sink) == 0) {
        return 0;
    }
    report_append(sink, "there is no such file: %s. so load test info :%s\r\n", label_file, built_in_label);
    if (target == nullptr) {
        return -1;
    }
    *length = static_cast<uint32_t>(strlen(built_in_label));
    return strcpy_s(target, sizeof(elabel_area), built_in_label) == 0 ? 0 : -1;
}

namespace {

bool read_label(uint32_t inst_id, uint32_t elabel_id, elabel_area &area, const char *step, report_sink sink) {
    const uint32_t ret = drv_elabel_read(inst_id, elabel_id, bytes(area), elabel_size);
    if (ret != 0) {
        report_append(sink, "%s fail, inst_id=0x%x, elabel_id=0x%x, ret=%#x.\r\n", step, inst_id, elabel_id, ret);
    }
    return ret == 0;
}

bool write_label(uint32_t inst_id, uint32_t elabel_id, elabel_area &area, uint32_t length, const char *step,
                 report_sink sink) {
    const uint32_t ret = drv_elabel_write(inst_id, elabel_id, bytes(area), elabel_size);
    if (ret != 0) {
        report_append(sink, "%s fail, ret = 0x%x, elabel_id = 0x%x, len = 0x%x.\r\n", step, ret, elabel_id, length);
    }
    return ret == 0;
}

} // namespace

int elabel_write_test(uint32_t inst_id, uint32_t elabel_id, report_sink sink) {
    elabel_area saved = {};
    elabel_area written = {};
    elabel_area read_back = {};
    uint32_t length = 0;
    if (!read_label(inst_id, elabel_id, saved, "drv_elabel_read", sink)) {
        return -1;
    }
    if (get_test_label(written, &length, sink) != 0) {
        report_append(sink, "elabel get write info fail\n");
        return -1;
    }
    begin_test_value();
    const bool restored = write_label(inst_id, elabel_id, written, length, "drv_elabel_write", sink) &&
                          read_label(inst_id, elabel_id, read_back, "drv_elabel_read after write", sink) &&
                          write_label(inst_id, elabel_id, saved, elabel_size, "drv_elabel_write after test", sink);
    end_test_value();
    if (!restored) {
        return -1;
    }
    if (memcmp(written, read_back, elabel_size) == 0) {
        report_append(sink, "Success: elabel read and write match test pass.\r\n");
    } else {
        report_mismatch(written, read_back, saved, sink);
    }
    return 0;
}
