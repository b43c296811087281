// Board properties of a tray: PCB version, electronic label and ability file. Files to write come from the release
// directory; a label file may stand anywhere.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "bounds/bounds.h"
#include "drv_basic/environment/drv_fan.h"
#include "drv_basic/service/drv_checksum.h"
#include "modules/fan_test/handlers.h"
#include "shell/console.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace fan_commands {

namespace {

enum property : uint32_t { pcb_version = 1, electronic_label = 2, ability_file = 3 };

constexpr const char *release_directory = "/home/release/";
constexpr size_t path_size = 128;

constexpr uint32_t label_crc_size = 2;
constexpr uint32_t label_data_size = 1024;
constexpr uint32_t label_image_size = label_crc_size + label_data_size;
static_assert(label_image_size == DRV_FAN_IMAGE_SIZE, "one image, one size");

// Nobody means a file of this size to be a label: it is not read just to be refused.
constexpr off_t label_file_max = off_t{16} * 1024 * 1024;

constexpr int no_file = -1;

// Directory and name, cut to the path's area. A path that was cut names another file: it is not opened. Nor is
// anything but a regular file: a pipe would wait for a writer, and opening a device may set it off. The open does not
// wait either, should a pipe take the file's place in between.
int open_file_at(char *path, const char *directory, const char *name) {
    struct stat status {};
    if (snprintf_s(path, path_size, path_size - 1, "%s%s", directory, name) < 0 || stat(path, &status) != 0 ||
        !S_ISREG(status.st_mode)) {
        return no_file;
    }
    return open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
}

ssize_t read_from_start(int file, void *area, size_t len) {
    lseek(file, 0, SEEK_SET);
    return read(file, area, len);
}

// Fills the area with what the file has for a property and shows that. A short file leaves zeros behind. False for a
// property that cannot be set from a file.
bool read_property(uint32_t type, int file, char *buffer, uint32_t len) {
    const off_t size = lseek(file, 0, SEEK_END);
    switch (type) {
    case electronic_label:
        read_from_start(file, buffer, len);
        return true;
    case ability_file:
        read_from_start(file, buffer, len);
        printf("fan_set_board_property, ability_buff:\r\n");
        for (uint32_t i = 0; i < len; ++i) {
            printf("%x", static_cast<uint8_t>(buffer[i]));
        }
        printf("<end>\r\n");
        return true;
    case pcb_version:
        read_from_start(file, buffer, len);
        printf("image_len:%d\r\n", static_cast<int>(size));
        printf("drv_fan_set_board_property, pcb_buff:%s.\r\n", buffer);
        return true;
    default:
        printf("drv_fan_set_board_property, invalid type.\r\n");
        return false;
    }
}

int set_property_from(int file, uint32_t slot_id, uint32_t type, uint32_t len) {
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        printf("malloc buffer fail\r\n");
        return -1;
    }
    if (!read_property(type, file, buffer, len)) {
        free(buffer);
        return -1;
    }
    const uint32_t ret = drv_fan_set_board_property(slot_id, type, reinterpret_cast<uint8_t *>(buffer), len);
    if (ret == 0) {
        printf("drv_fan_set_board_property:%s\r\nlen:%d", buffer, static_cast<int>(len));
    } else {
        report_failure("drv_fan_set_board_property", ret);
    }
    print_result("%x", ret);
    free(buffer);
    return static_cast<int>(ret);
}

// The label's text behind the checksum that is still to come. Files of the kernel have no end to seek to: they are no
// labels.
bool read_label_file(int file, const char *path, uint8_t *image) {
    const off_t size = lseek(file, 0, SEEK_END);
    const size_t room = size > 0 ? static_cast<size_t>(size) : 0;
    char *data = size <= label_file_max ? new_text_area(static_cast<uint32_t>(room)) : nullptr;
    if (data == nullptr) {
        printf("malloc buffer fail\r\n");
        return false;
    }
    const ssize_t got = read_from_start(file, data, room);
    const bool is_label = got == size && size <= static_cast<off_t>(label_data_size);
    if (is_label) {
        memcpy(image + label_crc_size, data, room);
    } else {
        printf("read elabel file[%s] file_len:%d read_len:%ld or more 1024\r\n", path, static_cast<int>(size),
               static_cast<long>(got));
    }
    free(data);
    return is_label;
}

// The firmware of the tray checks a label by the checksum over all of its data, the zeros behind the text among them.
bool seal_label(uint8_t *image) {
    uint16_t crc16 = 0;
    if (drv_crc16_checksum(image + label_crc_size, label_data_size, &crc16) != 0) {
        printf("drv_crc16_checksum failure\r\n");
        return false;
    }
    image[0] = static_cast<uint8_t>(crc16 >> 8U);
    image[1] = static_cast<uint8_t>(crc16);
    return true;
}

} // namespace

// The driver tells how long the property is; what lies behind the area is not shown, whatever it says.
int fan_get_board_property(int count, char **args) {
    if (count != 3) {
        return -1;
    }
    const uint32_t type = word_to_u32(args[1]);
    const uint32_t room = word_to_u32(args[2]);
    uint32_t len = room;
    char *buffer = new_text_area(room);
    if (buffer == nullptr) {
        printf("malloc buffer fail\r\n");
        return -1;
    }
    const uint32_t ret =
        drv_fan_get_board_property(word_to_u32(args[0]), type, reinterpret_cast<uint8_t *>(buffer), &len);
    if (ret == 0) {
        printf("drv_fan_get_board_property:%s\r\nlen:%d\r\n", buffer, static_cast<int>(len));
        for (uint32_t i = 0; i < len && i < room; ++i) {
            printf("%x ", static_cast<uint8_t>(buffer[i]));
        }
        printf("\r\n <end> \r\n");
    }
    free(buffer);
    return static_cast<int>(ret);
}

int fan_set_board_property(int count, char **args) {
    char path[path_size] = {};
    if (count != 4) {
        return -1;
    }
    const int file = open_file_at(path, release_directory, args[2]);
    if (file == no_file) {
        printf("open file[%s] failure\r\n", path);
        return -1;
    }
    const int result = set_property_from(file, word_to_u32(args[0]), word_to_u32(args[1]), word_to_u32(args[3]));
    close(file);
    return result;
}

int fan_set_elabel(int count, char **args) {
    char path[path_size] = {};
    uint8_t image[label_image_size] = {};
    if (count != 2) {
        return -1;
    }
    const int file = open_file_at(path, "", args[1]);
    if (file == no_file) {
        printf("open elabel file[%s] failure\r\n", path);
        return -1;
    }
    const bool is_label = read_label_file(file, path, image) && seal_label(image);
    close(file);
    if (!is_label) {
        return -1;
    }
    printf("fan_set_elabel, elabel buff:\r\n");
    fwrite(image, 1, sizeof(image), stdout);
    printf("<end>\r\n");
    const uint32_t ret = drv_fan_set_board_property(word_to_u32(args[0]), electronic_label, image, sizeof(image));
    printf(ret == 0 ? "fan_set_elabel success!!\r\n" : "fan_set_elabel fail!!\r\n");
    print_result("%x", ret);
    return static_cast<int>(ret);
}

} // namespace fan_commands
