// alg_test: the checksums that the drivers work out, here of a whole file. No banners here.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/service/drv_checksum.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/whole_file.h"

namespace {

// The usage line has kept the name that the module had once.
int report_no_file_name(const char *name) {
    printf("kestro_test algorithm_test %s [filename]\r\n", name);
    return -1;
}

int alg_crc16_test(int count, char **args) {
    if (count < 1) {
        return report_no_file_name("alg_crc16_test");
    }
    whole_file file{};
    if (read_whole_file(args[0], &file) != 0) {
        return -1;
    }
    uint16_t crc16 = 0;
    const uint32_t ret = drv_crc16_checksum(file.bytes, file.length, &crc16);
    free(file.bytes);
    if (ret != 0) {
        printf("drv_crc16_checksum failure\r\n");
        return -1;
    }
    printf("alg_crc16_test result is 0x%x\r\n", crc16);
    return 0;
}

int alg_crc32_test(int count, char **args) {
    if (count < 1) {
        return report_no_file_name("alg_crc32_test");
    }
    whole_file file{};
    if (read_whole_file(args[0], &file) != 0) {
        return -1;
    }
    uint32_t crc32 = 0;
    const uint32_t ret = drv_crc32_checksum(file.bytes, file.length, &crc32);
    free(file.bytes);
    if (ret != 0) {
        printf("drv_crc32_checksum failure\r\n");
        return -1;
    }
    printf("alg_crc32_test result is 0x%x\r\n", crc32);
    return 0;
}

constexpr std::array rows = {
    command_row{"alg_crc16_test", alg_crc16_test, "alg_crc16_test [file_name]"},
    command_row{"alg_crc32_test", alg_crc32_test, "alg_crc32_test [file_name]"},
};

static_assert(rows_are_sound(rows));

} // namespace

int alg_test(int count, char **args) {
    return run_module(rows, count, args);
}
