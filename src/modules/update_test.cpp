// update_test: the files that the board starts from, and the lock word in front of the menu of its start-up software.
// No banners here.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_startup.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int update_startup_file(int count, char **args) {
    if (count < 2) {
        puts("kestro_test update_test file_type file_name");
        return -1;
    }
    const uint32_t file_type = word_to_u32(args[0]);
    const char *file_name = args[1];
    printf("file_type[%d], file_name[%s]\r\n", static_cast<int>(file_type), file_name);
    const uint32_t ret = drv_update_startup_file(file_type, file_name);
    printf("file_type[%d], file_name[%s],[ret]:%d %s\r\n", static_cast<int>(file_type), file_name,
           static_cast<int>(ret), ret == 0 ? "success" : "fail");
    return static_cast<int>(ret);
}

int clear_boot_lockword(int /*count*/, char ** /*args*/) {
    const uint32_t ret = drv_clear_boot_lockword(DRV_LOCKWORD_MENU);
    printf("drv_clear_boot_lockword ret:%u\r\n", ret);
    return static_cast<int>(ret);
}

const char *status_text(uint32_t status) {
    switch (status) {
    case DRV_LOCKWORD_DEFAULT:
        return "defualt lockword";
    case DRV_LOCKWORD_NULL:
        return "null lockword";
    case DRV_LOCKWORD_USER:
        return "lockword set by user";
    default:
        return "invalid status";
    }
}

// A status that could not be had is none of the known ones.
int get_boot_lockword_status(int /*count*/, char ** /*args*/) {
    uint32_t status = 0;
    const uint32_t ret = drv_get_boot_lockword_status(DRV_LOCKWORD_MENU, &status);
    printf("drv_get_boot_lockword_status ret:%u\r\n", ret);
    printf("%s\r\n", status_text(status));
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"update_startup_file", update_startup_file, "update_startup_file"},
    command_row{"clear_boot_lockword", clear_boot_lockword, "clear_boot_lockword"},
    command_row{"get_boot_lockword_status", get_boot_lockword_status, "get_boot_lockword_status"},
};

static_assert(rows_are_sound(rows));

} // namespace

int update_test(int count, char **args) {
    return run_module(rows, count, args);
}
